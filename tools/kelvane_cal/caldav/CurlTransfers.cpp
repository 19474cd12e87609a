#include "kelvane_cal/caldav/CurlTransfers.h"

#include <curl/curl.h>

#include "kelvane_cal/caldav/CurlErrors.h"
#include "kelvane_cal/caldav/CurlEvents.h"
#include "kelvane_cal/caldav/CurlHeaderLines.h"

#include <algorithm>
#include <chrono>

namespace kelvane::cal {

namespace {

// libcurl set up once for the program, and cleaned up at its end.
class CurlLibrary {
  public:
    CurlLibrary() { curl_global_init(CURL_GLOBAL_DEFAULT); }
    ~CurlLibrary() { curl_global_cleanup(); }
    CurlLibrary(const CurlLibrary&) = delete;
    CurlLibrary& operator=(const CurlLibrary&) = delete;
};

void NeedCurl() {
    static const CurlLibrary library;
}

std::size_t AppendBody(char* data, std::size_t size, std::size_t count, void* body) {
    static_cast<QByteArray*>(body)->append(data, static_cast<qsizetype>(size * count));
    return size * count;
}

// The value of a response header, as it came; empty when there was none.
QByteArray HeaderValue(CURL* easy, const char* name) {
    curl_header* header = nullptr;
    if (curl_easy_header(easy, name, 0, CURLH_HEADER, -1, &header) != CURLHE_OK) {
        return {};
    }
    return QByteArray(header->value);
}

// The method, and the body for those that carry one.
void SetMethod(CURL* easy, const QByteArray& method, const QByteArray& body) {
    const bool head = method == "HEAD";
    curl_easy_setopt(easy, CURLOPT_NOBODY, head ? 1L : 0L);
    if (!body.isEmpty() || method == "PUT" || method == "POST") {
        curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        curl_easy_setopt(easy, CURLOPT_POSTFIELDS, body.constData());
    } else if (!head) {
        curl_easy_setopt(easy, CURLOPT_HTTPGET, 1L);
    }
    const bool plain = method == "GET" || head;
    curl_easy_setopt(easy, CURLOPT_CUSTOMREQUEST, plain ? nullptr : method.constData());
}

}  // namespace

// One easy handle, kept for request after request, with what it sends and
// what has come back.
struct CurlTransfers::Transfer {
    Transfer() : easy(curl_easy_init()) {}
    ~Transfer() { curl_easy_cleanup(easy); }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    // Gives the transfer up once no data has moved for `idleLimit`, which
    // libcurl's own low-speed check, an average over several seconds, does
    // not do at once.
    static int OnProgress(void* self, curl_off_t, curl_off_t received, curl_off_t,
                          curl_off_t sent) {
        auto* transfer = static_cast<Transfer*>(self);
        const auto now = std::chrono::steady_clock::now();
        if (received + sent != transfer->moved) {
            transfer->moved = received + sent;
            transfer->lastMoved = now;
            return 0;
        }
        return now - transfer->lastMoved >= transfer->idleLimit ? 1 : 0;
    }

    CURL* easy;
    CurlHeaderLines headers;
    std::size_t tag = 0;
    QByteArray body;  // kept while libcurl sends it
    DavReply reply;
    char error[CURL_ERROR_SIZE] = {};
    std::chrono::steady_clock::duration idleLimit{};
    std::chrono::steady_clock::time_point lastMoved;
    curl_off_t moved = 0;
};

struct CurlTransfers::Handles {
    Handles() : multi(curl_multi_init()), events(multi), cookies(curl_share_init()) {
        curl_share_setopt(cookies, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
    }
    ~Handles() {
        for (const auto& transfer : running) {
            curl_multi_remove_handle(multi, transfer->easy);
        }
        running.clear();
        idle.clear();
        curl_multi_cleanup(multi);
        curl_share_cleanup(cookies);
    }
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;

    CURLM* multi;
    CurlEvents events;
    // The cookies the server set, kept in memory for every request that follows.
    CURLSH* cookies;
    std::vector<std::unique_ptr<Transfer>> running;
    std::vector<std::unique_ptr<Transfer>> idle;
};

CurlTransfers::CurlTransfers(int timeoutSeconds, QByteArray caPem)
    : timeoutSeconds_(timeoutSeconds), caPem_(std::move(caPem)) {
    NeedCurl();
    handles_ = std::make_unique<Handles>();
}

CurlTransfers::~CurlTransfers() = default;

void CurlTransfers::LimitConnections(int connections) {
    curl_multi_setopt(handles_->multi, CURLMOPT_MAX_HOST_CONNECTIONS,
                      static_cast<long>(connections));
}

// What every request of this client shares, set once for each handle.
void CurlTransfers::Configure(Transfer& transfer) const {
    CURL* easy = transfer.easy;
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, transfer.error);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, AppendBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &transfer.reply.Body);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    // A proxy comes from the environment (http_proxy, https_proxy, no_proxy).
    curl_easy_setopt(easy, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 0L);  // redirects are the caller's
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
    curl_easy_setopt(easy, CURLOPT_PIPEWAIT, 1L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
    curl_easy_setopt(easy, CURLOPT_SSL_VERIFYHOST, 2L);
    curl_easy_setopt(easy, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    // Answers may come compressed in any way libcurl can undo.
    curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, "");
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "Mozilla/5.0");
    curl_easy_setopt(easy, CURLOPT_COOKIEFILE, "");
    curl_easy_setopt(easy, CURLOPT_SHARE, handles_->cookies);
    if (!caPem_.isEmpty()) {
        curl_blob certificates{const_cast<char*>(caPem_.constData()),
                               static_cast<std::size_t>(caPem_.size()), CURL_BLOB_COPY};
        curl_easy_setopt(easy, CURLOPT_CAINFO_BLOB, &certificates);
    }
    if (timeoutSeconds_ > 0) {
        transfer.idleLimit = std::chrono::seconds(timeoutSeconds_);
        curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT, static_cast<long>(timeoutSeconds_));
        curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 0L);
        curl_easy_setopt(easy, CURLOPT_XFERINFOFUNCTION, &Transfer::OnProgress);
        curl_easy_setopt(easy, CURLOPT_XFERINFODATA, &transfer);
        // Also makes libcurl look at a waiting transfer every second.
        curl_easy_setopt(easy, CURLOPT_LOW_SPEED_LIMIT, 1L);
        curl_easy_setopt(easy, CURLOPT_LOW_SPEED_TIME, static_cast<long>(timeoutSeconds_));
    }
}

