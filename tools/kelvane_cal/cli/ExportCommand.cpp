#include "kelvane_cal/cli/Arguments.h"
#include "kelvane_cal/cli/CommandRunners.h"
#include "kelvane_cal/cli/Files.h"
#include "kelvane_cal/cli/SharedOptions.h"
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

struct ExportWords {
    QString File;
    int Year = 0;
    QString UidSeed;
    QString Output;
    bool Force = false;
};

// Fills `words` from the arguments; false with the usage problem.
bool ReadExportWords(const Arguments& arguments, ExportWords& words, QString& problem) {
    if (arguments.Positional.size() != 1) {
        problem = QStringLiteral("give one calendar file");
        return false;
    }
    words.File = arguments.Positional.first();
    if (!ReadExportYear(arguments.Value(QStringLiteral("--year")), words.Year, problem) ||
        !ReadUidSeed(arguments, words.UidSeed, problem)) {
        return false;
    }
    words.Output = arguments.Value(QStringLiteral("--output"));
    words.Force = arguments.Has(QStringLiteral("--force"));
    return true;
}

int Export(const ExportWords& words, const Environment& environment, QTextStream& out,
           QTextStream& err) {
    QString problem;
    if (!OutputAllowed(words.Output, words.Force, problem)) {
        return FileError(problem, err);
    }
    CalendarFileContent content;
    if (!ReadCalendar(words.File, content, problem)) {
        return FileError(problem, err);
    }
    const ExportResult result =
        ExportToICalendar(content, {words.File, words.Year, environment.Now, words.UidSeed});
    WarnAbout(words.File, result.Warnings, err);
    if (!WriteOutput(words.Output, result.Text, words.Force, out, problem)) {
        return FileError(problem, err);
    }
    // The summary goes where the import's and the warnings go, never into the
    // written text.
    err << (IsStandardOutput(words.Output) ? QStringLiteral("standard output") : words.Output)
        << ": " << result.AllDayEvents << " all-day and " << result.TimedEvents
        << " timed events\n";
    err.flush();
    return kDone;
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
    ExportWords exportWords;
    QString problem;
    if (!ReadExportWords(arguments, exportWords, problem)) {
        return UsageError(command, problem, err);
    }
    return Export(exportWords, environment, out, err);
}

}  // namespace kelvane::cal
