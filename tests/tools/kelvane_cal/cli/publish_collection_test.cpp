#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QThread>

#include "fixtures/CalDavFixture.h"
#include "fixtures/NginxProxy.h"
#include "kelvane_cal/caldav/CalDavUrl.h"
#include "kelvane_cal/publish/PublishState.h"

// How publish knows a collection whatever the spelling of its URL, and what
// it asks of the password and of the files it keeps.
namespace kelvane::cal {
namespace {

using testing::CalRun;
using testing::NginxProxy;

constexpr QFileDevice::Permissions kOwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

// The calendar's URL with "localhost" for the address "127.0.0.1".
QString ByName(const QString& url) {
    QString named = url;
    return named.replace(QStringLiteral("//127.0.0.1:"), QStringLiteral("//localhost:"));
}

class PublishCollectionTest : public testing::CalDavFixture {
  protected:
    CalRun PublishTo(const QString& target, const QStringList& more = {}) {
        url = target;
        return Publish(more);
    }

    CalRun ImportFrom(const QString& target) {
        return Run({QStringLiteral("import"), target, QStringLiteral("--year"),
                    QStringLiteral("2026"), QStringLiteral("--user"), QStringLiteral("alice"),
                    QStringLiteral("-o"), folder.filePath(QStringLiteral("imported.cal"))});
    }

