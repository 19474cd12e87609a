#include "kelvane_cal/cli/Arguments.h"
#include "kelvane_cal/cli/CommandRunners.h"
#include "kelvane_cal/cli/Files.h"
#include "kelvane_cal/ical/ICalExport.h"

namespace kelvane::cal {

namespace {

const char* const kExportHelp =
    "usage: kelvane-cal export FILE --year YYYY [-o OUT.ics] [--uid-seed TEXT]\n"
    "                          [--force]\n"
    "\n"
    "Writes a calendar file as iCalendar, with its dates in year YYYY:\n"
    "an all-day event for each date with a title or a note (the title is its\n"
    "summary, the note its description), and a timed event in floating local\n"
    "time for each activity. An activity without an end time gets no end; one\n"
    "that ends before it starts ends on the next day; one that ends as it starts\n"
    "lasts one second, marked so that import reads it back as it was. A date\n"
    "with a note and no title gets an empty summary. 29 February is left out,\n"
    "with a warning, in a year that has none. The events' UIDs are made of a\n"
    "seed, the date and the activity's place, so exporting the same file again\n"
    "gives the events the same UIDs.\n"
    "\n"
    "  --year YYYY   the year the dates are put in (%1)\n"
    "  -o, --output OUT.ics\n"
    "                the file to write; '-' or none for the standard output\n"
    "  --uid-seed TEXT\n"
    "                the seed of the UIDs; without it the file's name without\n"
    "                its folder (give two files of the same name in different\n"
    "                folders seeds of their own)\n"
    "  --force       replace OUT.ics when it exists\n";

// The help with the years an export writes.
QByteArray ExportHelp() {
    return QString::fromLatin1(kExportHelp).arg(ExportYears()).toLatin1();
}

}  // namespace

int RunExport(const QStringList& words, const Environment& environment, QTextStream& out,
              QTextStream& err) {
    const QString command = QStringLiteral("export");
    Arguments arguments;
    int status = kDone;
    if (!StartCommand(command, words,
                      {{QStringLiteral("--year"), QString(), true},
                       {QStringLiteral("--output"), QStringLiteral("-o"), true},
                       {QStringLiteral("--uid-seed"), QString(), true},
                       {QStringLiteral("--force"), QString(), false}},
                      ExportHelp().constData(), arguments, out, err, status)) {
        return status;
    }
    QString problem;
    if (arguments.Positional.size() != 1) {
        return UsageError(command, QStringLiteral("give one calendar file"), err);
    }
    int year = 0;
    if (!ReadExportYear(arguments.Value(QStringLiteral("--year")), year, problem)) {
        return UsageError(command, problem, err);
    }
    const QString uidSeed = arguments.Value(QStringLiteral("--uid-seed"));
    if (arguments.HasValue(QStringLiteral("--uid-seed")) && uidSeed.trimmed().isEmpty()) {
        return UsageError(command, QStringLiteral("--uid-seed takes a text that is not blank"),
                          err);
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
    const ExportResult result =
        ExportToICalendar(content, {fileName, year, environment.Now, uidSeed});
    for (const QString& warning : result.Warnings) {
        Warn(fileName + QStringLiteral(": ") + warning, err);
    }
    if (!WriteOutput(output, result.Text, force, out, problem)) {
        return FileError(problem, err);
    }
    // The summary goes where the import's and the warnings go, never into the
    // written text.
    err << (IsStandardOutput(output) ? QStringLiteral("standard output") : output) << ": "
        << result.AllDayEvents << " all-day and " << result.TimedEvents << " timed events\n";
    err.flush();
    return kDone;
}

}  // namespace kelvane::cal