std::unique_ptr<CurlTransfers::Transfer> CurlTransfers::Idle() {
    if (handles_->idle.empty()) {
        auto transfer = std::make_unique<Transfer>();
        Configure(*transfer);
        return transfer;
    }
    std::unique_ptr<Transfer> transfer = std::move(handles_->idle.back());
    handles_->idle.pop_back();
    return transfer;
}

void CurlTransfers::Start(std::size_t tag, const DavRequest& request,
                          const QByteArray& authorization) {
    std::unique_ptr<Transfer> transfer = Idle();
    transfer->tag = tag;
    transfer->reply = DavReply{};
    transfer->reply.Url = request.Url;
    transfer->body = request.Body;
    transfer->error[0] = '\0';
    transfer->moved = 0;
    transfer->lastMoved = std::chrono::steady_clock::now();
    transfer->headers.Set(request, authorization);
    CURL* easy = transfer->easy;
    const QByteArray url = request.Url.toEncoded(QUrl::RemoveUserInfo | QUrl::RemoveFragment);
    curl_easy_setopt(easy, CURLOPT_URL, url.constData());
    SetMethod(easy, request.Method, transfer->body);
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, transfer->headers.List());
    curl_multi_add_handle(handles_->multi, easy);
    handles_->running.push_back(std::move(transfer));
}

namespace {

// The answer's status and headers, or why none came whole.
void ReadAnswer(CURL* easy, CURLcode code, const char* error, DavReply& reply) {
    long status = 0;
    curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
    reply.Status = static_cast<int>(status);
    reply.ETag = HeaderValue(easy, "ETag");
    reply.Location = HeaderValue(easy, "Location");
    if (code != CURLE_OK) {
        reply.TimedOut = code == CURLE_OPERATION_TIMEDOUT || code == CURLE_ABORTED_BY_CALLBACK;
        // A transfer given up for time has no body to read; one that broke
        // keeps what had come, which says what went wrong.
        if (reply.TimedOut) {
            reply.Body.clear();
        }
        reply.TlsRefused = IsTlsFailure(code);
        reply.NetworkError = CurlErrorText(easy, code, error, reply.Url);
    }
}

}  // namespace

void CurlTransfers::Collect(std::vector<std::pair<std::size_t, DavReply>>& finished) {
    int waiting = 0;
    while (CURLMsg* message = curl_multi_info_read(handles_->multi, &waiting)) {
        if (message->msg != CURLMSG_DONE) {
            continue;
        }
        CURL* easy = message->easy_handle;
        const CURLcode code = message->data.result;
        curl_multi_remove_handle(handles_->multi, easy);
        auto& running = handles_->running;
        const auto found = std::find_if(running.begin(), running.end(),
                                        [easy](const auto& one) { return one->easy == easy; });
        std::unique_ptr<Transfer> transfer = std::move(*found);
        running.erase(found);
        ReadAnswer(easy, code, transfer->error, transfer->reply);
        finished.emplace_back(transfer->tag, std::move(transfer->reply));
        transfer->body.clear();
        handles_->idle.push_back(std::move(transfer));
    }
}

std::vector<std::pair<std::size_t, DavReply>> CurlTransfers::Finished() {
    std::vector<std::pair<std::size_t, DavReply>> finished;
    while (!handles_->running.empty()) {
        Collect(finished);
        if (!finished.empty()) {
            break;
        }
        handles_->events.WaitAndAct();
    }
    return finished;
}

}  // namespace kelvane::cal
