#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QProcess>

#include "fixtures/CalDavFixture.h"
#include "kelvane_cal/publish/PublishState.h"

// publish and import against a real CalDAV server (Radicale on 127.0.0.1).
namespace kelvane::cal {
namespace {

using testing::CalRun;
using testing::Plan;
using testing::Uid;

class CalDavTest : public testing::CalDavFixture {};

TEST_F(CalDavTest, FirstPublishCreatesOneResourcePerEvent) {
    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("4 created, 0 replaced, 0 deleted, 0 unchanged")))
        << run.Out.toStdString();
    EXPECT_EQ(server.Resources(url), AllUids());
    EXPECT_TRUE(EventOnServer(Uid(3, 17, 0)).contains("SUMMARY:Stand-up day"));
    EXPECT_TRUE(EventOnServer(Uid(3, 17, 1)).contains("SUMMARY:Stand-up"));
}

TEST_F(CalDavTest, AnUnchangedPublishSendsOnlyOnePropfind) {
    ASSERT_EQ(Publish().Status, 0);
    const QByteArray before = EventOnServer(Uid(3, 18, 0));
    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("0 created, 0 replaced, 0 deleted, 4 unchanged")));
    EXPECT_TRUE(run.Out.contains(QStringLiteral("requests: 1 PROPFIND, 0 GET, 0 PUT, 0 DELETE")))
        << run.Out.toStdString();
    EXPECT_EQ(EventOnServer(Uid(3, 18, 0)), before);
}

// Cyrus refuses a timed event with DTSTART alone or a zero length; both go
// one second long and marked, and come back as they were.
TEST_F(CalDavTest, ActivitiesWithoutALengthGoOneSecondLongAndComeBackAsTheyWere) {
    Change([](CalendarFileContent& content) {
        content.Dates[0].Schedule.push_back(
            testing::Activity(QStringLiteral("Call"), {16, 0}, {16, 0}));
    });
    const CalRun run = Publish();
    ASSERT_EQ(run.Status, 0) << run.Err.toStdString();
    const QByteArray noEnd = EventOnServer(Uid(3, 17, 2));
    EXPECT_TRUE(noEnd.contains("DURATION:PT1S\r\n")) << noEnd.toStdString();
    EXPECT_TRUE(noEnd.contains("X-KELVANE-NO-END:TRUE\r\n")) << noEnd.toStdString();
    const QByteArray zeroLength = EventOnServer(Uid(3, 17, 3));
    EXPECT_TRUE(zeroLength.contains("DURATION:PT1S\r\n")) << zeroLength.toStdString();
    EXPECT_TRUE(zeroLength.contains("X-KELVANE-ZERO-LENGTH:TRUE\r\n")) << zeroLength.toStdString();
    EXPECT_FALSE(zeroLength.contains("DTEND")) << zeroLength.toStdString();

    const CalRun again = Publish();
    EXPECT_EQ(again.Status, 0) << again.Err.toStdString();
    EXPECT_TRUE(again.Out.contains(QStringLiteral("requests: 1 PROPFIND, 0 GET, 0 PUT, 0 DELETE")))
        << again.Out.toStdString();

    const QString back = folder.filePath(QStringLiteral("back.cal"));
    const CalRun import =
        Run({QStringLiteral("import"), url, QStringLiteral("--year"), QStringLiteral("2026"),
             QStringLiteral("--user"), QStringLiteral("alice"), QStringLiteral("-o"), back});
    ASSERT_EQ(import.Status, 0) << import.Err.toStdString();
    const CalendarFileContent was = testing::ReadCalendarBytes(testing::ReadBytes(file));
    const CalendarFileContent is = testing::ReadCalendarBytes(testing::ReadBytes(back));
    ASSERT_FALSE(is.Dates.empty());
    EXPECT_EQ(is.Dates[0].Schedule, was.Dates[0].Schedule);
}

TEST_F(CalDavTest, AChangedTitleReplacesItsEventOnly) {
    ASSERT_EQ(Publish().Status, 0);
    Change([](CalendarFileContent& content) { content.Dates[1].Entry.Title = "Dentist at 4"; });
    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("0 created, 1 replaced, 0 deleted, 3 unchanged")))
        << run.Out.toStdString();
    EXPECT_TRUE(EventOnServer(Uid(3, 18, 0)).contains("SUMMARY:Dentist at 4"));
}

