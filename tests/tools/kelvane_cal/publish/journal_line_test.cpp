#include <gtest/gtest.h>

#include <QJsonDocument>

#include <map>

#include "kelvane_cal/publish/JournalLine.h"

// The journal's line for a published event is written by hand for plain
// text; it must be the very bytes Qt's JSON writer gives, whatever the text.
namespace kelvane::cal {
namespace {

QByteArray QtLine(const QString& uid, const PublishedEvent& event) {
    QJsonObject change = EventFields(event);
    change.insert(QStringLiteral("uid"), uid);
    return QJsonDocument(change).toJson(QJsonDocument::Compact);
}

TEST(PutLine, IsWhatQtWritesForEveryKindOfText) {
    const QList<QString> texts{
        QString(),
        QStringLiteral("20260317-a1-0badcafe@kelvane"),
        QStringLiteral("\"1710000000-42\""),
        QStringLiteral("W/\"a\\b\""),
        QStringLiteral("tab\there, line\nbreak, return\r, bell\a"),
        QStringLiteral("delete\x7f"),
        QStringLiteral("caf\u00e9 \u65e5\u672c \U0001F600"),
        QStringLiteral("slash / and <html> & 'quotes'"),
    };
    for (const QString& uid : texts) {
        for (const QString& etag : texts) {
            const PublishedEvent event{etag.toUtf8(), etag.toLatin1()};
            EXPECT_EQ(PutLine(uid, event), QtLine(uid, event))
                << uid.toStdString() << " / " << etag.toStdString();
        }
    }
}

TEST(PutLine, KeepsAnETagThatIsNoValidUtf8AsQtDoes) {
    const PublishedEvent event{QByteArray("\"\xff\xfe\""), QByteArray("abc")};
    EXPECT_EQ(PutLine(QStringLiteral("x"), event), QtLine(QStringLiteral("x"), event));
}

// The saved state is written by hand for plain text, keys in the order Qt
// sorts them; anything else goes through Qt. Either way the bytes are Qt's.
TEST(StateText, IsWhatQtWritesForEveryKindOfText) {
    const QList<QString> texts{
        QString(),
        QStringLiteral("20260317-a1-0badcafe@kelvane"),
        QStringLiteral("Z-upper"),
        QStringLiteral("\"1710000000-42\""),
        QStringLiteral("W/\"a\\b\""),
        QStringLiteral("tab\there"),
        QStringLiteral("caf\u00e9"),
        QStringLiteral("del\x7f"),
        QStringLiteral("bell\x07"),
        QStringLiteral("a/b"),
        QString(QChar(0xd800)) + QStringLiteral("lone"),
    };
    const QString url = QStringLiteral("https://dav.example.org/alice/plan/");
    std::map<QString, PublishedEvent> events;
    std::map<QString, QByteArray> refused;
    EXPECT_EQ(StateText(url, QString(), events, refused),
              QtStateText(url, QString(), events, refused));
    for (const QString& text : texts) {
        events[text] = {text.toUtf8(), "0123abcd"};
        events[text + QStringLiteral("-2")] = {"\"e\"", text.toLatin1()};
        EXPECT_EQ(StateText(url, text, events, refused), QtStateText(url, text, events, refused))
            << text.toStdString();
        refused[text] = text.toLatin1();
        EXPECT_EQ(StateText(text, QStringLiteral("seed"), events, refused),
                  QtStateText(text, QStringLiteral("seed"), events, refused))
            << text.toStdString();
    }
}

}  // namespace
}  // namespace kelvane::cal
