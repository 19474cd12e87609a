#include "editor/ParseTime.h"

#include "calfile/Conversions.h"

namespace kelvane {

namespace {

const QString kSeparators = QStringLiteral("-:.,/");

// The 0-based position of the only separator; -1 when there is none or more
// than one. The scan stops at the second.
qsizetype OnlySeparator(const QString& text) {
    qsizetype found = -1;
    for (qsizetype position = 0; position < text.size(); ++position) {
        if (kSeparators.contains(text[position])) {
            if (found >= 0) {
                return -1;
            }
            found = position;
        }
    }
    return found;
}

}  // namespace

bool ParseTime(const QString& text, ClockTime& target) {
    const qsizetype separator = OnlySeparator(text);
    if (separator < 0 || separator == text.size() - 1) {
        return false;
    }
    const QString after = text.mid(separator + 1);
    if (!IsNumeric(text.left(separator)) || !IsNumeric(after)) {
        return false;
    }
    const double hour = RoundHalfEven(Val(text.left(separator + 1)));
    const double minute = RoundHalfEven(Val(after));
    if (!(hour >= 0 && hour <= 23) || !(minute >= 0 && minute <= 59)) {
        return false;
    }
    target.Hour = static_cast<qint16>(hour);
    target.Minute = static_cast<qint16>(minute);
    return true;
}

}  // namespace kelvane
