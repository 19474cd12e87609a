#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace kelvane::cal {

// One resource of a WebDAV multistatus answer.
struct DavResource {
    QString Href;             // the path, as the server gave it (percent-encoded)
    QByteArray ETag;          // with its quotes, as the server gave it
    QByteArray CalendarData;  // the iCalendar text, when it was asked for
};

// A PROPFIND body that asks for the ETags of a collection's members.
QByteArray ETagsRequestBody();
// A calendar-query REPORT body for the events that fall between two UTC times
// (as 20260101T000000Z), with their ETags and iCalendar text.
QByteArray EventsInRangeRequestBody(const QString& start, const QString& end);

// The resources of a multistatus answer whose properties were found (status
// 200); false with the problem when the answer is no multistatus XML.
bool ParseMultistatus(const QByteArray& xml, std::vector<DavResource>& resources, QString& problem);

// What a WebDAV error answer (<DAV:error>) says: the conditions it names, the
// server's own messages and its description, as "valid-calendar-data: DTEND
// must occur after DTSTART"; empty when the body is no such answer.
QString DavErrorText(const QByteArray& body);

// Whether a DAV:error names a condition of WebDAV or CalDAV that the request
// breaks (such as valid-calendar-data), other than the user's rights: a
// refusal that sending the request again cannot change. A server's own
// elements (such as a message) name no condition.
bool NamesABrokenCondition(const QByteArray& body);

}  // namespace kelvane::cal
