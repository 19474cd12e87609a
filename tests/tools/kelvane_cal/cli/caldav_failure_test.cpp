#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>

#include "fixtures/CalDavFixture.h"
#include "fixtures/NginxProxy.h"
#include "kelvane_cal/caldav/CalDavClient.h"

// What publish and import say when a server refuses, fails, sends them
// elsewhere or stays silent: real servers on 127.0.0.1, Radicale for what it
// answers itself and nginx in front of it for the rest.
namespace kelvane::cal {
namespace {

using testing::CalRun;
using testing::NginxProxy;

// The lines of `text` in order, for output whose lines may come in any order.
QStringList SortedLines(const QString& text) {
    QStringList lines = text.split(QLatin1Char('\n'));
    lines.sort();
    return lines;
}

class CalDavFailureTest : public testing::CalDavFixture {
  protected:
    void SetUp() override {
        CalDavFixture::SetUp();
        if (!proxy.Problem().isEmpty()) {
            GTEST_FAIL() << proxy.Problem().toStdString();
        }
    }

    // A publish to `target` that must fail with exit status 1, touching
    // neither the calendar nor the state; what it said on the standard error.
    QString FailedPublish(const QString& target, const QStringList& more = {}) {
        url = target;
        const CalRun run = Publish(more);
        EXPECT_EQ(run.Status, 1) << run.Out.toStdString() << run.Err.toStdString();
        EXPECT_TRUE(run.Out.isEmpty()) << run.Out.toStdString();
        EXPECT_TRUE(QDir(environment.StateFolder).entryList(QDir::Files).isEmpty());
        return run.Err;
    }

