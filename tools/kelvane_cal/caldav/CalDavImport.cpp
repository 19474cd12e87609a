#include "kelvane_cal/caldav/CalDavImport.h"

#include <QDate>

#include "kelvane_cal/caldav/CalDavClient.h"
#include "kelvane_cal/caldav/DavXml.h"

namespace kelvane::cal {

namespace {

QString UtcMidnight(const QDate& date) {
    return date.toString(QStringLiteral("yyyyMMdd")) + QStringLiteral("T000000Z");
}

}  // namespace

bool FetchYear(const QUrl& collection, int year, const Credentials& credentials, int timeoutSeconds,
               const QList<QSslCertificate>& trusted, std::vector<QByteArray>& calendars,
               QString& problem) {
    CalDavClient client(credentials, timeoutSeconds, trusted);
    const QByteArray body = EventsInRangeRequestBody(UtcMidnight(QDate(year, 1, 1).addDays(-1)),
                                                     UtcMidnight(QDate(year + 1, 1, 1).addDays(1)));
    const DavReply reply =
        client.Send({"REPORT",
                     collection,
                     body,
                     {{"Depth", "1"}, {"Content-Type", "application/xml; charset=utf-8"}}});
    if (reply.Status != 207) {
        problem = DescribeFailure(reply, timeoutSeconds);
        if (problem.isEmpty()) {
            problem = QStringLiteral("%1: is no CalDAV calendar collection; check the URL")
                          .arg(collection.toString());
        }
        return false;
    }
    std::vector<DavResource> resources;
    if (!ParseMultistatus(reply.Body, resources, problem)) {
        problem = collection.toString() + QStringLiteral(": ") + problem;
        return false;
    }
    calendars.clear();
    for (const DavResource& resource : resources) {
        if (!resource.CalendarData.isEmpty()) {
            calendars.push_back(resource.CalendarData);
        }
    }
    return true;
}

}  // namespace kelvane::cal
