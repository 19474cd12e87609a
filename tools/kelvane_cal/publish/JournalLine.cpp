#include "kelvane_cal/publish/JournalLine.h"

#include <QJsonDocument>

namespace kelvane::cal {

namespace {

unsigned CodeOf(char character) {
    return static_cast<unsigned char>(character);
}

unsigned CodeOf(QChar character) {
    return character.unicode();
}

// Appends `text` as a JSON string, escaped as QJsonDocument escapes it;
// false when it holds anything but printable ASCII, which is left to Qt.
template <typename Text>
bool AppendPlainString(QByteArray& line, const Text& text) {
    line += '"';
    for (const auto character : text) {
        const unsigned code = CodeOf(character);
        if (code < 0x20 || code > 0x7e) {
            return false;
        }
        if (code == '"' || code == '\\') {
            line += '\\';
        }
        line += static_cast<char>(code);
    }
    line += '"';
    return true;
}

}  // namespace

QJsonObject EventFields(const PublishedEvent& event) {
    return {{QStringLiteral("etag"), QString::fromUtf8(event.ETag)},
            {QStringLiteral("hash"), QString::fromLatin1(event.Hash)}};
}

// Written by hand for the common case, as one line goes to the journal for
// every event sent; through Qt for any other character.
QByteArray PutLine(const QString& uid, const PublishedEvent& event) {
    QByteArray line;
    line.reserve(32 + event.ETag.size() + event.Hash.size() + uid.size());
    line += "{\"etag\":";
    bool plain = AppendPlainString(line, event.ETag);
    line += ",\"hash\":";
    plain = plain && AppendPlainString(line, event.Hash);
    line += ",\"uid\":";
    plain = plain && AppendPlainString(line, QStringView(uid));
    line += '}';
    if (plain) {
        return line;
    }
    QJsonObject change = EventFields(event);
    change.insert(QStringLiteral("uid"), uid);
    return QJsonDocument(change).toJson(QJsonDocument::Compact);
}

}  // namespace kelvane::cal