TEST_F(CalDavTest, AnErasedDateLosesItsEventsAndForeignEventsStay) {
    const QByteArray foreign = testing::ICalLines(
        {"BEGIN:VCALENDAR", "VERSION:2.0", "PRODID:-//Other//EN", "BEGIN:VEVENT",
         "UID:team-lunch@example.org", "DTSTAMP:20260101T000000Z", "DTSTART;VALUE=DATE:20260317",
         "SUMMARY:Team lunch", "END:VEVENT", "END:VCALENDAR"});
    ASSERT_EQ(server
                  .Request("PUT", QUrl(url + QStringLiteral("team-lunch.ics")), foreign,
                           {{"Content-Type", "text/calendar"}})
                  .Status,
              201);
    ASSERT_EQ(Publish().Status, 0);
    Change([](CalendarFileContent& content) { content.Dates.erase(content.Dates.begin()); });
    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("0 created, 0 replaced, 3 deleted, 1 unchanged")))
        << run.Out.toStdString();
    EXPECT_EQ(server.Resources(url), (QStringList{Uid(3, 18, 0) + QStringLiteral(".ics"),
                                                  QStringLiteral("team-lunch.ics")}));
}

TEST_F(CalDavTest, AnEventChangedOnTheServerIsAConflictLeftAlone) {
    ASSERT_EQ(Publish().Status, 0);
    QByteArray theirs = EventOnServer(Uid(3, 18, 0));
    theirs.replace("SUMMARY:Dentist", "SUMMARY:Dentist (moved)");
    const int status = server
                           .Request("PUT", QUrl(url + Uid(3, 18, 0) + QStringLiteral(".ics")),
                                    theirs, {{"Content-Type", "text/calendar"}})
                           .Status;
    ASSERT_TRUE(status == 201 || status == 204) << status;
    Change([](CalendarFileContent& content) { content.Dates[1].Entry.Title = "Dentist at 4"; });
    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 1);
    EXPECT_TRUE(run.Err.contains(QStringLiteral("conflict: ") + Uid(3, 18, 0) +
                                 QStringLiteral(" (18 March 2026)")))
        << run.Err.toStdString();
    EXPECT_TRUE(EventOnServer(Uid(3, 18, 0)).contains("SUMMARY:Dentist (moved)"));

    const CalRun forced = Publish({QStringLiteral("--force")});
    EXPECT_EQ(forced.Status, 0) << forced.Err.toStdString();
    EXPECT_TRUE(EventOnServer(Uid(3, 18, 0)).contains("SUMMARY:Dentist at 4"));
}

TEST_F(CalDavTest, AWrongPasswordSaysSoAndChangesNothing) {
    environment.PasswordVariable = QStringLiteral("wrong");
    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 1);
    EXPECT_TRUE(run.Err.contains(url + QStringLiteral(": the server refused the user name or "
                                                      "password (401)")))
        << run.Err.toStdString();
    EXPECT_TRUE(server.Resources(url).isEmpty());
}

TEST_F(CalDavTest, AStoppedServerIsNamedAndTheNextRunCompletes) {
    server.Stop();
    const CalRun stopped = Publish();
    EXPECT_EQ(stopped.Status, 1);
    EXPECT_TRUE(stopped.Err.contains(url + QStringLiteral(": "))) << stopped.Err.toStdString();
    EXPECT_TRUE(stopped.Err.contains(QStringLiteral("that the server is running")));
    ASSERT_TRUE(server.Start()) << server.Problem().toStdString();
    EXPECT_EQ(Publish().Status, 0);
    EXPECT_EQ(server.Resources(url), AllUids());
}

// The server is killed once it holds 50 of the 210 busy events, and the next run completes the
// calendar.
TEST_F(CalDavTest, AServerStoppedHalfWayLeavesAStateTheNextRunCompletes) {
    WriteBusyDates();
    server.KillWhenHolding(QStringLiteral("plan"), 50);
    const CalRun interrupted = Publish();
    EXPECT_EQ(interrupted.Status, 1);
    EXPECT_TRUE(interrupted.Err.contains(QStringLiteral("run publish again")))
        << interrupted.Err.toStdString();
    server.Stop();
    ASSERT_TRUE(server.Start()) << server.Problem().toStdString();
    const qsizetype published = server.Resources(url).size();
    EXPECT_GE(published, 50);
    EXPECT_LT(published, 210);
    const CalRun next = Publish();
    EXPECT_EQ(next.Status, 0) << next.Err.toStdString();
    EXPECT_EQ(server.Resources(url).size(), 210);
    const CalRun again = Publish();
    EXPECT_TRUE(
        again.Out.contains(QStringLiteral("0 created, 0 replaced, 0 deleted, 210 "
                                          "unchanged")))
        << again.Out.toStdString();
}

