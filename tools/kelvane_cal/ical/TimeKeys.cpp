#include "kelvane_cal/ical/TimeKeys.h"

#include <QDate>

#include <algorithm>

namespace kelvane::cal {

namespace {

// QDate(1970, 1, 1).toJulianDay() and QDate(1, 1, 1).toJulianDay()
constexpr qint64 kJulianDayOf1970 = 2440588;
constexpr qint64 kJulianDayOfYear1 = 1721426;

constexpr qint64 kSecondsIn400Years = kDaysIn400Years * kSecondsInADay;

// How many times 400 years a time must be moved back to fall before 2438.
// libical works a zone's offsets out anew for every time past the years it
// follows rules to, which takes long; from 2038 on the zones' rules no longer
// change, and 400 years later the calendar is the same again.
qint64 CyclesPastTheLastRules(qint64 key) {
    static const qint64 kFirstCycledKey =
        (QDate(2438, 1, 1).toJulianDay() - QDate(1970, 1, 1).toJulianDay()) * kSecondsInADay;
    return key < kFirstCycledKey ? 0 : (key - kFirstCycledKey) / kSecondsIn400Years + 1;
}

// The fields of `time` as seconds since 1970 as if in UTC. Counted from the
// day number, as libical's own conversion stops at 1902; fields past their
// range (a 32nd day, a 24th hour) run on into the next.
qint64 WallClockSeconds(const icaltimetype& time) {
    if (icaltime_is_null_time(time)) {
        return 0;
    }
    const qint64 months = qint64{time.year} * 12 + time.month - 1;
    const qint64 year = months >= 0 ? months / 12 : (months - 11) / 12;
    const QDate firstOfMonth(static_cast<int>(year), static_cast<int>(months - year * 12 + 1), 1);
    const qint64 days = firstOfMonth.toJulianDay() - kJulianDayOf1970 + time.day - 1;
    const qint64 seconds =
        time.is_date ? 0 : qint64{time.hour} * 3600 + qint64{time.minute} * 60 + time.second;
    return days * kSecondsInADay + seconds;
}

}  // namespace

qint64 TimeKey(const icaltimetype& time) {
    const qint64 wallClock = WallClockSeconds(time);
    if (time.is_date || time.zone == nullptr) {
        return wallClock;
    }
    return InstantOfWallClock(wallClock, time.zone);
}

icaltimetype UtcTimeAt(qint64 key) {
    qint64 days = key / kSecondsInADay;
    qint64 seconds = key % kSecondsInADay;
    if (seconds < 0) {
        seconds += kSecondsInADay;
        --days;
    }
    if (days + kJulianDayOf1970 < kJulianDayOfYear1) {
        // QDate has no year 0, which the C library counts before year 1.
        return icaltime_from_timet_with_zone(static_cast<time_t>(key), 0,
                                             icaltimezone_get_utc_timezone());
    }
    icaltimetype time = icaltime_null_time();
    QDate::fromJulianDay(days + kJulianDayOf1970).getDate(&time.year, &time.month, &time.day);
    time.hour = static_cast<int>(seconds / 3600);
    time.minute = static_cast<int>(seconds / 60 % 60);
    time.second = static_cast<int>(seconds % 60);
    time.zone = icaltimezone_get_utc_timezone();
    return time;
}

int UtcOffsetAt(const icaltimezone* zone, qint64 key) {
    icaltimetype utc = UtcTimeAt(key - CyclesPastTheLastRules(key) * kSecondsIn400Years);
    int isDaylight = 0;
    // libical takes the zone as changeable only to extend its list of changes.
    return icaltimezone_get_utc_offset_of_utc_time(const_cast<icaltimezone*>(zone), &utc,
                                                   &isDaylight);
}

qint64 InstantOfWallClock(qint64 wallClock, const icaltimezone* zone) {
    if (zone == icaltimezone_get_utc_timezone()) {
        return wallClock;  // UTC's offset is always 0
    }
    // libical reads both a skipped and a repeated time with the offset after
    // the change; RFC 5545 (3.3.5) wants the offset before the gap, and the
    // first of the two instants.
    const int before = UtcOffsetAt(zone, wallClock - kSecondsInADay);
    const int after = UtcOffsetAt(zone, wallClock + kSecondsInADay);
    const qint64 underBefore = wallClock - before;
    const qint64 underAfter = wallClock - after;
    const bool beforeHolds = UtcOffsetAt(zone, underBefore) == before;
    const bool afterHolds = UtcOffsetAt(zone, underAfter) == after;
    if (beforeHolds && afterHolds) {
        return std::min(underBefore, underAfter);
    }
    return afterHolds ? underAfter : underBefore;
}

icaltimetype InFrameOf(icaltimetype time, const icaltimetype& start) {
    if (start.is_date || start.zone == nullptr) {
        time.zone = nullptr;
    } else if (!time.is_date && time.zone == nullptr) {
        time = icaltime_set_timezone(&time, start.zone);
    }
    return time;
}

icaltimetype FieldsInZoneAt(qint64 key, const icaltimezone* zone, bool isDate) {
    icaltimezone* utc = icaltimezone_get_utc_timezone();
    icaltimetype time = UtcTimeAt(key);
    // Without a zone, or in UTC, libical's conversion leaves the fields as they are.
    if (zone == nullptr) {
        time.zone = nullptr;
    } else if (zone != utc) {
        // libical takes the zones as changeable only to extend their lists of changes.
        icaltimezone_convert_time(&time, utc, const_cast<icaltimezone*>(zone));
    }
    time.is_date = isDate ? 1 : 0;
    if (isDate) {
        time.hour = 0;
        time.minute = 0;
        time.second = 0;
    }
    return time;
}

icaltimetype TimeInZoneAt(qint64 key, const icaltimezone* zone, bool isDate) {
    const qint64 cycles = zone == nullptr ? 0 : CyclesPastTheLastRules(key);
    icaltimetype time = FieldsInZoneAt(key - cycles * kSecondsIn400Years, zone, isDate);
    time.year += static_cast<int>(cycles * 400);
    // libical works the fields out in the zone but leaves the time without it.
    time.zone = zone;
    return time;
}

icaltimetype TimeAtKey(qint64 key, const icaltimetype& start) {
    const bool floating = start.is_date || start.zone == nullptr;
    return TimeInZoneAt(key, floating ? nullptr : start.zone, start.is_date);
}

}  // namespace kelvane::cal