    NginxProxy proxy{server.Port()};
};

TEST_F(CalDavFailureTest, AnotherUsersCalendarIsForbidden) {
    const QString other = QStringLiteral("http://127.0.0.1:%1/bob/plan/").arg(server.Port());
    EXPECT_EQ(FailedPublish(other),
              QStringLiteral("kelvane-cal: %1: the server forbids this (403); check that the "
                             "user may write to this calendar\n")
                  .arg(other));
}

TEST_F(CalDavFailureTest, AMissingCollectionIsNotFound) {
    const QString missing =
        QStringLiteral("http://127.0.0.1:%1/alice/no-such-calendar/").arg(server.Port());
    EXPECT_EQ(FailedPublish(missing),
              QStringLiteral("kelvane-cal: %1: not found (404); check the URL of the calendar "
                             "collection\n")
                  .arg(missing));
}

TEST_F(CalDavFailureTest, AFolderOfPlainFilesAllowsNoPublish) {
    const QString files = proxy.Url(QStringLiteral("/files/"));
    EXPECT_EQ(FailedPublish(files),
              QStringLiteral("kelvane-cal: %1: the server does not allow this here (405); check "
                             "that the URL names a calendar collection\n")
                  .arg(files));
}

TEST_F(CalDavFailureTest, AFullServerSaysSo) {
    const QString full = proxy.Url(QStringLiteral("/full/plan/"));
    EXPECT_EQ(FailedPublish(full),
              QStringLiteral("kelvane-cal: %1: the server has no room left (507); free some "
                             "space on it\n")
                  .arg(full));
}

TEST_F(CalDavFailureTest, AFailingServerIsToBeTriedLater) {
    const QString broken = proxy.Url(QStringLiteral("/broken/plan/"));
    EXPECT_EQ(FailedPublish(broken),
              QStringLiteral("kelvane-cal: %1: the server failed (502); try again later, or ask "
                             "its administrator\n")
                  .arg(broken));
}

TEST_F(CalDavFailureTest, ASilentServerTimesOut) {
    const QString target = proxy.SilentUrl(QStringLiteral("/alice/plan/"));
    EXPECT_EQ(FailedPublish(target, {QStringLiteral("--timeout"), QStringLiteral("1")}),
              QStringLiteral("kelvane-cal: %1: no answer within 1 second; check that the server "
                             "is running and can be reached, or give it longer with --timeout\n")
                  .arg(target));
}

// The program itself, whose standard error would also show what Qt prints.
TEST_F(CalDavFailureTest, ATimeOutLeavesOnlyOurOwnMessageOnTheStandardError) {
    const QString target = proxy.SilentUrl(QStringLiteral("/alice/plan/"));
    for (const QStringList& words :
         {QStringList{QStringLiteral("import"), target},
          QStringList{QStringLiteral("publish"), file, QStringLiteral("--url"), target}}) {
        QProcess run;
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.insert(QStringLiteral("KELVANE_CALDAV_PASSWORD"), QStringLiteral("secret"));
        variables.insert(QStringLiteral("XDG_STATE_HOME"), environment.StateFolder);
        variables.insert(QStringLiteral("HOME"), folder.path());
        run.setProcessEnvironment(variables);
        run.start(QStringLiteral(KELVANE_CAL_BINARY),
                  words + QStringList{QStringLiteral("--year"), QStringLiteral("2026"),
                                      QStringLiteral("--user"), QStringLiteral("alice"),
                                      QStringLiteral("--timeout"), QStringLiteral("1")});
        ASSERT_TRUE(run.waitForFinished(30000));
        EXPECT_EQ(run.exitCode(), 1);
        const QString err = QString::fromUtf8(run.readAllStandardError());
        EXPECT_EQ(err,
                  QStringLiteral("kelvane-cal: %1: no answer within 1 second; check that the "
                                 "server is running and can be reached, or give it longer with "
                                 "--timeout\n")
                      .arg(target));
    }
}

TEST_F(CalDavFailureTest, ATimeoutIsAWholeNumberOfSeconds) {
    for (const QString& wrong :
         {QStringLiteral("0"), QStringLiteral("soon"), QStringLiteral("3601")}) {
        const CalRun run = Publish({QStringLiteral("--timeout"), wrong});
        EXPECT_EQ(run.Status, 2);
        EXPECT_TRUE(
            run.Err.contains(QStringLiteral("--timeout takes a number of seconds from 1 to 3600")))
            << run.Err.toStdString();
    }
}

TEST_F(CalDavFailureTest, ARedirectWithinTheServerIsFollowedForEveryRequest) {
    url = proxy.Url(QStringLiteral("/moved/"));
    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 0) << run.Err.toStdString();
    EXPECT_TRUE(run.Out.contains(QStringLiteral("4 created"))) << run.Out.toStdString();
    EXPECT_EQ(server.Resources(server.Calendar(QStringLiteral("plan"))), AllUids());
    const CalRun again = Publish();
    EXPECT_TRUE(again.Out.contains(QStringLiteral("0 created, 0 replaced, 0 deleted, 4 unchanged")))
        << again.Out.toStdString();
}

TEST_F(CalDavFailureTest, ARedirectToAnotherServerIsNotFollowed) {
    const QString away = proxy.Url(QStringLiteral("/away/alice/plan/"));
    const QString target = proxy.Url(QStringLiteral("/alice/plan/"))
                               .replace(QStringLiteral("127.0.0.1"), QStringLiteral("localhost"));
    EXPECT_EQ(FailedPublish(away),
              QStringLiteral("kelvane-cal: %1: the server sends this request on to %2, which is "
                             "not followed; use that address if it is right\n")
                  .arg(away, target));
    EXPECT_TRUE(server.Resources(server.Calendar(QStringLiteral("plan"))).isEmpty());
}

// Every PUT fails once the collection has been read: nothing is recorded as
// published, so the next run sends every event again.
TEST_F(CalDavFailureTest, EventsTheServerHadNoRoomForAreNotRecorded) {
    url = proxy.Url(QStringLiteral("/no-room-to-put/plan/"));
    const CalRun full = Publish();
    EXPECT_EQ(full.Status, 1);
    EXPECT_TRUE(full.Out.contains(QStringLiteral(": 0 created, 0 replaced")))
        << full.Out.toStdString();
    EXPECT_TRUE(full.Err.startsWith(QStringLiteral("kelvane-cal: ") + url))
        << full.Err.toStdString();
    EXPECT_TRUE(full.Err.contains(QStringLiteral(".ics: the server has no room left (507)")))
        << full.Err.toStdString();
    EXPECT_TRUE(full.Err.contains(QStringLiteral("3 more requests failed; run publish again")))
        << full.Err.toStdString();
    EXPECT_TRUE(server.Resources(server.Calendar(QStringLiteral("plan"))).isEmpty());
    const QStringList states = QDir(environment.StateFolder).entryList({"*.json"});
    ASSERT_EQ(states.size(), 1);
    EXPECT_TRUE(testing::ReadBytes(QDir(environment.StateFolder).filePath(states.first()))
                    .contains("\"events\":{}"));
}

// The server stops answering once the collection has been read: the four
// events on their way time out, and the other 206 are not sent at all.
TEST_F(CalDavFailureTest, ARunStopsSendingWhenTheServerStopsAnswering) {
    WriteBusyDates();
    url = proxy.Url(QStringLiteral("/stalls/plan/"));
    QElapsedTimer timer;
    timer.start();
    const CalRun run = Publish({QStringLiteral("--timeout"), QStringLiteral("1")});
    EXPECT_LT(timer.elapsed(), 30000);
    EXPECT_EQ(run.Status, 1);
    EXPECT_TRUE(run.Out.contains(QStringLiteral("requests: 1 PROPFIND, 0 GET, 4 PUT, 0 DELETE")))
        << run.Out.toStdString();
    EXPECT_TRUE(run.Err.contains(QStringLiteral(".ics: no answer within 1 second;")))
        << run.Err.toStdString();
    EXPECT_TRUE(run.Err.contains(
        QStringLiteral("3 more requests failed, 206 requests were not sent; run publish again")))
        << run.Err.toStdString();
}

// The number of PUTs a publish's summary says it sent.
int PutsSent(const QString& summary) {
    static const QRegularExpression puts(QStringLiteral(" (\\d+) PUT"));
    return puts.match(summary).captured(1).toInt();
}

// Every PUT meets 507: after three server errors in a row the rest of the 210
// events are not sent, and counted apart from those that failed.
TEST_F(CalDavFailureTest, ARunStopsSendingAfterServerErrorsInARow) {
    WriteBusyDates();
    url = proxy.Url(QStringLiteral("/no-room-to-put/plan/"));
    const CalRun run = Publish();
    EXPECT_EQ(run.Status, 1);
    const int sent = PutsSent(run.Out);
    EXPECT_GE(sent, 3) << run.Out.toStdString();
    EXPECT_LE(sent, 6) << run.Out.toStdString();
    EXPECT_TRUE(run.Err.contains(QStringLiteral("%1 more requests failed, %2 requests were not "
                                                "sent; run publish again to complete the "
                                                "calendar\n")
                                     .arg(sent - 1)
                                     .arg(210 - sent)))
        << run.Err.toStdString();
}

// The server refuses one event for good: it is named, remembered and not
// sent again until it changes, and the run after ends well.
TEST_F(CalDavFailureTest, ARefusedEventIsNamedAndNotSentAgainUntilItChanges) {
    url = proxy.Url(QStringLiteral("/refuses/plan/"));
    const QString refusal =
        QStringLiteral(
            "kelvane-cal: refused: %1 (17 March 2026): the server refuses this (403): "
            "valid-calendar-data: DTEND must occur after DTSTART; it is not sent again "
            "until it changes\n")
            .arg(testing::Uid(3, 17, 2));
    const CalRun first = Publish();
    EXPECT_EQ(first.Status, 1);
    EXPECT_EQ(first.Err, refusal);
    EXPECT_TRUE(
        first.Out.contains(QStringLiteral("3 created, 0 replaced, 0 deleted, 0 unchanged, "
                                          "0 conflicts, 1 refused;")))
        << first.Out.toStdString();

    const CalRun second = Publish();
    EXPECT_EQ(second.Status, 0) << second.Err.toStdString();
    EXPECT_TRUE(second.Out.contains(QStringLiteral("requests: 1 PROPFIND, 0 GET, 0 PUT, 0 DELETE")))
        << second.Out.toStdString();
    EXPECT_EQ(second.Err, QStringLiteral("kelvane-cal: 1 event stays refused by the server; a "
                                         "change to one sends it again\n"));

    Change([](CalendarFileContent& content) {
        content.Dates[0].Schedule[1].Description = QStringLiteral("Code review");
    });
    const CalRun changed = Publish();
    EXPECT_EQ(changed.Status, 1);
    EXPECT_EQ(changed.Err, refusal);
    EXPECT_TRUE(
        changed.Out.contains(QStringLiteral("requests: 1 PROPFIND, 0 GET, 1 PUT, 0 DELETE")))
        << changed.Out.toStdString();

    // Once the file no longer has it, the refusal is forgotten.
    Change([](CalendarFileContent& content) { content.Dates[0].Schedule.pop_back(); });
    const CalRun gone = Publish();
    EXPECT_EQ(gone.Status, 0) << gone.Err.toStdString();
    EXPECT_EQ(gone.Err, QString());
}

// Each event a server will not take is named with the server's words, and
// the next run sends it again.
TEST_F(CalDavFailureTest, EveryEventTheServerWillNotTakeIsNamed) {
    url = proxy.Url(QStringLiteral("/rejects/plan/"));
    const QString refusals =
        QStringLiteral(
            "kelvane-cal: refused: %1 (17 March 2026): the server answered 400: Invalid calendar "
            "data; the next run sends it again\n"
            "kelvane-cal: refused: %2 (17 March 2026): the server answered 400: Invalid calendar "
            "data; the next run sends it again\n")
            .arg(testing::Uid(3, 17, 1), testing::Uid(3, 17, 2));
    const CalRun first = Publish();
    EXPECT_EQ(first.Status, 1);
    EXPECT_EQ(SortedLines(first.Err), SortedLines(refusals));
    EXPECT_TRUE(first.Out.contains(QStringLiteral("2 refused;"))) << first.Out.toStdString();

    // The two events go out side by side, so their answers may come either way round.
    const CalRun second = Publish();
    EXPECT_EQ(second.Status, 1);
    EXPECT_EQ(SortedLines(second.Err), SortedLines(refusals));
    EXPECT_TRUE(second.Out.contains(QStringLiteral("2 PUT"))) << second.Out.toStdString();
}

// A client told to stop after the first answer starts no other request.
TEST_F(CalDavFailureTest, NoRequestIsStartedOnceTheRunIsToldToStop) {
    CalDavClient client({QStringLiteral("alice"), QStringLiteral("secret")}, 10);
    std::vector<DavRequest> requests;
    for (int index = 0; index < 10; ++index) {
        requests.push_back({"GET", QUrl(url + QStringLiteral("e%1.ics").arg(index)), {}, {}});
    }
    int heard = 0;
    const std::vector<DavReply> replies =
        client.SendAll(requests, 2, [&heard](std::size_t, const DavReply&) {
            ++heard;
            return false;
        });
    EXPECT_LE(heard, 2);
    EXPECT_EQ(client.Sent("GET"), heard);
    EXPECT_EQ(std::count_if(replies.begin(), replies.end(),
                            [](const DavReply& reply) { return reply.NotSent; }),
              10 - heard);
}

// The time-out counts from the last byte that moved, not from an average
// speed over several seconds, which a body just sent would keep up.
TEST_F(CalDavFailureTest, ASilentServerIsGivenUpSoonAfterTheTimeOut) {
    CalDavClient client({QStringLiteral("alice"), QStringLiteral("secret")}, 1);
    QElapsedTimer timer;
    timer.start();
    const DavReply reply = client.Send({"PUT",
                                        QUrl(proxy.SilentUrl(QStringLiteral("/alice/plan/e.ics"))),
                                        QByteArray(4000, 'x'),
                                        {}});
    EXPECT_TRUE(reply.TimedOut);
    EXPECT_EQ(reply.Status, 0);
    EXPECT_LT(timer.elapsed(), 4000);
}

TEST_F(CalDavFailureTest, AnImportFromAFailingServerWritesNothing) {
    const QString out = folder.filePath(QStringLiteral("out.cal"));
    const QString full = proxy.Url(QStringLiteral("/full/plan/"));
    const CalRun run =
        Run({QStringLiteral("import"), full, QStringLiteral("--year"), QStringLiteral("2026"),
             QStringLiteral("--user"), QStringLiteral("alice"), QStringLiteral("-o"), out});
    EXPECT_EQ(run.Status, 1);
    EXPECT_EQ(run.Err, QStringLiteral("kelvane-cal: %1: the server has no room left (507); free "
                                      "some space on it\n")
                           .arg(full));
    EXPECT_FALSE(QFile::exists(out));
}

TEST_F(CalDavFailureTest, AnImportWaitsAsLongAsItsTimeout) {
    const QString target = proxy.SilentUrl(QStringLiteral("/alice/plan/"));
    const CalRun run =
        Run({QStringLiteral("import"), target, QStringLiteral("--year"), QStringLiteral("2026"),
             QStringLiteral("--user"), QStringLiteral("alice"), QStringLiteral("--timeout"),
             QStringLiteral("1")});
    EXPECT_EQ(run.Status, 1);
    EXPECT_TRUE(run.Err.contains(target + QStringLiteral(": no answer within 1 second;")))
        << run.Err.toStdString();
}

}  // namespace
}  // namespace kelvane::cal
