#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include "fixtures/CalRun.h"
#include "fixtures/LocalServer.h"
#include "kelvane_cal/ical/ICalExport.h"
#include "support/CalendarFiles.h"

// publish against Cyrus, the server that refuses timed events without a
// length: a throwaway instance started by bench/cyrus-caldav.sh when Debian's
// cyrus-common, cyrus-caldav and sasl2-bin are installed, else skipped.
namespace kelvane::cal {
namespace {

using testing::Activity;
using testing::CalRun;

const QString kScript =
    QStringLiteral(KELVANE_CAL_DATA_DIR "/../../../../../bench/cyrus-caldav.sh");

// Why Cyrus cannot be started here; empty when it can.
QString CyrusMissing() {
    for (const QString& program : {QStringLiteral("/usr/lib/cyrus/bin/master"),
                                   QStringLiteral("/usr/lib/cyrus/bin/httpd")}) {
        if (!QFileInfo(program).isExecutable()) {
            return program + QStringLiteral(
                                 " is missing (apt-get install cyrus-common "
                                 "cyrus-caldav)");
        }
    }
    for (const QString& program : {QStringLiteral("saslpasswd2"), QStringLiteral("curl")}) {
        if (QStandardPaths::findExecutable(program).isEmpty() &&
            QStandardPaths::findExecutable(program, {QStringLiteral("/usr/sbin")}).isEmpty()) {
            return program + QStringLiteral(" is missing (apt-get install sasl2-bin curl)");
        }
    }
    return {};
}

bool RunScript(const QStringList& arguments, QString& said) {
    QProcess script;
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.start(QStringLiteral("sh"), QStringList{kScript} + arguments);
    const bool ended = script.waitForFinished(60000);
    said = QString::fromUtf8(script.readAll());
    return ended && script.exitStatus() == QProcess::NormalExit && script.exitCode() == 0;
}

class CyrusCalDav : public ::testing::Test {
  protected:
    void SetUp() override {
        const QString missing = CyrusMissing();
        if (!missing.isEmpty()) {
            GTEST_SKIP() << missing.toStdString();
        }
        QString said;
        for (int attempt = 0; attempt < 3 && !started_; ++attempt) {
            port_ = testing::FreePort();
            started_ = RunScript({server_.path(), QString::number(port_)}, said);
        }
        ASSERT_TRUE(started_) << said.toStdString();
        url_ = QStringLiteral("http://127.0.0.1:%1/dav/calendars/user/alice/Default/").arg(port_);
        file_ = folder_.filePath(QStringLiteral("plan.cal"));
        environment_ = testing::FixedEnvironment();
        environment_.StateFolder = folder_.filePath(QStringLiteral("state"));
        environment_.NetrcFile = folder_.filePath(QStringLiteral("netrc"));
        environment_.PasswordVariable = QStringLiteral("secret");
        environment_.PasswordVariableSet = true;
    }

    void TearDown() override {
        QString said;
        if (started_) {
            RunScript({QStringLiteral("--stop"), server_.path()}, said);
        }
    }

    CalRun Run(const QStringList& arguments) {
        CalRun run;
        QTextStream out(&run.Out);
        QTextStream err(&run.Err);
        run.Status = RunCommand(arguments, environment_, out, err);
        out.flush();
        err.flush();
        return run;
    }

    CalRun Publish() {
        return Run({QStringLiteral("publish"), file_, QStringLiteral("--year"),
                    QStringLiteral("2026"), QStringLiteral("--url"), url_, QStringLiteral("--user"),
                    QStringLiteral("alice")});
    }

    QTemporaryDir server_;
    QTemporaryDir folder_;
    bool started_ = false;
    int port_ = 0;
    QString url_;
    QString file_;
    Environment environment_;
};

// A date of a timed activity, one without an end and one that ends as it
// starts: all three are taken, a second run sends nothing, and an import
// gives the calendar back as it was.
TEST_F(CyrusCalDav, TakesActivitiesWithoutALengthAndGivesThemBackAsTheyWere) {
    CalendarFileContent content;
    CalendarFileDate date = kelvane::testing::TitledDate(3, 17, QStringLiteral("Stand-up day"));
    date.Schedule = {Activity(QStringLiteral("Stand-up"), {9, 0}, {9, 15}),
                     Activity(QStringLiteral("Review"), {14, 0}, {-1, 0}),
                     Activity(QStringLiteral("Call"), {16, 0}, {16, 0})};
    content.Dates = {date};
    ASSERT_TRUE(testing::WriteCalendar(file_, content));

    const CalRun first = Publish();
    ASSERT_EQ(first.Status, 0) << first.Out.toStdString() << first.Err.toStdString();
    EXPECT_TRUE(first.Out.contains(QStringLiteral("4 created, 0 replaced, 0 deleted")))
        << first.Out.toStdString();
    const CalRun second = Publish();
    EXPECT_EQ(second.Status, 0) << second.Err.toStdString();
    EXPECT_TRUE(second.Out.contains(QStringLiteral("requests: 1 PROPFIND, 0 GET, 0 PUT, 0 DELETE")))
        << second.Out.toStdString();

    const QString back = folder_.filePath(QStringLiteral("back.cal"));
    const CalRun import =
        Run({QStringLiteral("import"), url_, QStringLiteral("--year"), QStringLiteral("2026"),
             QStringLiteral("--user"), QStringLiteral("alice"), QStringLiteral("-o"), back});
    ASSERT_EQ(import.Status, 0) << import.Err.toStdString();
    const CalendarFileContent is = testing::ReadCalendarBytes(testing::ReadBytes(back));
    ASSERT_EQ(is.Dates.size(), 1u);
    EXPECT_EQ(is.Dates[0].Schedule, date.Schedule);
}

}  // namespace
}  // namespace kelvane::cal
