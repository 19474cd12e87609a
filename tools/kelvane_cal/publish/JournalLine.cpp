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

// Writes `{"etag":…,"hash":…` and leaves the object open for what follows;
// nullptr when a text is not plain.
char* WriteEventFieldsOpen(char* out, const PublishedEvent& event) {
    out = WritePlainString(WriteLiteral(out, "{\"etag\":"), event.ETag);
    return out == nullptr ? nullptr : WritePlainString(WriteLiteral(out, ",\"hash\":"), event.Hash);
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
    char* out = WriteEventFieldsOpen(line.data(), event);
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

QByteArray QtStateText(const QString& url, const QString& seed,
                       const std::map<QString, PublishedEvent>& events,
                       const std::map<QString, QByteArray>& refused) {
    QJsonObject eventFields;
    for (const auto& [uid, event] : events) {
        eventFields.insert(uid, EventFields(event));
    }
    QJsonObject root{{QStringLiteral("url"), url}, {QStringLiteral("seed"), seed}};
    root.insert(QStringLiteral("events"), eventFields);
    if (!refused.empty()) {
        QJsonObject hashes;
        for (const auto& [uid, hash] : refused) {
            hashes.insert(uid, QString::fromLatin1(hash));
        }
        root.insert(QStringLiteral("refused"), hashes);
    }
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

namespace {

// Writes an object of `values` by UID, each value written by `writeValue`;
// nullptr when a text is not plain. The map's order is the order of Qt's
// keys for plain text.
template <typename Value, typename WriteValue>
char* WriteObject(char* out, const std::map<QString, Value>& values, const WriteValue& writeValue) {
    out = WriteLiteral(out, "{");
    bool first = true;
    for (const auto& [uid, value] : values) {
        out = first ? out : WriteLiteral(out, ",");
        first = false;
        out = WritePlainString(out, QStringView(uid));
        out = out == nullptr ? nullptr : writeValue(WriteLiteral(out, ":"), value);
        if (out == nullptr) {
            return nullptr;
        }
    }
    return WriteLiteral(out, "}");
}

char* WriteEventFields(char* out, const PublishedEvent& event) {
    out = WriteEventFieldsOpen(out, event);
    return out == nullptr ? nullptr : WriteLiteral(out, "}");
}

char* WriteHash(char* out, const QByteArray& hash) {
    return WritePlainString(out, hash);
}

}  // namespace

// Written by hand when every text is plain, as the state holds every event
// of the collection; through Qt otherwise.
QByteArray StateText(const QString& url, const QString& seed,
                     const std::map<QString, PublishedEvent>& events,
                     const std::map<QString, QByteArray>& refused) {
    qsizetype room = 64 + 2 * (url.size() + seed.size());
    for (const auto& [uid, event] : events) {
        room += 32 + 2 * (uid.size() + event.ETag.size() + event.Hash.size());
    }
    for (const auto& [uid, hash] : refused) {
        room += 8 + 2 * (uid.size() + hash.size());
    }
    QByteArray text(room, Qt::Uninitialized);
    char* out = WriteObject(WriteLiteral(text.data(), "{\"events\":"), events, WriteEventFields);
    if (out != nullptr && !refused.empty()) {
        out = WriteObject(WriteLiteral(out, ",\"refused\":"), refused, WriteHash);
    }
    out = out == nullptr ? nullptr
                         : WritePlainString(WriteLiteral(out, ",\"seed\":"), QStringView(seed));
    out = out == nullptr ? nullptr
                         : WritePlainString(WriteLiteral(out, ",\"url\":"), QStringView(url));
    if (out == nullptr) {
        return QtStateText(url, seed, events, refused);
    }
    out = WriteLiteral(out, "}");
    text.truncate(out - text.constData());
    return text;
}

}  // namespace kelvane::cal
