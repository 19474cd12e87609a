#include "calfile/LineReader.h"

#include <QStringDecoder>
#include <QStringList>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "calfile/Conversions.h"
#include "calfile/Cp1252.h"

namespace kelvane {

namespace {

bool IsAscii(QByteArrayView bytes) {
    for (const char byte : bytes) {
        if (static_cast<unsigned char>(byte) >= 0x80) {
            return false;
        }
    }
    return true;
}

// A plain integer with blanks or tabs around it, "-12" or " 7 ", as nearly
// every number of a calendar file is written; other forms go the long way.
std::optional<qint32> PlainInteger(QByteArrayView text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && isBlank(text[first])) {
        ++first;
    }
    while (last > first && isBlank(text[last - 1])) {
        --last;
    }
    const bool negative = first < last && text[first] == '-';
    if (negative) {
        ++first;
    }
    if (first == last || last - first > 9) {
        return std::nullopt;  // empty, or perhaps beyond 32 bits
    }
    qint32 value = 0;
    for (qsizetype i = first; i < last; ++i) {
        const char c = text[i];
        if (c < '0' || c > '9') {
            return std::nullopt;
        }
        value = value * 10 + (c - '0');
    }
    return negative ? -value : value;
}

QString DecodeLine(QByteArrayView bytes) {
    if (IsAscii(bytes)) {
        return QString::fromLatin1(bytes);
    }
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    return utf8.hasError() ? DecodeCp1252(bytes) : text;
}

// The same into `line`, whose buffer is used again when it is large enough
// and `line` its only owner: most lines are ASCII and each byte is copied as
// it stands.
void DecodeLineInto(QByteArrayView bytes, QString& line) {
    if (bytes.isEmpty()) {
        line = DecodeLine(bytes);
        return;
    }
    if (line.isDetached() && line.capacity() >= bytes.size()) {
        line.resize(bytes.size());
    } else {
        line = QString(bytes.size(), Qt::Uninitialized);  // nothing of the old to copy
    }
    char16_t* out = reinterpret_cast<char16_t*>(line.data());
    unsigned char all = 0;
    for (const char byte : bytes) {
        all |= static_cast<unsigned char>(byte);
        *out++ = static_cast<unsigned char>(byte);
    }
    if (all >= 0x80) {
        line = DecodeLine(bytes);
    }
}

}  // namespace

LineReader::LineReader(QByteArray content) : content_(std::move(content)) {
    if (content_.startsWith("\xEF\xBB\xBF")) {
        position_ = 3;  // a UTF-8 byte order mark is not part of the first line
    }
}

bool LineReader::Fail(int line, const QString& reason) {
    if (!Failed()) {
        failureLine_ = line;
        failure_ = reason;
    }
    return false;
}

bool LineReader::NextLine(QByteArrayView& bytes) {
    if (Failed()) {
        return false;
    }
    if (AtEnd()) {
        return Fail(lineNumber_ + 1, QStringLiteral("the file ends early"));
    }
    qsizetype end = content_.indexOf('\n', position_);
    const qsizetype next = end < 0 ? content_.size() : end + 1;
    if (end < 0) {
        end = content_.size();
    }
    if (end > position_ && content_.at(end - 1) == '\r') {
        --end;
    }
    bytes = QByteArrayView(content_).sliced(position_, end - position_);
    position_ = next;
    ++lineNumber_;
    return true;
}

bool LineReader::ReadLine(QString& line) {
    QByteArrayView bytes;
    if (!NextLine(bytes)) {
        line.clear();
        return false;
    }
    DecodeLineInto(bytes, line);
    return true;
}

bool LineReader::ReadNumberText(QByteArrayView bytes, qint32& value) {
    if (const std::optional<qint32> plain = PlainInteger(bytes)) {
        value = *plain;
        return true;
    }
    // IsNumeric and Val both pass over the blanks and tabs around the number.
    const QString text = DecodeLine(bytes);
    if (!IsNumeric(text)) {
        return Fail(lineNumber_, QStringLiteral("a number was expected"));
    }
    const double rounded = std::clamp(RoundHalfEven(Val(text)), -2147483648.0, 2147483647.0);
    value = static_cast<qint32>(rounded);
    return true;
}

bool LineReader::ReadNumber(qint32& value) {
    QByteArrayView bytes;
    return NextLine(bytes) && ReadNumberText(bytes, value);
}

// Commas never occur inside a multi-byte character, so the raw bytes can be
// split before any decoding.
bool LineReader::ReadValueList(std::span<qint32> values) {
    QByteArrayView line;
    if (!NextLine(line)) {
        return false;
    }
    if (std::count(line.begin(), line.end(), ',') + 1 != static_cast<qsizetype>(values.size())) {
        return Fail(
            lineNumber_,
            QStringLiteral("%1 numbers separated by commas were expected").arg(values.size()));
    }
    qsizetype start = 0;
    for (qint32& value : values) {
        qsizetype end = start;
        while (end < line.size() && line[end] != ',') {
            ++end;
        }
        if (!ReadNumberText(line.sliced(start, end - start), value)) {
            return false;
        }
        start = end + 1;
    }
    return true;
}

bool LineReader::Narrow(qint32 number, qint16& value) {
    if (number < std::numeric_limits<qint16>::min() ||
        number > std::numeric_limits<qint16>::max()) {
        return Fail(lineNumber_, QStringLiteral("a number from -32768 to 32767 was expected"));
    }
    value = static_cast<qint16>(number);
    return true;
}

bool LineReader::ReadNumber16(qint16& value) {
    qint32 number = 0;
    return ReadNumber(number) && Narrow(number, value);
}

bool LineReader::ReadValueList16(std::span<qint16> values) {
    std::array<qint32, 8> numbers{};
    if (values.size() > numbers.size()) {
        return Fail(lineNumber_ + 1, QStringLiteral("too many numbers asked for"));
    }
    const std::span<qint32> wanted(numbers.data(), values.size());
    if (!ReadValueList(wanted)) {
        return false;
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!Narrow(wanted[i], values[i])) {
            return false;
        }
    }
    return true;
}

}  // namespace kelvane
