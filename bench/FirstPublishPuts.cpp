#include "FirstPublishPuts.h"

#include <map>

#include "kelvane_cal/caldav/CalDavUrl.h"
#include "kelvane_cal/ical/EventTexts.h"
#include "kelvane_cal/ical/ICalExport.h"
#include "kelvane_cal/publish/PublishPlan.h"
#include "kelvane_cal/publish/Publisher.h"

namespace {

using kelvane::cal::EventText;

// The events publish exports, by UID.
std::map<QString, EventText> PublishedEvents(const kelvane::CalendarFileContent& content,
                                             const QString& file, int year, const QDateTime& now) {
    kelvane::cal::ExportRequest request{file, year, now, QString()};
    request.EndEveryActivity = true;
    std::map<QString, EventText> events;
    for (EventText& event :
         kelvane::cal::SplitEvents(kelvane::cal::ExportToICalendar(content, request).Text)) {
        events[event.Uid] = std::move(event);
    }
    return events;
}

}  // namespace

std::vector<kelvane::cal::DavRequest> FirstPublishPuts(const kelvane::CalendarFileContent& content,
                                                       const QString& file, int year,
                                                       const QDateTime& now,
                                                       const QUrl& collection) {
    const std::map<QString, EventText> events = PublishedEvents(content, file, year, now);
    // Nothing published yet and nothing on the server: every event is created.
    const kelvane::cal::PublishPlan plan =
        kelvane::cal::PlanPublish(events, {}, {}, false, [](const QString&) { return false; });
    std::vector<kelvane::cal::DavRequest> puts;
    for (const kelvane::cal::PublishAction& action : plan.Actions) {
        if (action.Step == kelvane::cal::PublishStep::Create) {
            puts.push_back(
                kelvane::cal::ChangeRequest(collection, action, events.at(action.Uid).Text));
        }
    }
    return puts;
}
