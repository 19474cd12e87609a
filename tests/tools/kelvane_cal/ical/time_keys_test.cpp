#include <gtest/gtest.h>

#include <vector>

#include "fixtures/SameTimes.h"
#include "kelvane_cal/ical/TimeKeys.h"
#include "kelvane_cal/ical/ZoneBook.h"

namespace kelvane::cal {
namespace {

// libical's own reading of an instant in UTC, which UtcTimeAt stands in for.
icaltimetype LibicalUtcAt(qint64 key) {
    return icaltime_from_timet_with_zone(static_cast<time_t>(key), 0,
                                         icaltimezone_get_utc_timezone());
}

void ExpectSameTime(const icaltimetype& is, const icaltimetype& was, qint64 key) {
    SCOPED_TRACE(key);
    testing::ExpectSameFields(is, was);
}

// Seconds since 1970 from year 1 on, the years around 1970, leap days and
// the last seconds of days, before and after 1970.
std::vector<qint64> SampleKeys() {
    std::vector<qint64> keys = {
        0,          -1,         1,         86399,        86400,        -86400,
        -86401,     951868799,  951868800, -62135596800, -62135596799, 253402300799,
        2147483647, -2147483648};
    for (qint64 key = -62135596800; key < 253402300800; key += 7777777 * 13 + 3601) {
        keys.push_back(key);
    }
    return keys;
}

TEST(TimeKeys, UtcTimeAtGivesWhatLibicalGives) {
    for (const qint64 key : SampleKeys()) {
        ExpectSameTime(UtcTimeAt(key), LibicalUtcAt(key), key);
    }
    // Before year 1 the C library counts a year 0.
    for (const qint64 key : {qint64{-62135596801}, qint64{-62198755200}, qint64{-64000000000}}) {
        ExpectSameTime(UtcTimeAt(key), LibicalUtcAt(key), key);
    }
}

TEST(TimeKeys, FieldsInZoneAtGiveWhatLibicalGives) {
    const std::vector<icaltimezone*> zones = {nullptr,
                                              icaltimezone_get_utc_timezone(),
                                              ZoneNamed(QStringLiteral("Europe/Berlin")),
                                              ZoneNamed(QStringLiteral("Europe/London")),
                                              ZoneNamed(QStringLiteral("America/New_York")),
                                              ZoneNamed(QStringLiteral("Australia/Lord_Howe"))};
    // Years 1901 to 2100: libical works a zone's changes out up to the
    // latest year it is asked about, which for year 9999 takes minutes.
    std::vector<qint64> keys;
    for (qint64 key = -2177452800; key < 4133980800; key += 7777777 + 3601) {
        keys.push_back(key);
    }
    // Around Berlin's clock changes in 2026.
    for (qint64 key = 1774746000 - 7200; key <= 1774746000 + 7200; key += 900) {
        keys.push_back(key);
        keys.push_back(key + 1792890000 - 1774746000);
    }
    for (icaltimezone* zone : zones) {
        for (const qint64 key : keys) {
            for (const bool isDate : {false, true}) {
                ExpectSameTime(
                    FieldsInZoneAt(key, zone, isDate),
                    icaltime_from_timet_with_zone(static_cast<time_t>(key), isDate, zone), key);
            }
        }
    }
}

TEST(TimeKeys, UtcOffsetAtAClockChangeIsLibicalsOffset) {
    icaltimezone* berlin = ZoneNamed(QStringLiteral("Europe/Berlin"));
    ASSERT_NE(berlin, nullptr);
    // 29 March 2026 01:00 UTC the clocks go forward; 25 October 01:00 UTC back.
    for (const qint64 change : {qint64{1774746000}, qint64{1792890000}}) {
        for (qint64 key = change - 2; key <= change + 2; ++key) {
            icaltimetype utc = LibicalUtcAt(key);
            int daylight = 0;
            EXPECT_EQ(UtcOffsetAt(berlin, key),
                      icaltimezone_get_utc_offset_of_utc_time(berlin, &utc, &daylight))
                << key;
        }
    }
    EXPECT_EQ(UtcOffsetAt(berlin, 1774746000 - 1), 3600);
    EXPECT_EQ(UtcOffsetAt(berlin, 1774746000), 7200);
}

}  // namespace
}  // namespace kelvane::cal
