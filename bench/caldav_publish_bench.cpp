// kelvane-cal publish of a whole year to CalDAV servers on this machine: the
// first run, which creates every event, and a second with nothing changed,
// which only asks for the ETags. Each is timed, with the CPU time kelvane-cal
// itself used. Then curl sends the first run's PUTs (the same URLs in the
// collection, bodies and headers, taken from publish's own plan) one after
// the other on one kept-alive connection into an empty calendar of the same
// kind: the time the server itself needs, which no client can beat.
//
//   caldav_publish_bench [DATES [ACTIVITIES]]    (366 dates of 39 activities)
//
// The full size goes to Cyrus IMAP's CalDAV server; curl gets a fresh server
// of its own. Radicale, the tests' server, looks through every stored event
// each time it stores a new one, so a full year would take it hours; it gets
// the same dates with two activities each, and curl a second calendar there.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include <sys/resource.h>

#include <algorithm>
#include <cstdio>

#include "CurlPuts.h"
#include "CyrusCalDav.h"
#include "FirstPublishPuts.h"
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

struct Timing {
    bool Ok = false;
    double WallSeconds = 0;
    double CpuSeconds = 0;
};

// One publish, with its summary line.
Timing TimedPublish(const char* label, const QStringList& arguments,
                    const kelvane::cal::Environment& environment) {
    QString out;
    QString err;
    QTextStream outStream(&out);
    QTextStream errStream(&err);
    const double cpuBefore = CpuSeconds();
    QElapsedTimer timer;
    timer.start();
    const int status = kelvane::cal::RunCommand(arguments, environment, outStream, errStream);
    const Timing timing{status == 0, timer.nsecsElapsed() / 1e9, CpuSeconds() - cpuBefore};
    outStream.flush();
    errStream.flush();
    std::printf("  %-10s %8.2f s (kelvane-cal's own CPU time %.2f s)\n    %s", label,
                timing.WallSeconds, timing.CpuSeconds, qPrintable(out));
    if (status != 0) {
        std::printf("    failed: %s", qPrintable(err));
    }
    std::fflush(stdout);
    return timing;
}

// The calendar file published, with what it holds.
struct YearFile {
    QString File;
    CalendarFileContent Content;
    QDateTime Now;  // when it is published
};

bool MakeYearFile(int dates, int activities, const QTemporaryDir& folder, YearFile& year) {
    year.File = folder.filePath(QStringLiteral("year-%1x%2.cal").arg(dates).arg(activities));
    year.Content = BusyYear(dates, activities);
    year.Now = QDateTime::currentDateTimeUtc();
    if (!WriteCalendar(year.File, year.Content)) {
        std::printf("caldav_publish_bench: cannot write %s\n", qPrintable(year.File));
        return false;
    }
    return true;
}

// Publishes `year` twice to `url`; the first run's times, not Ok when a run failed.
Timing PublishTwice(const QString& url, const QString& user, const YearFile& year,
                    const QTemporaryDir& folder) {
    kelvane::cal::Environment environment;
    environment.Today = QDate::currentDate();
    environment.Now = year.Now;
    environment.StateFolder = folder.filePath(QStringLiteral("state"));
    environment.PasswordVariable = QStringLiteral("secret");
    environment.PasswordVariableSet = true;
    const QStringList publish{
        QStringLiteral("publish"), year.File, QStringLiteral("--year"), QStringLiteral("2028"),
        QStringLiteral("--url"),   url,       QStringLiteral("--user"), user};
    Timing first = TimedPublish("first", publish, environment);
    first.Ok = TimedPublish("unchanged", publish, environment).Ok && first.Ok;
    return first;
}

void PrintHeading(const QString& server, int dates, int activities) {
    std::printf("%s: %d dates of %d activities (%d events)\n", qPrintable(server), dates,
                activities, dates * (activities + 1));
    std::fflush(stdout);
}

