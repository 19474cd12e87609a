#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include "kelvane_cal/ical/ICalImport.h"
#include "kelvane_cal/ical/ZoneBook.h"

#include "calfile/LineWriter.h"

namespace kelvane::cal {
namespace {

constexpr int kEvents = 100000;

// One event of the file: nine in ten are timed, floating or in UTC, some
// weekly in a named zone; one in ten lasts all day.
QByteArray EventText(int i) {
    const int dayOfYear = (i * 7919) % 365;
    const QDate date = QDate(2026, 1, 1).addDays(dayOfYear);
    const QByteArray day = date.toString(QStringLiteral("yyyyMMdd")).toLatin1();
    const QByteArray hour = QByteArray::number(6 + i % 14).rightJustified(2, '0');
    QByteArray text = "BEGIN:VEVENT\r\nUID:bench-" + QByteArray::number(i) +
                      "@example.org\r\nDTSTAMP:20260101T000000Z\r\n";
    switch (i % 10) {
        case 0:
            text += "DTSTART;VALUE=DATE:" + day + "\r\nSUMMARY:Holiday " + QByteArray::number(i) +
                    "\r\nDESCRIPTION:A day off\\nwith two lines\r\n";
            break;
        case 1:
            text += "DTSTART;TZID=Europe/Berlin:" + day + "T" + hour +
                    "0000\r\nDURATION:PT45M\r\nRRULE:FREQ=WEEKLY;COUNT=8\r\nSUMMARY:Weekly " +
                    QByteArray::number(i) + "\r\n";
            break;
        default:
            text += "DTSTART:" + day + "T" + hour + "3000" + (i % 2 == 0 ? "Z" : "") +
                    "\r\nDTEND:" + day + "T" + hour + "5500" + (i % 2 == 0 ? "Z" : "") +
                    "\r\nSUMMARY:Meeting number " + QByteArray::number(i) + "\r\nLOCATION:Room " +
                    QByteArray::number(i % 50) + "\r\n";
            break;
    }
    return text + "END:VEVENT\r\n";
}

bool WriteBigFile(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    file.write("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Kelvane bench//EN\r\n");
    for (int i = 0; i < kEvents; ++i) {
        file.write(EventText(i));
    }
    file.write("END:VCALENDAR\r\n");
    return file.error() == QFileDevice::NoError;
}

double PeakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

// The import command's work on a file of 100,000 events: both readings of
// the file, the expansion of the repeating events, and the calendar file.
void ImportOf100000Events(benchmark::State& state) {
    QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("big.ics"));
    if (!WriteBigFile(fileName)) {
        state.SkipWithError("cannot write the iCalendar file");
        return;
    }
    const double peakBefore = PeakMegabytes();
    int occurrences = 0;
    for (auto _ : state) {
        QFile file(fileName);
        file.open(QIODevice::ReadOnly);
        ImportedDates dates;
        ImportReport report;
        ImportICalendar(file, {2026, ZoneNamed(QStringLiteral("Europe/London"))}, dates, report);
        QStringList warnings;
        QBuffer calendar;
        calendar.open(QIODevice::WriteOnly);
        LineWriter out(calendar);
        WriteCalendarFile(out, dates.NewCalendar(2026, warnings));
        out.Flush();
        occurrences = report.Occurrences;
        benchmark::DoNotOptimize(calendar.data().size());
    }
    state.counters["file_MB"] = static_cast<double>(QFile(fileName).size()) / (1024.0 * 1024.0);
    state.counters["occurrences"] = occurrences;
    state.counters["peak_MB_before"] = peakBefore;
    state.counters["peak_MB_after"] = PeakMegabytes();
}
BENCHMARK(ImportOf100000Events)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace kelvane::cal

BENCHMARK_MAIN();
