#pragma once

#include <QByteArray>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "kelvane_cal/caldav/DavMessages.h"

namespace kelvane::cal {

// HTTP through one libcurl multi handle, whose connections are kept alive
// from one request to the next (HTTP/2 where a TLS server offers it).
// Redirects are never followed here, certificates always checked, and a
// transfer is given up after `timeoutSeconds` with no data moving.
class CurlTransfers {
  public:
    // `caPem`: the certificates to trust, in PEM; empty for the system's.
    CurlTransfers(int timeoutSeconds, QByteArray caPem);
    ~CurlTransfers();
    CurlTransfers(const CurlTransfers&) = delete;
    CurlTransfers& operator=(const CurlTransfers&) = delete;

    // At most this many connections to one server at once.
    void LimitConnections(int connections);
    // Starts a request; its answer comes back from Finished() with `tag`.
    void Start(std::size_t tag, const DavRequest& request, const QByteArray& authorization);
    // Waits until at least one started request has finished and gives those
    // that have, with their tags; nothing when none is under way.
    std::vector<std::pair<std::size_t, DavReply>> Finished();

  private:
    struct Transfer;
    struct Handles;

    std::unique_ptr<Transfer> Idle();
    void Configure(Transfer& transfer) const;
    void Collect(std::vector<std::pair<std::size_t, DavReply>>& finished);

    std::unique_ptr<Handles> handles_;
    int timeoutSeconds_;
    QByteArray caPem_;
};

}  // namespace kelvane::cal
