#include "kelvane_cal/Arguments.h"
#include "kelvane_cal/CommandRunners.h"
#include "kelvane_cal/Files.h"
#include "kelvane_cal/ICalExport.h"

namespace kelvane::cal {

namespace {

const char* const kExportHelp =
    "usage: kelvane-cal export FILE --year YYYY [-o OUT.ics] [--force]\n"
    "\n"
    "Writes a calendar file as iCalendar, with its dates in year YYYY:\n"
    "an all-day event for each date with a title (the note is its description;\n"
    "a date with only a note gets an all-day event without a title), and a\n"
    "timed event in floating local time for each activity. An activity without\n"
    "an end time gets no end; one that ends before it starts is exported as\n"
    "lasting no time, with a warning. 29 February is left out, with a warning,\n"
    "in a year that has none. Exporting the same file again gives the events\n"
    "the same UIDs.\n"
    "\n"
    "  --year YYYY   the year the dates are put in (1 to 9999)\n"
    "  -o, --output OUT.ics\n"
    "                the file to write; '-' or none for the standard output\n"
    "  --force       replace OUT.ics when it exists\n";

}  // namespace

int RunExport(const QStringList& words, const Environment& environment, QTextStream& out,
              QTextStream& err) {
    const QString command = QStringLiteral("export");
    Arguments arguments;
    int status = kDone;
    if (!StartCommand(command, words,
                      {{QStringLiteral("--year"), QString(), true},
                       {QStringLiteral("--output"), QStringLiteral("-o"), true},
                       {QStringLiteral("--force"), QString(), false}},
                      kExportHelp, arguments, out, err, status)) {
        return status;
    }
    QString problem;
    if (arguments.Positional.size() != 1) {
        return UsageError(command, QStringLiteral("give one calendar file"), err);
    }
    int year = 0;
    if (!ParseWholeNumber(arguments.Value(QStringLiteral("--year")), 1, 9999, year)) {
        return UsageError(command, QStringLiteral("--year takes a year from 1 to 9999"), err);
    }
    const QString output = arguments.Value(QStringLiteral("--output"));
    const bool force = arguments.Has(QStringLiteral("--force"));
    if (!OutputAllowed(output, force, problem)) {
        return FileError(problem, err);
    }
    const QString fileName = arguments.Positional.first();
    CalendarFileContent content;
    if (!ReadCalendar(fileName, content, problem)) {
        return FileError(problem, err);
    }
    const ExportResult result = ExportToICalendar(content, {fileName, year, environment.Now});
    for (const QString& warning : result.Warnings) {
        Warn(fileName + QStringLiteral(": ") + warning, err);
    }
    if (!WriteOutput(output, result.Text, force, out, problem)) {
        return FileError(problem, err);
    }
    if (!IsStandardOutput(output)) {
        out << output << ": " << result.AllDayEvents << " all-day and " << result.TimedEvents
            << " timed events\n";
    }
    out.flush();
    err.flush();
    return kDone;
}

}  // namespace kelvane::cal
