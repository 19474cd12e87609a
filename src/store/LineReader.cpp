#include "store/LineReader.h"

#include <QStringDecoder>
#include <QStringList>

#include <algorithm>

#include "store/Conversions.h"
#include "store/Cp1252.h"

namespace kelvane {

namespace {

QString DecodeLine(QByteArrayView bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    return utf8.hasError() ? DecodeCp1252(bytes) : text;
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

bool LineReader::ReadLine(QString& line) {
    line.clear();
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
    if (end > position_ && content_[end - 1] == '\r') {
        --end;
    }
    line = DecodeLine(QByteArrayView(content_).sliced(position_, end - position_));
    position_ = next;
    ++lineNumber_;
    return true;
}

bool LineReader::ReadNumberText(const QString& text, qint32& value) {
    // IsNumeric and Val both pass over the blanks and tabs around the number.
    if (!IsNumeric(text)) {
        return Fail(lineNumber_, QStringLiteral("a number was expected"));
    }
    const double rounded = std::clamp(RoundHalfEven(Val(text)), -2147483648.0, 2147483647.0);
    value = static_cast<qint32>(rounded);
    return true;
}

bool LineReader::ReadNumber(qint32& value) {
    QString line;
    return ReadLine(line) && ReadNumberText(line, value);
}

bool LineReader::ReadValueList(std::span<qint32> values) {
    QString line;
    if (!ReadLine(line)) {
        return false;
    }
    const QStringList fields = line.split(QLatin1Char(','));
    if (fields.size() != static_cast<qsizetype>(values.size())) {
        return Fail(
            lineNumber_,
            QStringLiteral("%1 numbers separated by commas were expected").arg(values.size()));
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!ReadNumberText(fields[static_cast<qsizetype>(i)], values[i])) {
            return false;
        }
    }
    return true;
}

}  // namespace kelvane
