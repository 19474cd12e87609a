#include "calfile/LineWriter.h"

#include <charconv>

namespace kelvane {

namespace {

// Pending lines go to the device once they reach this size.
constexpr qsizetype kFlushSize = 64 * 1024;
// Room for the longest number line or value list: five 64-bit numbers, the
// commas and the line end.
constexpr std::size_t kNumberLineRoom = 5 * 21 + 8;

bool IsLineBreak(QChar c) {
    return c == u'\r' || c == u'\n';
}

bool IsAscii(QStringView text) {
    char16_t all = 0;
    for (const QChar c : text) {
        all |= c.unicode();
    }
    return all < 0x80;
}

char* PutNumber(char* out, char* end, qint64 value) {
    return std::to_chars(out, end, value).ptr;
}

}  // namespace

void LineWriter::EndLine(const char* line, qsizetype length) {
    pending_.append(line, length);
    if (pending_.size() >= kFlushSize) {
        Flush();
    }
}

void LineWriter::Flush() {
    if (pending_.isEmpty()) {
        return;
    }
    if (ok_ && device_.write(pending_) != pending_.size()) {
        ok_ = false;
    }
    pending_.resize(0);  // keeps the capacity for the lines to come
}

void LineWriter::WriteText(QStringView text) {
    if (IsAscii(text)) {
        const qsizetype start = pending_.size();
        pending_.resize(start + text.size() + 2);
        char* out = pending_.data() + start;
        for (const QChar c : text) {
            *out++ = IsLineBreak(c) ? ' ' : static_cast<char>(c.unicode());
        }
        *out++ = '\r';
        *out = '\n';
        EndLine(nullptr, 0);
        return;
    }
    QString copy = text.toString();
    copy.replace(QLatin1Char('\r'), QLatin1Char(' '));
    copy.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QByteArray bytes = copy.toUtf8() + "\r\n";
    EndLine(bytes.constData(), bytes.size());
}

void LineWriter::WriteNumber(qint64 value) {
    char line[kNumberLineRoom];
    char* const end = line + sizeof line;
    char* out = line;
    if (value >= 0) {
        *out++ = ' ';
    }
    out = PutNumber(out, end, value);
    *out++ = ' ';
    *out++ = '\r';
    *out++ = '\n';
    EndLine(line, out - line);
}

void LineWriter::WriteValueList(std::initializer_list<qint64> values) {
    Q_ASSERT(values.size() <= 5);
    char line[kNumberLineRoom];
    char* const end = line + sizeof line;
    char* out = line;
    for (const qint64 value : values) {
        if (out != line) {
            *out++ = ',';
        }
        out = PutNumber(out, end, value);
    }
    *out++ = '\r';
    *out++ = '\n';
    EndLine(line, out - line);
}

}  // namespace kelvane
