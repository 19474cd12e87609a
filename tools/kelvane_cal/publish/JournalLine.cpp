#include "kelvane_cal/publish/JournalLine.h"

#include <QJsonDocument>

#include <algorithm>

namespace kelvane::cal {

namespace {

unsigned CodeOf(char character) {
    return static_cast<unsigned char>(character);
}

unsigned CodeOf(QChar character) {
    return character.unicode();
}

// Writes `text` at `out` as a JSON string, escaped as QJsonDocument escapes
// it, and gives the end of what it wrote; nullptr when the text holds
// anything but printable ASCII, which is left to Qt. `out` has room for
// twice the text and its quotes.
template <typename Text>
char* WritePlainString(char* out, const Text& text) {
    *out++ = '"';
    for (const auto character : text) {
        const unsigned code = CodeOf(character);
        if (code < 0x20 || code > 0x7e) {
            return nullptr;
        }
        if (code == '"' || code == '\\') {
            *out++ = '\\';
        }
        *out++ = static_cast<char>(code);
    }
    *out++ = '"';
    return out;
}

// Copies a literal without its terminating zero, giving the end.
template <std::size_t size>
char* WriteLiteral(char* out, const char (&literal)[size]) {
    return std::copy(literal, literal + size - 1, out);
}

}  // namespace

QJsonObject EventFields(const PublishedEvent& event) {
    return {{QStringLiteral("etag"), QString::fromUtf8(event.ETag)},
            {QStringLiteral("hash"), QString::fromLatin1(event.Hash)}};
}

// Written by hand for the common case, as one line goes to the journal for
// every event sent; through Qt for any other character. The line has room
// for one more byte, so that the journal's line break costs no copy.
QByteArray PutLine(const QString& uid, const PublishedEvent& event) {
    const qsizetype room = 32 + 2 * (event.ETag.size() + event.Hash.size() + uid.size());
    QByteArray line(room, Qt::Uninitialized);
    char* out = WriteLiteral(line.data(), "{\"etag\":");
    out = WritePlainString(out, event.ETag);
    if (out != nullptr) {
        out = WritePlainString(WriteLiteral(out, ",\"hash\":"), event.Hash);
    }
    if (out != nullptr) {
        out = WritePlainString(WriteLiteral(out, ",\"uid\":"), QStringView(uid));
    }
    if (out != nullptr) {
        *out++ = '}';
        line.truncate(out - line.constData());
        return line;
    }
    QJsonObject change = EventFields(event);
    change.insert(QStringLiteral("uid"), uid);
    return QJsonDocument(change).toJson(QJsonDocument::Compact);
}

}  // namespace kelvane::cal
