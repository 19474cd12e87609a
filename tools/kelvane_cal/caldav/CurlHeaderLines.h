#pragma once

#include <QByteArray>

#include <curl/curl.h>

#include <vector>

#include "kelvane_cal/caldav/DavMessages.h"

namespace kelvane::cal {

// A request's header lines as the list libcurl reads, in storage kept from
// one request to the next, so that a new request allocates nothing for them.
// The list stays valid until the next Set.
class CurlHeaderLines {
  public:
    // The credentials first, then the request's own headers, then an empty
    // Expect, so that the body goes at once without waiting for a
    // "100 Continue".
    void Set(const DavRequest& request, const QByteArray& authorization);
    curl_slist* List() { return nodes_.data(); }

  private:
    void Add(const QByteArray& name, const QByteArray& value);
    void Link();

    QByteArray text_;  // the lines, each ending in a zero
    std::vector<qsizetype> starts_;
    std::vector<curl_slist> nodes_;
};

}  // namespace kelvane::cal