    QStringList StateFiles() const {
        return QDir(environment.StateFolder).entryList({QStringLiteral("*.json")}, QDir::Files);
    }
};

std::string Key(const char* url) {
    return CollectionKey(QUrl(QString::fromUtf8(url))).toStdString();
}

TEST(CollectionKey, IsTheSameForEverySpellingOfACollection) {
    const std::string key = "http://127.0.0.1:8090/alice/plan/";
    EXPECT_EQ(Key("http://127.0.0.1:8090/alice/plan/"), key);
    EXPECT_EQ(Key("http://localhost:8090/alice/plan"), key);
    EXPECT_EQ(Key("HTTP://LocalHost:8090/%61lice/plan//"), key);
    EXPECT_EQ(Key("http://127.0.0.1:8090/alice/./old/../plan/"), key);
    EXPECT_EQ(Key("http://[::ffff:127.0.0.1]:8090/alice/plan/"), key);
}

TEST(CollectionKey, MakesTheDefaultPortAndTheEncodingPlain) {
    EXPECT_EQ(Key("https://127.0.0.1/dav/Caf%c3%a9%20%7e1"),
              "https://127.0.0.1:443/dav/Caf%C3%A9%20~1/");
    EXPECT_EQ(Key("http://[::1]/dav/a%2Fb/"), "http://[::1]:80/dav/a%2Fb/");
}

TEST(CollectionKey, KeepsTheNameOfAHostThatResolvesToNothing) {
    EXPECT_EQ(Key("https://No-Such-Host.invalid/dav"), "https://no-such-host.invalid:443/dav/");
}

TEST(CollectionKey, KeepsOtherPortsPathsAndSchemesApart) {
    const std::string key = Key("http://127.0.0.1:8090/alice/plan/");
    EXPECT_NE(Key("http://127.0.0.1:8091/alice/plan/"), key);
    EXPECT_NE(Key("http://127.0.0.1:8090/alice/work/"), key);
    EXPECT_NE(Key("https://127.0.0.1:8090/alice/plan/"), key);
    EXPECT_NE(Key("http://127.0.0.1:8090/alice/plan%2F/"), key);
}

std::string Name(const char* url) {
    return CollectionName(QUrl(QString::fromUtf8(url))).toStdString();
}

TEST(CollectionName, IsOneForTheNamesOfThisComputer) {
    const std::string name = "http://127.0.0.1:8090/alice/plan/";
    EXPECT_EQ(Name("http://localhost:8090/alice/plan"), name);
    EXPECT_EQ(Name("HTTP://LocalHost:8090/%61lice/plan//"), name);
    EXPECT_EQ(Name("http://[::ffff:127.0.0.1]:8090/alice/plan/"), name);
}

// Two sites served from one address must not share what was published to
// each; the name is taken as it is written, without asking for its address.
TEST(CollectionName, KeepsTheNameOfAnyOtherHost) {
    EXPECT_EQ(Name("https://Cloud.Example.org/remote.php/dav/calendars/alice/personal"),
              "https://cloud.example.org:443/remote.php/dav/calendars/alice/personal/");
    EXPECT_NE(Name("https://one.example.org/dav/alice/plan/"),
              Name("https://two.example.org/dav/alice/plan/"));
}

TEST_F(PublishCollectionTest, AStateIsFoundWhateverTheSpellingOfTheCollection) {
    ASSERT_EQ(Publish().Status, 0);
    const CalRun byName = PublishTo(ByName(url));
    EXPECT_EQ(byName.Status, 0) << byName.Err.toStdString();
    EXPECT_TRUE(
        byName.Out.contains(QStringLiteral("4 unchanged, 0 conflicts; requests: 1 PROPFIND, 0 GET, "
                                           "0 PUT, 0 DELETE")))
        << byName.Out.toStdString();
    // The port made explicit, the path spelled otherwise: the same collection.
    QString spelled = url;
    spelled.replace(QStringLiteral("/alice/plan/"), QStringLiteral("/%61lice/plan//"));
    const CalRun again = PublishTo(spelled);
    EXPECT_EQ(again.Status, 0) << again.Err.toStdString();
    EXPECT_TRUE(again.Out.contains(QStringLiteral("requests: 1 PROPFIND, 0 GET, 0 PUT")))
        << again.Out.toStdString();
    EXPECT_EQ(StateFiles().size(), 1);
}

// A state that an older version kept under the URL as it was given is read,
// and moved to the name every spelling shares: the next run sends nothing.
TEST_F(PublishCollectionTest, AStateKeptUnderTheUrlAsGivenIsStillFoundAndMovedOver) {
    const QString address = url;
    url = ByName(address);
    ASSERT_EQ(Publish().Status, 0);
    std::map<QString, PublishedEvent> published;
    {
        const QString kept = QDir(environment.StateFolder).filePath(StateFiles().first());
        const QJsonObject events =
            QJsonDocument::fromJson(testing::ReadBytes(kept)).object()["events"].toObject();
        for (auto event = events.begin(); event != events.end(); ++event) {
            const QJsonObject fields = event.value().toObject();
            published[event.key()] = {fields["etag"].toString().toUtf8(),
                                      fields["hash"].toString().toLatin1()};
        }
    }
    ASSERT_EQ(published.size(), 4u);
    ASSERT_TRUE(QDir(environment.StateFolder).removeRecursively());
    QString legacyFile;
    {
        PublishState legacy(environment.StateFolder, url, QStringLiteral("plan.cal"));
        QString problem;
        ASSERT_TRUE(legacy.StartJournal(problem)) << problem.toStdString();
        for (const auto& [uid, event] : published) {
            legacy.Put(uid, event);
        }
        ASSERT_TRUE(legacy.Save(problem)) << problem.toStdString();
        legacyFile = legacy.FileName();
    }

    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(
        run.Out.contains(QStringLiteral("4 unchanged, 0 conflicts; requests: 1 PROPFIND, "
                                        "0 GET, 0 PUT, 0 DELETE")))
        << run.Out.toStdString();
    EXPECT_FALSE(QFile::exists(legacyFile));
    ASSERT_EQ(StateFiles().size(), 1);
    const CalRun byAddress = PublishTo(address);
    EXPECT_TRUE(byAddress.Out.contains(QStringLiteral("requests: 1 PROPFIND, 0 GET, 0 PUT")))
        << byAddress.Out.toStdString();
}

// One publish under the server's name, held up by PUTs that never get an
// answer, holds the collection: another under its address is refused, and
// does not take the first one's events for conflicts.
TEST_F(PublishCollectionTest, APublishUnderAnotherNameOfTheServerWaitsForTheFirst) {
    NginxProxy proxy(server.Port());
    ASSERT_TRUE(proxy.Problem().isEmpty()) << proxy.Problem().toStdString();
    const QString stalls = proxy.Url(QStringLiteral("/stalls/plan/"));
    QProcess first;
    StartPublish(first, ByName(stalls), {QStringLiteral("--timeout"), QStringLiteral("4")});
    ASSERT_TRUE(first.waitForStarted());
    environment.StateFolder = folder.filePath(QStringLiteral("xdg/Kelvane"));
    const QDeadlineTimer deadline(20000);
    while (QDir(environment.StateFolder).entryList({QStringLiteral("*.journal")}).isEmpty() &&
           !deadline.hasExpired()) {
        QThread::msleep(10);
    }
    const CalRun second = PublishTo(stalls, {QStringLiteral("--timeout"), QStringLiteral("4")});
    EXPECT_EQ(second.Status, 1);
    EXPECT_TRUE(second.Err.contains(
        QStringLiteral("another publish to this collection is running (process %1)")
            .arg(first.processId())))
        << second.Err.toStdString();
    EXPECT_FALSE(second.Err.contains(QStringLiteral("conflict"))) << second.Err.toStdString();
    ASSERT_TRUE(first.waitForFinished(30000));
}

TEST_F(PublishCollectionTest, TheStateFolderAndItsFilesAreForTheOwnerAlone) {
    // A folder and a state as older versions left them.
    ASSERT_TRUE(QDir().mkpath(environment.StateFolder));
    const QString older = QDir(environment.StateFolder).filePath(QStringLiteral("caldav-0.json"));
    ASSERT_TRUE(testing::WriteBytes(older, "{}"));
    QFile::setPermissions(environment.StateFolder, QFileDevice::Permissions(0x7755));
    QFile::setPermissions(older, QFileDevice::Permissions(0x6644));
    ASSERT_EQ(Publish().Status, 0);
    EXPECT_EQ(QFileInfo(environment.StateFolder).permissions(),
              kOwnerOnly | QFileDevice::ExeOwner | QFileDevice::ReadUser | QFileDevice::WriteUser |
                  QFileDevice::ExeUser);
    const QFileInfoList files = QDir(environment.StateFolder).entryInfoList(QDir::Files);
    ASSERT_EQ(files.size(), 2);
    for (const QFileInfo& info : files) {
        EXPECT_EQ(info.permissions() & ~QFileDevice::Permissions(0x0600), kOwnerOnly)
            << info.fileName().toStdString();
    }
}

TEST_F(PublishCollectionTest, ANetrcOthersMayReadIsRefusedLikeAPasswordFile) {
    environment.PasswordVariableSet = false;
    ASSERT_TRUE(testing::WriteBytes(environment.NetrcFile,
                                    "machine 127.0.0.1 login alice password secret\n"));
    QFile::setPermissions(environment.NetrcFile, kOwnerOnly | QFileDevice::ReadOther);
    const CalRun refused = Run({QStringLiteral("publish"), file, QStringLiteral("--year"),
                                QStringLiteral("2026"), QStringLiteral("--url"), url});
    EXPECT_EQ(refused.Status, 1);
    EXPECT_EQ(refused.Err.toStdString(),
              QStringLiteral("kelvane-cal: %1: others than its owner may read it; "
                             "run chmod 600 on it\n")
                  .arg(environment.NetrcFile)
                  .toStdString());
    EXPECT_TRUE(server.Resources(url).isEmpty());
    QFile::setPermissions(environment.NetrcFile, kOwnerOnly);
    const CalRun run = Run({QStringLiteral("publish"), file, QStringLiteral("--year"),
                            QStringLiteral("2026"), QStringLiteral("--url"), url});
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
}

TEST_F(PublishCollectionTest, ANetrcEntryWithoutAPasswordLeavesItToTheEnvironment) {
    ASSERT_TRUE(testing::WriteBytes(environment.NetrcFile, "machine 127.0.0.1 login alice\n"));
    QFile::setPermissions(environment.NetrcFile, kOwnerOnly);
    const CalRun run = Run({QStringLiteral("publish"), file, QStringLiteral("--year"),
                            QStringLiteral("2026"), QStringLiteral("--url"), url});
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_EQ(server.Resources(url), AllUids());
}

TEST_F(PublishCollectionTest, WithoutAPasswordTheRunSaysWhereOneMayComeFrom) {
    environment.PasswordVariableSet = false;
    const QString expected =
        QStringLiteral(
            "kelvane-cal: no password was found for alice at 127.0.0.1; give it with "
            "--password-file FILE, in %1 (machine 127.0.0.1 login alice password ...), or in "
            "the environment variable KELVANE_CALDAV_PASSWORD\n")
            .arg(environment.NetrcFile);
    const CalRun publish = Publish();
    EXPECT_EQ(publish.Status, 1);
    EXPECT_EQ(publish.Err.toStdString(), expected.toStdString());
    EXPECT_TRUE(server.Resources(url).isEmpty());
    const CalRun import = ImportFrom(url);
    EXPECT_EQ(import.Status, 1);
    EXPECT_EQ(import.Err.toStdString(), expected.toStdString());
}

// Without a user the requests go out without a password, for a server that
// asks for none; one that does ask is told of.
TEST_F(PublishCollectionTest, WithoutAUserOrPasswordARefusalSaysWhereTheyMayComeFrom) {
    environment.PasswordVariableSet = false;
    const CalRun run = Run({QStringLiteral("publish"), file, QStringLiteral("--year"),
                            QStringLiteral("2026"), QStringLiteral("--url"), url});
    EXPECT_EQ(run.Status, 1);
    EXPECT_EQ(run.Err.toStdString(),
              QStringLiteral("kelvane-cal: %1: the server asks for a user name and password "
                             "(401), and none was found; give the user with --user, and the "
                             "password with --password-file FILE, in ~/.netrc or in the "
                             "environment variable KELVANE_CALDAV_PASSWORD\n")
                  .arg(url)
                  .toStdString());
}

}  // namespace
}  // namespace kelvane::cal
