#include "kelvane_cal/ical/EventLengths.h"

#include <QRegularExpression>

namespace kelvane::cal {

namespace {

// Adds `count` units of `unitSeconds` to `total`; false, leaving it, when the
// sum would pass kLongestLength (or overflow on the way there).
bool AddUnits(qint64 count, qint64 unitSeconds, qint64& total) {
    if (count > (kLongestLength - total) / unitSeconds) {
        return false;
    }
    total += count * unitSeconds;
    return true;
}

}  // namespace

// A DURATION in seconds, counted in 64 bits: libical's own count is an int,
// which a DURATION of 5000 weeks already overflows into a negative one.
qint64 SecondsOf(const icaldurationtype& duration) {
    const qint64 days = qint64{duration.weeks} * 7 + qint64{duration.days};
    const qint64 seconds =
        ((days * 24 + qint64{duration.hours}) * 60 + qint64{duration.minutes}) * 60 +
        qint64{duration.seconds};
    return duration.is_neg != 0 ? -seconds : seconds;
}

// The seconds of a DURATION as the file writes it ("P1W", "-PT90M",
// "P2DT3H"); `tooLong` when it passes kLongestLength. False for a text that is
// no DURATION, which libical's own reading then stands in for.
bool SecondsOfText(const QString& text, qint64& seconds, bool& tooLong) {
    static const QRegularExpression kDuration(QStringLiteral(
        R"(^([+-]?)P(?:(\d+)W|(?:(\d+)D)?(?:T(?:(\d+)H)?(?:(\d+)M)?(?:(\d+)S)?)?)$)"));
    const QRegularExpressionMatch match = kDuration.match(text.toUpper());
    if (!match.hasMatch()) {
        return false;
    }
    static const qint64 kUnits[] = {7 * kSecondsInADay, kSecondsInADay, 60 * 60, 60, 1};
    qint64 total = 0;
    bool anyUnit = false;
    tooLong = false;
    for (int unit = 0; unit < 5; ++unit) {
        const QString digits = match.captured(unit + 2);
        if (digits.isEmpty()) {
            continue;
        }
        anyUnit = true;
        bool fits = false;
        const qint64 count = digits.toLongLong(&fits);
        if (!fits || !AddUnits(count, kUnits[unit], total)) {
            tooLong = true;
        }
    }
    if (!anyUnit) {
        return false;  // "P" or "PT" alone
    }
    seconds = match.captured(1) == QStringLiteral("-") ? -total : total;
    return true;
}

}  // namespace kelvane::cal
