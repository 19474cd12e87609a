#pragma once

#include <QString>
#include <QUrl>

#include <curl/curl.h>

namespace kelvane::cal {

// Whether a transfer failed on the server's certificate or its TLS.
bool IsTlsFailure(CURLcode code);

// Why a transfer failed, in the words of Qt's network errors, which people
// know from other programs; `error` is libcurl's own account of it.
QString CurlErrorText(CURL* easy, CURLcode code, const char* error, const QUrl& url);

}  // namespace kelvane::cal