// The publish itself is killed once the server holds 50 of 210 events. What
// it did is in its journal: the next run reads back only the few events
// whose answers were on their way, and sends nothing twice.
TEST_F(CalDavTest, APublishKilledHalfWayKeepsEveryChangeItMade) {
    WriteBusyDates();
    QProcess publish;
    StartPublish(publish, url);
    ASSERT_TRUE(publish.waitForStarted());
    server.KillWhenHolding(QStringLiteral("plan"), 50, publish.processId());
    ASSERT_TRUE(publish.waitForFinished(60000));
    ASSERT_EQ(publish.exitStatus(), QProcess::CrashExit) << publish.readAllStandardOutput().data();
    // What the server was sent before the kill is stored by the time it has
    // been stopped and started again.
    server.Stop();
    ASSERT_TRUE(server.Start()) << server.Problem().toStdString();
    const qsizetype published = server.Resources(url).size();
    ASSERT_GE(published, 50);
    ASSERT_LT(published, 210);

    environment.StateFolder = folder.filePath(QStringLiteral("xdg/Kelvane"));
    const QStringList journals = QDir(environment.StateFolder).entryList({"*.journal"});
    ASSERT_EQ(journals.size(), 1);
    const QByteArray journal =
        testing::ReadBytes(QDir(environment.StateFolder).filePath(journals.first()));
    // Its first line names the collection; each further line is one event.
    EXPECT_GE(journal.count('\n') - 1, published - 4);
    const CalRun next = Publish();
    EXPECT_EQ(next.Status, 0) << next.Err.toStdString();
    EXPECT_TRUE(next.Out.contains(QStringLiteral(": %1 created,").arg(210 - published)))
        << next.Out.toStdString();
    const QString gets = next.Out.section(QStringLiteral("PROPFIND, "), 1).section(' ', 0, 0);
    EXPECT_LE(gets.toInt(), 4) << next.Out.toStdString();
    EXPECT_TRUE(next.Out.contains(QStringLiteral(" 0 conflicts"))) << next.Out.toStdString();
    EXPECT_EQ(server.Resources(url).size(), 210);
    EXPECT_EQ(QDir(environment.StateFolder).entryList({"*.journal"}).size(), 0);
}

// Two runs that publish to the same collection at once would each record only
// their own changes; the second is refused while the first runs, whatever its
// seed.
TEST_F(CalDavTest, ASecondPublishToTheSameCollectionIsRefusedWhileTheFirstRuns) {
    auto running =
        std::make_unique<PublishState>(environment.StateFolder, url, QStringLiteral("other"));
    QString problem;
    ASSERT_TRUE(running->Lock(problem)) << problem.toStdString();
    const CalRun refused = Publish();
    EXPECT_EQ(refused.Status, 1);
    EXPECT_TRUE(refused.Err.contains(
        QStringLiteral("another publish to this collection is running (process %1)")
            .arg(QCoreApplication::applicationPid())))
        << refused.Err.toStdString();
    EXPECT_TRUE(server.Resources(url).isEmpty());
    EXPECT_EQ(Publish({QStringLiteral("--dry-run")}).Status, 0);
    running.reset();
    EXPECT_EQ(Publish().Status, 0);
    EXPECT_EQ(server.Resources(url), AllUids());
}

TEST_F(CalDavTest, ALostStateIsRebuiltFromTheServerWithoutSendingEventsAgain) {
    ASSERT_EQ(Publish().Status, 0);
    ASSERT_TRUE(QDir(environment.StateFolder).removeRecursively());
    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("0 created, 0 replaced, 0 deleted, 4 unchanged")))
        << run.Out.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("0 PUT")));
}

// A replace whose answer never came back leaves the old ETag in the state;
// the next run finds the file's own text on the server and is no conflict.
TEST_F(CalDavTest, AReplaceWhoseAnswerWasLostIsNoConflict) {
    ASSERT_EQ(Publish().Status, 0);
    const QString stateFile =
        QDir(environment.StateFolder)
            .filePath(QDir(environment.StateFolder).entryList(QDir::Files)[0]);
    const QByteArray before = testing::ReadBytes(stateFile);
    Change([](CalendarFileContent& content) { content.Dates[1].Entry.Title = "Dentist at 4"; });
    ASSERT_EQ(Publish().Status, 0);
    ASSERT_TRUE(testing::WriteBytes(stateFile, before));
    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("0 created, 0 replaced, 0 deleted, 4 unchanged")))
        << run.Out.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("1 GET, 0 PUT"))) << run.Out.toStdString();
}

