// kelvane-cal publish of a whole year to CalDAV servers on this machine: the
// first run, which creates every event, and a second with nothing changed,
// which only asks for the ETags. Each is timed, with the CPU time kelvane-cal
// itself used.
//
//   caldav_publish_bench [DATES [ACTIVITIES]]    (366 dates of 39 activities)
//
// The full size goes to Cyrus IMAP's CalDAV server. Radicale, the tests'
// server, looks through every stored event each time it stores a new one, so
// a full year would take it hours; it gets the same dates with two
// activities each.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>

#include "CyrusCalDav.h"
#include "fixtures/RadicaleServer.h"
#include "kelvane_cal/cli/Commands.h"

#include "calfile/CalendarFile.h"
#include "calfile/LineWriter.h"

namespace {

using kelvane::Appointment;
using kelvane::CalendarFileContent;
using kelvane::CalendarFileDate;

// A leap year's dates from 1 January on, each with a title and `activities`
// activities of a quarter of an hour from 7:00.
CalendarFileContent BusyYear(int dates, int activities) {
    CalendarFileContent content;
    QDate date(2028, 1, 1);
    for (int index = 0; index < dates; ++index, date = date.addDays(1)) {
        CalendarFileDate entry;
        entry.Month = static_cast<qint16>(date.month());
        entry.Day = static_cast<qint16>(date.day());
        entry.Entry.Title = QStringLiteral("Busy day %1").arg(index + 1);
        for (int slot = 0; slot < activities; ++slot) {
            Appointment activity;
            activity.Description = QStringLiteral("Activity %1").arg(slot + 1);
            const int minutes = 7 * 60 + slot * 15;
            activity.StartTime = {static_cast<qint16>(minutes / 60 % 24),
                                  static_cast<qint16>(minutes % 60)};
            activity.EndTime = {static_cast<qint16>((minutes + 15) / 60 % 24),
                                static_cast<qint16>((minutes + 15) % 60)};
            entry.Schedule.push_back(activity);
        }
        content.Dates.push_back(entry);
    }
    return content;
}

bool WriteCalendar(const QString& fileName, const CalendarFileContent& content) {
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    kelvane::LineWriter out(file);
    kelvane::WriteCalendarFile(out, content);
    return out.Ok();
}

double CpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// One publish, with its summary line; false when it failed.
bool TimedPublish(const char* label, const QStringList& arguments,
                  const kelvane::cal::Environment& environment) {
    QString out;
    QString err;
    QTextStream outStream(&out);
    QTextStream errStream(&err);
    const double cpuBefore = CpuSeconds();
    QElapsedTimer timer;
    timer.start();
    const int status = kelvane::cal::RunCommand(arguments, environment, outStream, errStream);
    const double seconds = timer.nsecsElapsed() / 1e9;
    outStream.flush();
    errStream.flush();
    std::printf("  %-10s %8.2f s (kelvane-cal's own CPU time %.2f s)\n    %s", label, seconds,
                CpuSeconds() - cpuBefore, qPrintable(out));
    if (status != 0) {
        std::printf("    failed: %s", qPrintable(err));
    }
    std::fflush(stdout);
    return status == 0;
}

// Publishes `dates` of `activities` twice to `url`; false when a run failed.
bool PublishTwice(const QString& server, const QString& url, const QString& user, int dates,
                  int activities, const QTemporaryDir& folder) {
    const QString file =
        folder.filePath(QStringLiteral("year-%1x%2.cal").arg(dates).arg(activities));
    if (!WriteCalendar(file, BusyYear(dates, activities))) {
        std::printf("caldav_publish_bench: cannot write %s\n", qPrintable(file));
        return false;
    }
    kelvane::cal::Environment environment;
    environment.Today = QDate::currentDate();
    environment.Now = QDateTime::currentDateTimeUtc();
    environment.StateFolder = folder.filePath(QStringLiteral("state"));
    environment.PasswordVariable = QStringLiteral("secret");
    environment.PasswordVariableSet = true;
    const QStringList publish{
        QStringLiteral("publish"), file, QStringLiteral("--year"), QStringLiteral("2028"),
        QStringLiteral("--url"),   url,  QStringLiteral("--user"), user};
    std::printf("%s: %d dates of %d activities (%d events)\n", qPrintable(server), dates,
                activities, dates * (activities + 1));
    const bool first = TimedPublish("first", publish, environment);
    const bool second = TimedPublish("unchanged", publish, environment);
    return first && second;
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const int dates = words.size() > 1 ? words[1].toInt() : 366;
    const int activities = words.size() > 2 ? words[2].toInt() : 39;
    QTemporaryDir folder;
    bool ok = true;
    {
        CyrusCalDav cyrus;
        if (cyrus.Problem().isEmpty()) {
            ok = PublishTwice(QStringLiteral("Cyrus IMAP's CalDAV on 127.0.0.1"), cyrus.Calendar(),
                              QStringLiteral("alice"), dates, activities, folder) &&
                 ok;
        } else {
            std::printf("Cyrus IMAP's CalDAV: skipped: %s\n", qPrintable(cyrus.Problem()));
        }
    }
    kelvane::cal::testing::RadicaleServer radicale;
    if (!radicale.Problem().isEmpty()) {
        std::printf("Radicale: %s\n", qPrintable(radicale.Problem()));
        return 1;
    }
    ok = PublishTwice(QStringLiteral("Radicale on 127.0.0.1"),
                      radicale.Calendar(QStringLiteral("year")), QStringLiteral("alice"), dates,
                      std::min(activities, 2), folder) &&
         ok;
    return ok ? 0 : 1;
}
