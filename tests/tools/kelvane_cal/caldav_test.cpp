#include <gtest/gtest.h>

#include <QDir>

#include "CalRun.h"
#include "RadicaleServer.h"
#include "kelvane_cal/ICalExport.h"

// publish and import against a real CalDAV server (Radicale on 127.0.0.1).
namespace kelvane::cal {
namespace {

using testing::Activity;
using testing::CalRun;
using testing::RadicaleServer;

CalendarFileDate DateOf(qint16 month, qint16 day, const QString& title) {
    CalendarFileDate date;
    date.Month = month;
    date.Day = day;
    date.Entry.Title = title;
    return date;
}

// 17 March: a title, a note and two activities; 18 March: a title.
CalendarFileContent Plan() {
    CalendarFileContent content;
    CalendarFileDate standUp = DateOf(3, 17, QStringLiteral("Stand-up day"));
    standUp.Note = QStringLiteral("Bring the slides");
    standUp.Schedule = {Activity(QStringLiteral("Stand-up"), {9, 0}, {9, 15}),
                        Activity(QStringLiteral("Review"), {14, 0}, {-1, 0})};
    content.Dates = {standUp, DateOf(3, 18, QStringLiteral("Dentist"))};
    return content;
}

QString Uid(int month, int day, int slot) {
    return EventUid(QStringLiteral("plan.cal"), 2026, month, day, slot);
}

class CalDavTest : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!server.Problem().isEmpty()) {
            GTEST_FAIL() << server.Problem().toStdString();
        }
        file = folder.filePath(QStringLiteral("plan.cal"));
        ASSERT_TRUE(testing::WriteCalendar(file, Plan()));
        url = server.Calendar(QStringLiteral("plan"));
        environment = testing::FixedEnvironment();
        environment.StateFolder = folder.filePath(QStringLiteral("state"));
        environment.NetrcFile = folder.filePath(QStringLiteral("netrc"));
        environment.PasswordVariable = QStringLiteral("secret");
        environment.PasswordVariableSet = true;
    }

    CalRun Run(QStringList arguments) {
        CalRun run;
        QTextStream out(&run.Out);
        QTextStream err(&run.Err);
        run.Status = RunCommand(arguments, environment, out, err);
        out.flush();
        err.flush();
        return run;
    }

    CalRun Publish(const QStringList& more = {}) {
        return Run(QStringList{QStringLiteral("publish"), file, QStringLiteral("--year"),
                               QStringLiteral("2026"), QStringLiteral("--url"), url,
                               QStringLiteral("--user"), QStringLiteral("alice")} +
                   more);
    }

    void Change(const std::function<void(CalendarFileContent&)>& change) {
        CalendarFileContent content = Plan();
        change(content);
        ASSERT_TRUE(testing::WriteCalendar(file, content));
    }

    QByteArray EventOnServer(const QString& uid) {
        return server.Request("GET", QUrl(url + uid + QStringLiteral(".ics"))).Body;
    }

    QStringList AllUids() {
        QStringList uids{Uid(3, 17, 0), Uid(3, 17, 1), Uid(3, 17, 2), Uid(3, 18, 0)};
        for (QString& uid : uids) {
            uid += QStringLiteral(".ics");
        }
        uids.sort();
        return uids;
    }

    RadicaleServer server;
    QTemporaryDir folder;
    QString file;
    QString url;
    Environment environment;
};

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

// Ten dates of twenty activities each: the server is killed once it holds 50
// of the 210 events, and the next run completes the calendar.
TEST_F(CalDavTest, AServerStoppedHalfWayLeavesAStateTheNextRunCompletes) {
    Change([](CalendarFileContent& content) {
        content.Dates.clear();
        for (qint16 day = 1; day <= 10; ++day) {
            CalendarFileDate date = DateOf(4, day, QStringLiteral("Busy"));
            for (qint16 slot = 1; slot <= 20; ++slot) {
                date.Schedule.push_back(
                    Activity(QStringLiteral("Task %1").arg(slot), {slot, 0}, {-1, 0}));
            }
            content.Dates.push_back(date);
        }
    });
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
    const QByteArray state = [this] {
        const QStringList files = QDir(environment.StateFolder).entryList(QDir::Files);
        return testing::ReadBytes(QDir(environment.StateFolder).filePath(files.value(0)));
    }();
    Change([](CalendarFileContent& content) { content.Dates.pop_back(); });
    const CalRun run = Publish({QStringLiteral("--dry-run")});
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("1 would be deleted"))) << run.Out.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("0 PUT, 0 DELETE")));
    EXPECT_EQ(server.Resources(url), AllUids());
    const QStringList files = QDir(environment.StateFolder).entryList(QDir::Files);
    EXPECT_EQ(testing::ReadBytes(QDir(environment.StateFolder).filePath(files.value(0))), state);
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
    const CalRun run = Run({QStringLiteral("publish"), file, QStringLiteral("--year"),
                            QStringLiteral("2026"), QStringLiteral("--url"), url});
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_EQ(server.Resources(url), AllUids());
}

}  // namespace
}  // namespace kelvane::cal
