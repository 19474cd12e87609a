#include <algorithm>

#include "kelvane_cal/cli/Arguments.h"
#include "kelvane_cal/cli/CommandRunners.h"
#include "kelvane_cal/cli/Files.h"
#include "kelvane_cal/ical/CalendarFacts.h"
#include "kelvane_cal/ical/ColourWords.h"
#include "kelvane_cal/ical/FileYear.h"

#include "calfile/NoteText.h"
#include "calfile/YearRules.h"

namespace kelvane::cal {

namespace {

const char* const kShowHelp =
    "usage: kelvane-cal show FILE [--month M]\n"
    "\n"
    "Prints every date of a calendar file that has content, in calendar order:\n"
    "the date with its weekday in the year the file lays out, the title, the\n"
    "colours in words, the activities by start time on the 24-hour clock, and\n"
    "the note's lines.\n"
    "\n"
    "  --month M   only the dates of month M (1 to 12)\n";

QString YearLine(const QString& fileName, const FileYear& year) {
    return QStringLiteral("%1: %2, 1 January a %3")
        .arg(fileName,
             year.IsLeap() ? QStringLiteral("a leap year")
                           : QStringLiteral("a year that is not leap"),
             WeekdayName(year.FirstWeekday()));
}

QString DateLine(const CalendarFileDate& date, const FileYear& year) {
    const qint16 weekday = year.Weekday(date.Month, date.Day);
    QString line =
        weekday == 0
            ? QStringLiteral("%1 (not in this year)").arg(DayAndMonth(date.Month, date.Day))
            : QStringLiteral("%1 %2").arg(WeekdayName(weekday), DayAndMonth(date.Month, date.Day));
    const QString title = date.Entry.Title.Trimmed();
    if (!title.isEmpty()) {
        line += QStringLiteral(": ") + title;
    }
    return line;
}

QString ActivityLine(const Appointment& entry) {
    QString times = Time24(entry.StartTime);
    if (entry.EndTime.Hour >= 0) {
        times += QLatin1Char('-') + Time24(entry.EndTime);
    }
    return QStringLiteral("  %1 %2").arg(times, -11).arg(entry.Description.Trimmed());
}

void ShowDate(const CalendarFileDate& date, const FileYear& year, QTextStream& out) {
    out << DateLine(date, year) << '\n';
    const ColourChoice& text = date.Entry.TextColour;
    const ColourChoice& back = date.Entry.BackColour;
    if (text.Enabled || back.Enabled) {
        out << "  text colour: " << ColourInWords(text) << '\n';
        out << "  back colour: " << ColourInWords(back) << '\n';
    }
    std::vector<NumberedActivity> activities = ActivitiesOf(date);
    std::stable_sort(activities.begin(), activities.end(),
                     [](const NumberedActivity& a, const NumberedActivity& b) {
                         return CompareClockTime(a.Entry.StartTime, b.Entry.StartTime) < 0;
                     });
    for (const NumberedActivity& activity : activities) {
        out << ActivityLine(activity.Entry) << '\n';
    }
    const QString note = NoteOf(date);
    if (!note.isEmpty()) {
        out << "  note:\n";
        for (const QString& line : NoteLines(note)) {
            out << "    " << line << '\n';
        }
    }
}

}  // namespace

int RunShow(const QStringList& words, const Environment& environment, QTextStream& out,
            QTextStream& err) {
    const QString command = QStringLiteral("show");
    Arguments arguments;
    int status = kDone;
    if (!StartCommand(command, words, {{QStringLiteral("--month"), QStringLiteral("-m"), true}},
                      kShowHelp, arguments, out, err, status)) {
        return status;
    }
    QString problem;
    if (arguments.Positional.size() != 1) {
        return UsageError(command, QStringLiteral("give one calendar file"), err);
    }
    int month = 0;
    if (arguments.HasValue(QStringLiteral("--month")) &&
        !ParseWholeNumber(arguments.Value(QStringLiteral("--month")), 1, 12, month)) {
        return UsageError(command, QStringLiteral("--month takes a month from 1 to 12"), err);
    }
    const QString fileName = arguments.Positional.first();
    CalendarFileContent content;
    if (!ReadCalendar(fileName, content, problem)) {
        return FileError(problem, err);
    }
    const FileYear year(content.Settings, environment.Today.year());
    out << YearLine(fileName, year) << '\n';
    for (const CalendarFileDate& date : content.Dates) {
        if (month == 0 || date.Month == month) {
            ShowDate(date, year, out);
        }
    }
    out.flush();
    return kDone;
}

}  // namespace kelvane::cal
