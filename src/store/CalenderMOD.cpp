#include "store/CalenderMOD.h"

#include <algorithm>

#include "store/Module1.h"

namespace kelvane {

ColourValue MakeColour(int red, int green, int blue) {
    return std::clamp(red, 0, 255) + std::clamp(green, 0, 255) * 256 +
           std::clamp(blue, 0, 255) * 65536;
}

ColourValue ShiftColour(ColourValue base, int dr, int dg, int db) {
    qint16 red = 0;
    qint16 green = 0;
    qint16 blue = 0;
    SplitColour(base, red, green, blue);
    return MakeColour(red + dr, green + dg, blue + db);
}

ColourValue ResolveColour(ColourValue base, const ColourChoice& choice) {
    if (!choice.Enabled) {
        return base;
    }
    if (choice.Absolute) {
        return MakeColour(choice.Red, choice.Green, choice.Blue);
    }
    return ShiftColour(base, choice.Red, choice.Green, choice.Blue);
}

QString FormatCalDate(const CalDate& date) {
    return QStringLiteral("%1-%2-%3").arg(date.Day).arg(date.Month).arg(date.Year);
}

void AddDaysInYear(CalDate& result, const CalDate& start, int days,
                   const MonthLengths& yearMonthLengths) {
    result = start;
    if (days < 1 || !MonthLengths::Contains(result.Month)) {
        return;
    }
    long long remaining = days;
    while (remaining > 0) {
        const int length = yearMonthLengths[result.Month];
        if (result.Day + remaining <= length) {
            result.Day = static_cast<qint16>(result.Day + remaining);
            return;
        }
        if (result.Month == 12) {
            result.Day = 31;
            return;
        }
        // Use up the rest of this month and move to the 1st of the next.
        remaining -= length - result.Day + 1;
        ++result.Month;
        result.Day = 1;
    }
}

bool DateBefore(const CalDate& a, const CalDate& b) {
    return a.Month < b.Month || (a.Month == b.Month && a.Day < b.Day);
}

bool IsLastDayOfYear(const CalDate& date) {
    return date.Month == 12 && date.Day == 31;
}

}  // namespace kelvane
