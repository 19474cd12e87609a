#include "calfile/Conversions.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "calfile/Graphemes.h"

namespace kelvane {

namespace {

bool IsValSkipped(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n';
}

bool IsAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// Scans a number in `text` from `pos`: [sign] digits [. digits] [exponent].
// Appends the accepted characters (with the exponent letter as 'e') to `out`
// and returns the position after them. `digits` tells whether the mantissa had
// at least one digit.
qsizetype ScanNumber(const QString& text, qsizetype pos, std::string& out, bool& digits) {
    const auto at = [&](qsizetype i) { return i < text.size() ? text[i] : QChar(); };
    digits = false;
    if (at(pos) == u'+' || at(pos) == u'-') {
        out += static_cast<char>(at(pos).unicode());
        ++pos;
    }
    for (; IsAsciiDigit(at(pos)); ++pos) {
        out += static_cast<char>(at(pos).unicode());
        digits = true;
    }
    if (at(pos) == u'.') {
        out += '.';
        for (++pos; IsAsciiDigit(at(pos)); ++pos) {
            out += static_cast<char>(at(pos).unicode());
            digits = true;
        }
    }
    const QChar e = at(pos).toUpper();
    if (digits && (e == u'E' || e == u'D')) {
        qsizetype p = pos + 1;
        std::string exponent = "e";
        if (at(p) == u'+' || at(p) == u'-') {
            exponent += static_cast<char>(at(p).unicode());
            ++p;
        }
        if (IsAsciiDigit(at(p))) {
            for (; IsAsciiDigit(at(p)); ++p) {
                exponent += static_cast<char>(at(p).unicode());
            }
            out += exponent;
            pos = p;
        }
    }
    return pos;
}

// Converts a scanned number; values beyond a double become infinities.
double ToDouble(const std::string& number) {
    const bool negative = !number.empty() && number.front() == '-';
    const std::size_t start = (!number.empty() && (number.front() == '-' || number.front() == '+'));
    double value = 0.0;
    const char* first = number.data() + start;
    const char* last = number.data() + number.size();
    const auto result = std::from_chars(first, last, value);
    if (result.ec == std::errc::result_out_of_range) {
        // Tiny values underflow towards 0, huge ones overflow.
        const bool huge = number.find("e-") == std::string::npos;
        value = huge ? std::numeric_limits<double>::infinity() : 0.0;
    } else if (result.ec != std::errc()) {
        value = 0.0;
    }
    return negative ? -value : value;
}

}  // namespace

double Val(const QString& text) {
    QString packed;
    packed.reserve(text.size());
    for (QChar c : text) {
        if (!IsValSkipped(c)) {
            packed += c;
        }
    }
    std::string number;
    bool digits = false;
    ScanNumber(packed, 0, number, digits);
    return digits ? ToDouble(number) : 0.0;
}

bool IsNumeric(const QString& text) {
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && (text[first] == u' ' || text[first] == u'\t')) {
        ++first;
    }
    while (last > first && (text[last - 1] == u' ' || text[last - 1] == u'\t')) {
        --last;
    }
    const QString core = text.mid(first, last - first);
    std::string number;
    bool digits = false;
    const qsizetype end = ScanNumber(core, 0, number, digits);
    return digits && end == core.size() && std::isfinite(ToDouble(number));
}

double RoundHalfEven(double value) {
    if (!std::isfinite(value)) {
        return value;
    }
    const double below = std::floor(value);
    const double fraction = value - below;
    if (fraction > 0.5) {
        return below + 1.0;
    }
    if (fraction < 0.5) {
        return below;
    }
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

std::optional<qint16> ToInteger16(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= -32768.0 && rounded <= 32767.0)) {
        return std::nullopt;
    }
    return static_cast<qint16>(rounded);
}

std::optional<qint32> ToInteger32(double value) {
    const double rounded = RoundHalfEven(value);
    if (!(rounded >= -2147483648.0 && rounded <= 2147483647.0)) {
        return std::nullopt;
    }
    return static_cast<qint32>(rounded);
}

qint16 Val16(const QString& text) {
    return ToInteger16(Val(text)).value_or(0);
}

QString Str(qint64 value) {
    const QString digits = QString::number(value);
    return value < 0 ? digits : QLatin1Char(' ') + digits;
}

QString LTrim(const QString& text) {
    qsizetype first = 0;
    while (first < text.size() && text[first] == u' ') {
        ++first;
    }
    return text.mid(first);
}

QString RTrim(const QString& text) {
    qsizetype last = text.size();
    while (last > 0 && text[last - 1] == u' ') {
        --last;
    }
    return text.left(last);
}

QString Trim(const QString& text) {
    return LTrim(RTrim(text));
}

QStringView TrimmedView(QStringView text) {
    qsizetype first = 0;
    qsizetype last = text.size();
    while (last > first && text[last - 1] == u' ') {
        --last;
    }
    while (first < last && text[first] == u' ') {
        ++first;
    }
    return text.sliced(first, last - first);
}

QString CutText(const QString& text, qsizetype length) {
    if (text.size() <= length) {
        return text;
    }
    return text.left(GraphemeCut(text, length));
}

}  // namespace kelvane
