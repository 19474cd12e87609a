#pragma once

#include <QString>

#include <vector>

#include "FirstPublishPuts.h"

// What one curl process sending a list of PUTs took.
struct CurlTimes {
    double WallSeconds = 0;
    double CpuSeconds = 0;  // curl's own, user and system
    int Connections = 0;    // the connections it opened
    int Failed = 0;         // requests answered without a 2xx status, or not at all
    QString Problem;        // why curl could not run; empty when it ran
};

// Sends `puts` in order with one curl process, which keeps its connection
// alive from one URL to the next, as `user` with `password` (HTTP Basic).
// The bodies and curl's config file are written to `folder` first, outside
// the time taken.
CurlTimes RunCurlPuts(const std::vector<kelvane::cal::DavRequest>& puts, const QString& user,
                      const QString& password, const QString& folder);