// curl sends the PUTs of `year`'s first publish into the empty `collection`;
// its times beside those of kelvane-cal's `first` run. False when curl failed.
bool CompareWithCurl(const YearFile& year, const QString& collection, const Timing& first,
                     const QString& folder) {
    const std::vector<kelvane::cal::DavRequest> puts =
        FirstPublishPuts(year.Content, year.File, 2028, year.Now, QUrl(collection));
    const CurlTimes curl =
        RunCurlPuts(puts, QStringLiteral("alice"), QStringLiteral("secret"), folder);
    if (!curl.Problem.isEmpty() && curl.Connections == 0) {
        std::printf("  curl: %s\n", qPrintable(curl.Problem.trimmed()));
        return false;
    }
    // Radicale answers in HTTP/1.0 and closes every connection after its answer.
    const QString connections =
        curl.Connections == 1
            ? QStringLiteral("one kept-alive connection")
            : QStringLiteral("%1 connections (the server kept none alive)").arg(curl.Connections);
    std::printf(
        "  %-10s %8.2f s (curl's own CPU time %.2f s): the same %zu PUTs on %s, "
        "into an empty calendar\n",
        "curl", curl.WallSeconds, curl.CpuSeconds, puts.size(), qPrintable(connections));
    if (curl.Failed > 0) {
        std::printf("    %d of them failed\n", curl.Failed);
    }
    if (!curl.Problem.isEmpty()) {
        std::printf("    %s\n", qPrintable(curl.Problem.trimmed()));
    }
    std::printf("    kelvane-cal/curl, first run: wall %.2f, CPU %.2f\n",
                first.WallSeconds / curl.WallSeconds, first.CpuSeconds / curl.CpuSeconds);
    std::fflush(stdout);
    return curl.Failed == 0 && curl.Problem.isEmpty();
}

// The full size to Cyrus; curl then gets a fresh server, as empty as
// kelvane-cal's was. False when a run failed; a server that cannot start is skipped.
bool BenchCyrus(int dates, int activities, const QTemporaryDir& folder) {
    const QString server = QStringLiteral("Cyrus IMAP's CalDAV on 127.0.0.1");
    YearFile year;
    Timing first;
    {
        CyrusCalDav cyrus;
        if (!cyrus.Problem().isEmpty()) {
            std::printf("Cyrus IMAP's CalDAV: skipped: %s\n", qPrintable(cyrus.Problem()));
            return true;
        }
        PrintHeading(server, dates, activities);
        if (!MakeYearFile(dates, activities, folder, year)) {
            return false;
        }
        first = PublishTwice(cyrus.Calendar(), QStringLiteral("alice"), year, folder);
    }
    CyrusCalDav fresh;
    if (!fresh.Problem().isEmpty()) {
        std::printf("  curl: skipped: %s\n", qPrintable(fresh.Problem()));
        return false;
    }
    return CompareWithCurl(year, fresh.Calendar(), first,
                           folder.filePath(QStringLiteral("curl-cyrus"))) &&
           first.Ok;
}

// Radicale, with at most two activities a date; curl gets a second calendar there.
bool BenchRadicale(int dates, int activities, const QTemporaryDir& folder) {
    kelvane::cal::testing::RadicaleServer radicale;
    if (!radicale.Problem().isEmpty()) {
        std::printf("Radicale: %s\n", qPrintable(radicale.Problem()));
        return false;
    }
    PrintHeading(QStringLiteral("Radicale on 127.0.0.1"), dates, activities);
    YearFile year;
    if (!MakeYearFile(dates, activities, folder, year)) {
        return false;
    }
    const Timing first = PublishTwice(radicale.Calendar(QStringLiteral("year")),
                                      QStringLiteral("alice"), year, folder);
    return CompareWithCurl(year, radicale.Calendar(QStringLiteral("curl")), first,
                           folder.filePath(QStringLiteral("curl-radicale"))) &&
           first.Ok;
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    const int dates = words.size() > 1 ? words[1].toInt() : 366;
    const int activities = words.size() > 2 ? words[2].toInt() : 39;
    QTemporaryDir folder;
    const bool cyrus = BenchCyrus(dates, activities, folder);
    const bool radicale = BenchRadicale(dates, std::min(activities, 2), folder);
    return cyrus && radicale ? 0 : 1;
}
