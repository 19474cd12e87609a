#pragma once

#include <QString>

#include "kelvane_cal/caldav/CalDavClient.h"

// What a publish makes of the server's answers to its requests.
namespace kelvane::cal {

// Whether the server said anything: after a time-out or a lost connection
// the rest of a run is not sent.
bool Answered(const DavReply& reply);

// A refusal of the event itself that sending it again cannot change: a 403
// that names a condition other than the user's rights (such as Cyrus's
// "valid-calendar-data: DTEND must occur after DTSTART").
QString LastingRefusal(const DavReply& reply);

// A refusal of this one event that a later run may get past, such as a 400
// or a 413: not a matter of the URL, the user's rights or a conflict, which
// hold for every event and have messages of their own.
bool RefusesTheEvent(const DavReply& reply);

// The server's words on a refusal: its DAV:error, or a short text body.
QString ServerWords(const DavReply& reply);

}  // namespace kelvane::cal
