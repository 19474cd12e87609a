#include "kelvane_cal/caldav/CurlErrors.h"

#include <QSslError>

#include <array>
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
struct CertificateFailure {
    long verifyResult;
    QSslError::SslError error;
};
constexpr std::array kCertificateFailures{
    CertificateFailure{0, QSslError::HostNameMismatch},
    CertificateFailure{62, QSslError::HostNameMismatch},  // X509_V_ERR_HOSTNAME_MISMATCH
    CertificateFailure{2, QSslError::UnableToGetIssuerCertificate},
    CertificateFailure{7, QSslError::CertificateSignatureFailed},
    CertificateFailure{9, QSslError::CertificateNotYetValid},
    CertificateFailure{10, QSslError::CertificateExpired},
    CertificateFailure{18, QSslError::SelfSignedCertificate},
    CertificateFailure{19, QSslError::SelfSignedCertificateInChain},
    CertificateFailure{20, QSslError::UnableToGetLocalIssuerCertificate},
    CertificateFailure{21, QSslError::UnableToVerifyFirstCertificate},
    CertificateFailure{23, QSslError::CertificateRevoked},
    CertificateFailure{24, QSslError::InvalidCaCertificate},
};

QSslError::SslError CertificateError(long verifyResult) {
    for (const CertificateFailure& failure : kCertificateFailures) {
        if (failure.verifyResult == verifyResult) {
            return failure.error;
        }
    }
    return QSslError::UnspecifiedError;
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
