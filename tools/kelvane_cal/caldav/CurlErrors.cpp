#include "kelvane_cal/caldav/CurlErrors.h"

#include <QSslError>

#include <cerrno>

namespace kelvane::cal {

bool IsTlsFailure(CURLcode code) {
    switch (code) {
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CERTPROBLEM:
        case CURLE_SSL_CIPHER:
        case CURLE_SSL_CACERT_BADFILE:
        case CURLE_SSL_ISSUER_ERROR:
        case CURLE_SSL_INVALIDCERTSTATUS:
        case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
            return true;
        default:
            return false;
    }
}

namespace {

// OpenSSL's verification results, by their numbers in x509_vfy.h, as Qt
// names them. libcurl checks the host name itself, after OpenSSL found the
// certificate good: that failure comes with a result of 0.
QSslError::SslError CertificateError(long verifyResult) {
    switch (verifyResult) {
        case 0:
        case 62:  // X509_V_ERR_HOSTNAME_MISMATCH
            return QSslError::HostNameMismatch;
        case 2:
            return QSslError::UnableToGetIssuerCertificate;
        case 7:
            return QSslError::CertificateSignatureFailed;
        case 9:
            return QSslError::CertificateNotYetValid;
        case 10:
            return QSslError::CertificateExpired;
        case 18:
            return QSslError::SelfSignedCertificate;
        case 19:
            return QSslError::SelfSignedCertificateInChain;
        case 20:
            return QSslError::UnableToGetLocalIssuerCertificate;
        case 21:
            return QSslError::UnableToVerifyFirstCertificate;
        case 23:
            return QSslError::CertificateRevoked;
        case 24:
            return QSslError::InvalidCaCertificate;
        default:
            return QSslError::UnspecifiedError;
    }
}

// A certificate that was not accepted, as Qt words it; empty for a failure
// Qt has no words of its own for.
QString CertificateText(CURL* easy) {
    long verifyResult = 0;
    curl_easy_getinfo(easy, CURLINFO_SSL_VERIFYRESULT, &verifyResult);
    const QSslError::SslError error = CertificateError(verifyResult);
    if (error == QSslError::UnspecifiedError) {
        return {};
    }
    return QStringLiteral("SSL handshake failed: ") + QSslError(error).errorString();
}

}  // namespace

QString CurlErrorText(CURL* easy, CURLcode code, const char* error, const QUrl& url) {
    long osError = 0;
    curl_easy_getinfo(easy, CURLINFO_OS_ERRNO, &osError);
    if (code == CURLE_COULDNT_RESOLVE_HOST) {
        return QStringLiteral("Host %1 not found").arg(url.host());
    }
    if (code == CURLE_COULDNT_CONNECT && osError == ECONNREFUSED) {
        return QStringLiteral("Connection refused");
    }
    if (code == CURLE_ABORTED_BY_CALLBACK) {
        return QStringLiteral("Operation timed out");  // only the idle check aborts
    }
    if (code == CURLE_GOT_NOTHING) {
        return QStringLiteral("Connection closed");
    }
    if (code == CURLE_PEER_FAILED_VERIFICATION) {
        if (const QString text = CertificateText(easy); !text.isEmpty()) {
            return text;
        }
    }
    return QString::fromUtf8(*error != '\0' ? error : curl_easy_strerror(code));
}

}  // namespace kelvane::cal
