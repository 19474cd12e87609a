#include "calfile/LineWriter.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace kelvane {

namespace {

// Pending lines go to the device once they reach this size.
constexpr qsizetype kFlushSize = 64 * 1024;
// Room for the longest number line or value list: five 64-bit numbers, the
// commas and the line end.
constexpr qsizetype kNumberLineRoom = 5 * 21 + 8;

// The line break characters CR and LF become blanks; every other character
// is kept. Written to be vectorised: no branch depends on the text.
char AsciiTextByte(char16_t c) {
    const char byte = static_cast<char>(c);
    return byte == '\r' || byte == '\n' ? ' ' : byte;
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

char* PutLineEnd(char* out) {
    *out++ = '\r';
    *out++ = '\n';
    return out;
}

}  // namespace

char* LineWriter::Room(qsizetype length) {
    if (buffer_.size() - pending_ < length) {
        buffer_.resize(std::max(pending_ + length, kFlushSize + kNumberLineRoom));
    }
    return buffer_.data() + pending_;
}

void LineWriter::EndLine(const char* end) {
    pending_ = end - buffer_.constData();
    if (pending_ >= kFlushSize) {
        Flush();
    }
}

void LineWriter::Flush() {
    if (pending_ == 0) {
        return;
    }
    if (ok_ && device_.write(buffer_.constData(), pending_) != pending_) {
        ok_ = false;
    }
    pending_ = 0;  // the buffer keeps its room for the lines to come
}

void LineWriter::WriteText(QStringView text) {
    if (IsAscii(text)) {
        char* out = Room(text.size() + 2);
        const char16_t* in = text.utf16();
        for (qsizetype i = 0; i < text.size(); ++i) {
            out[i] = AsciiTextByte(in[i]);
        }
        EndLine(PutLineEnd(out + text.size()));
        return;
    }
    QString copy = text.toString();
    copy.replace(QLatin1Char('\r'), QLatin1Char(' '));
    copy.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QByteArray bytes = copy.toUtf8();
    char* out = Room(bytes.size() + 2);
    std::memcpy(out, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    EndLine(PutLineEnd(out + bytes.size()));
}

void LineWriter::WriteNumber(qint64 value) {
    char* out = Room(kNumberLineRoom);
    char* const end = out + kNumberLineRoom;
    if (value >= 0) {
        *out++ = ' ';
    }
    out = PutNumber(out, end, value);
    *out++ = ' ';
    EndLine(PutLineEnd(out));
}

void LineWriter::WriteValueList(std::initializer_list<qint64> values) {
    Q_ASSERT(values.size() <= 5);
    char* const line = Room(kNumberLineRoom);
    char* const end = line + kNumberLineRoom;
    char* out = line;
    for (const qint64 value : values) {
        if (out != line) {
            *out++ = ',';
        }
        out = PutNumber(out, end, value);
    }
    EndLine(PutLineEnd(out));
}

}  // namespace kelvane
