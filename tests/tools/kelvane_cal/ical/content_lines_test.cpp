#include <gtest/gtest.h>

#include <QByteArray>

#include "kelvane_cal/ical/ContentLines.h"

namespace kelvane::cal {
namespace {

// The lines the reader keeps from libical must be lines libical reads
// without an error: leaving them out then changes nothing the import sees.
TEST(ContentLines, LeavesOutOnlyLinesLibicalTakesWithoutAnError) {
    for (const QByteArray line :
         {"DTSTAMP:20260101T000000Z", "CREATED:19040229T235959Z", "LAST-MODIFIED:25821231T235959Z",
          "DTSTAMP:20240229T120000Z", "LOCATION:Room 5", "LOCATION:a\\", "LOCATION:\\x",
          "LOCATION:a,b;c:d", "LOCATION:\"quoted", "LOCATION:\xC3\xA9 \xC3\xBC",
          "LOCATION: leading", "LOCATION:a   ", "LOCATION:\\n\\,\\;"}) {
        EXPECT_TRUE(IsUnreadAndSound(line)) << line.constData();
        EXPECT_EQ(LineError("VEVENT", line), QString()) << line.constData();
    }
}

TEST(ContentLines, HandsEveryOtherLineToLibical) {
    for (const QByteArray line : {"DTSTAMP:20261301T000000Z",
                                  "DTSTAMP:00010101T000000Z",
                                  "CREATED:19000228T235959Z",
                                  "LAST-MODIFIED:99991231T235959Z",
                                  "DTSTAMP:20260230T000000Z",
                                  "DTSTAMP:20260101T240000Z",
                                  "DTSTAMP:20260101T000060Z",
                                  "DTSTAMP:20260101T000000",
                                  "DTSTAMP:2026-01-01T000000Z",
                                  "DTSTAMP;VALUE=DATE:20260101",
                                  "dtstamp:20260101T000000Z",
                                  "DTSTAMP:20260101T000000Z ",
                                  "LOCATION;LANGUAGE=en:Room",
                                  "LOCATION:",
                                  "LOCATION:   ",
                                  "LOCATION:a\tb",
                                  "LOCATION:a\x7F",
                                  "SUMMARY:x",
                                  "UID:x",
                                  "DTSTART:20260101T000000Z",
                                  "X-LOCATION:Room"}) {
        EXPECT_FALSE(IsUnreadAndSound(line)) << line.constData();
    }
}

}  // namespace
}  // namespace kelvane::cal
