// kelvane-cal publish of a whole year to a CalDAV server on this machine
// (Radicale on 127.0.0.1): the first run, which creates every event, and a
// second with nothing changed, which only asks for the ETags.
//
//   caldav_publish_bench [DATES [ACTIVITIES]]    (366 dates of 2 activities)
//
// Radicale's time per stored event grows with the size of the collection, so
// the full 39 activities a date may hold (14,640 events) take it hours; the
// default keeps the run to minutes.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <cstdio>

#include "RadicaleServer.h"
#include "kelvane_cal/Commands.h"
#include "store/CalendarFile.h"
#include "store/LineWriter.h"

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

// One publish; its time in seconds, or a negative number when it failed.
double TimedPublish(const QStringList& arguments, const kelvane::cal::Environment& environment) {
    QString out;
    QString err;
    QTextStream outStream(&out);
    QTextStream errStream(&err);
    QElapsedTimer timer;
    timer.start();
    const int status = kelvane::cal::RunCommand(arguments, environment, outStream, errStream);
    const double seconds = timer.nsecsElapsed() / 1e9;
    outStream.flush();
    errStream.flush();
    std::printf("  %s", qPrintable(out));
    if (status != 0) {
        std::printf("  failed: %s", qPrintable(err));
        return -1;
    }
    return seconds;
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const int dates = words.size() > 1 ? words[1].toInt() : 366;
    const int activities = words.size() > 2 ? words[2].toInt() : 2;
    kelvane::cal::testing::RadicaleServer server;
    if (!server.Problem().isEmpty()) {
        std::printf("caldav_publish_bench: %s\n", qPrintable(server.Problem()));
        return 1;
    }
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("year.cal"));
    if (!WriteCalendar(file, BusyYear(dates, activities))) {
        std::printf("caldav_publish_bench: cannot write %s\n", qPrintable(file));
        return 1;
    }
    kelvane::cal::Environment environment;
    environment.Today = QDate::currentDate();
    environment.Now = QDateTime::currentDateTimeUtc();
    environment.StateFolder = folder.filePath(QStringLiteral("state"));
    environment.PasswordVariable = QStringLiteral("secret");
    environment.PasswordVariableSet = true;
    const QStringList publish{QStringLiteral("publish"), file,
                              QStringLiteral("--year"),  QStringLiteral("2028"),
                              QStringLiteral("--url"),   server.Calendar(QStringLiteral("year")),
                              QStringLiteral("--user"),  QStringLiteral("alice")};
    std::printf("publishing %d dates of %d activities (%d events) to Radicale on 127.0.0.1\n",
                dates, activities, dates * (activities + 1));
    const double first = TimedPublish(publish, environment);
    const double second = TimedPublish(publish, environment);
    std::printf("first publish:     %8.2f s\nunchanged publish: %8.2f s\n", first, second);
    return first < 0 || second < 0 ? 1 : 0;
}