TEST_F(CalDavTest, ADryRunChangesNothing) {
    ASSERT_EQ(Publish().Status, 0);
    const QDir stateFolder(environment.StateFolder);
    const QStringList files = stateFolder.entryList(QDir::Files);
    ASSERT_EQ(files.size(), 1);
    const QByteArray state = testing::ReadBytes(stateFolder.filePath(files.first()));
    Change([](CalendarFileContent& content) { content.Dates.pop_back(); });
    const CalRun run = Publish({QStringLiteral("--dry-run")});
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("1 would be deleted"))) << run.Out.toStdString();
    EXPECT_TRUE(
        run.Out.startsWith(QStringLiteral("would delete %1 (18 March 2026)\n").arg(Uid(3, 18, 0))))
        << run.Out.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("0 PUT, 0 DELETE")));
    EXPECT_EQ(server.Resources(url), AllUids());
    EXPECT_EQ(stateFolder.entryList(QDir::Files), files);
    EXPECT_EQ(testing::ReadBytes(stateFolder.filePath(files.first())), state);
}

TEST_F(CalDavTest, ImportFromTheCollectionEqualsImportFromTheExportedFile) {
    ASSERT_EQ(Publish().Status, 0);
    const QString ics = folder.filePath(QStringLiteral("plan.ics"));
    ASSERT_EQ(Run({QStringLiteral("export"), file, QStringLiteral("--year"), QStringLiteral("2026"),
                   QStringLiteral("-o"), ics})
                  .Status,
              0);
    const QString fromFile = folder.filePath(QStringLiteral("from-file.cal"));
    const QString fromServer = folder.filePath(QStringLiteral("from-server.cal"));
    ASSERT_EQ(Run({QStringLiteral("import"), ics, QStringLiteral("--year"), QStringLiteral("2026"),
                   QStringLiteral("-o"), fromFile})
                  .Status,
              0);
    const CalRun run =
        Run({QStringLiteral("import"), url, QStringLiteral("--year"), QStringLiteral("2026"),
             QStringLiteral("--user"), QStringLiteral("alice"), QStringLiteral("-o"), fromServer});
    ASSERT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_EQ(testing::ReadBytes(fromServer), testing::ReadBytes(fromFile));
    EXPECT_TRUE(testing::ReadBytes(fromServer).contains("Stand-up day"));
}

TEST_F(CalDavTest, PlainHttpToAnotherComputerIsRefused) {
    const CalRun run =
        Run({QStringLiteral("publish"), file, QStringLiteral("--year"), QStringLiteral("2026"),
             QStringLiteral("--url"), QStringLiteral("http://calendar.example.org/alice/plan/")});
    EXPECT_EQ(run.Status, 2);
    EXPECT_TRUE(run.Err.contains(QStringLiteral("--allow-http"))) << run.Err.toStdString();
}

TEST_F(CalDavTest, APasswordFileOthersMayReadIsRefused) {
    const QString passwordFile = folder.filePath(QStringLiteral("password"));
    ASSERT_TRUE(testing::WriteBytes(passwordFile, "secret\n"));
    QFile::setPermissions(passwordFile, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
    CalRun run = Publish({QStringLiteral("--password-file"), passwordFile});
    EXPECT_EQ(run.Status, 1);
    EXPECT_TRUE(run.Err.contains(QStringLiteral("chmod 600"))) << run.Err.toStdString();
    QFile::setPermissions(passwordFile, QFile::ReadOwner | QFile::WriteOwner);
    environment.PasswordVariableSet = false;
    run = Publish({QStringLiteral("--password-file"), passwordFile});
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
}

TEST_F(CalDavTest, TheNetrcGivesUserAndPassword) {
    environment.PasswordVariableSet = false;
    ASSERT_TRUE(testing::WriteBytes(environment.NetrcFile,
                                    "machine other.example.org login bob password nope\n"
                                    "machine 127.0.0.1\n  login alice\n  password secret\n"));
    QFile::setPermissions(environment.NetrcFile, QFile::ReadOwner | QFile::WriteOwner);
    const CalRun run = Run({QStringLiteral("publish"), file, QStringLiteral("--year"),
                            QStringLiteral("2026"), QStringLiteral("--url"), url});
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_EQ(server.Resources(url), AllUids());
}

}  // namespace
}  // namespace kelvane::cal
