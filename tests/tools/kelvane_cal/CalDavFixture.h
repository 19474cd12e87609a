#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>

#include "CalRun.h"
#include "RadicaleServer.h"
#include "kelvane_cal/ICalExport.h"
#include "support/CalendarFiles.h"

// A calendar file of two dates and a Radicale server with alice's calendar
// "plan", for the tests of publish and import from a collection.
namespace kelvane::cal::testing {

using kelvane::testing::TitledDate;

// 17 March: a title, a note and two activities; 18 March: a title.
inline CalendarFileContent Plan() {
    CalendarFileContent content;
    CalendarFileDate standUp = TitledDate(3, 17, QStringLiteral("Stand-up day"));
    standUp.Note = QStringLiteral("Bring the slides");
    standUp.Schedule = {Activity(QStringLiteral("Stand-up"), {9, 0}, {9, 15}),
                        Activity(QStringLiteral("Review"), {14, 0}, {-1, 0})};
    content.Dates = {standUp, TitledDate(3, 18, QStringLiteral("Dentist"))};
    return content;
}

inline QString Uid(int month, int day, int slot) {
    return EventUid(QStringLiteral("plan.cal"), 2026, month, day, slot);
}

class CalDavFixture : public ::testing::Test {
  protected:
    explicit CalDavFixture(Tls tls = Tls::Off) : server(tls) {}

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

    // Ten dates of twenty activities each: 210 events.
    void WriteBusyDates() {
        Change([](CalendarFileContent& content) {
            content.Dates.clear();
            for (qint16 day = 1; day <= 10; ++day) {
                CalendarFileDate date = TitledDate(4, day, QStringLiteral("Busy"));
                for (qint16 slot = 1; slot <= 20; ++slot) {
                    date.Schedule.push_back(
                        Activity(QStringLiteral("Task %1").arg(slot), {slot, 0}, {-1, 0}));
                }
                content.Dates.push_back(date);
            }
        });
    }

    // Starts the real program publishing the plan to `collection` as alice,
    // with its state in this test's folder and `more` words.
    void StartPublish(QProcess& publish, const QString& collection, const QStringList& more = {}) {
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.insert(QStringLiteral("HOME"), folder.path());
        variables.insert(QStringLiteral("XDG_STATE_HOME"), folder.filePath(QStringLiteral("xdg")));
        variables.insert(QStringLiteral("KELVANE_CALDAV_PASSWORD"), QStringLiteral("secret"));
        publish.setProcessEnvironment(variables);
        const QStringList words{QStringLiteral("publish"), file,
                                QStringLiteral("--year"),  QStringLiteral("2026"),
                                QStringLiteral("--url"),   collection,
                                QStringLiteral("--user"),  QStringLiteral("alice")};
        publish.start(QStringLiteral(KELVANE_CAL_BINARY), words + more);
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

}  // namespace kelvane::cal::testing
