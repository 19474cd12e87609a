#include "kelvane_cal/cli/Arguments.h"
#include "kelvane_cal/cli/CommandRunners.h"
#include "kelvane_cal/cli/Files.h"
#include "kelvane_cal/ical/CalendarFacts.h"

namespace kelvane::cal {

namespace {

const char* const kCheckHelp =
    "usage: kelvane-cal check FILE...\n"
    "\n"
    "Reads each calendar file as Kelvane opens it and prints one line for it:\n"
    "  FILE: ok: N dates with content, N activities, N notes\n"
    "or the first problem, with the line Kelvane's damaged-file message names:\n"
    "  FILE: line N: what is wrong\n"
    "\n"
    "Exit status: 0 when every file is fine, 1 when one is not, 2 for a usage error.\n";

QString Summary(const CalendarFileContent& content) {
    qsizetype activities = 0;
    qsizetype notes = 0;
    for (const CalendarFileDate& date : content.Dates) {
        activities += static_cast<qsizetype>(ActivitiesOf(date).size());
        notes += NoteOf(date).isEmpty() ? 0 : 1;
    }
    return QStringLiteral("ok: %1, %2, %3")
        .arg(Counted(static_cast<qsizetype>(content.Dates.size()),
                     QStringLiteral("date with content"), QStringLiteral("dates with content")),
             Counted(activities, QStringLiteral("activity"), QStringLiteral("activities")),
             Counted(notes, QStringLiteral("note"), QStringLiteral("notes")));
}

}  // namespace

int RunCheck(const QStringList& words, QTextStream& out, QTextStream& err) {
    Arguments arguments;
    int status = kDone;
    if (!StartCommand(QStringLiteral("check"), words, {}, kCheckHelp, arguments, out, err,
                      status)) {
        return status;
    }
    QString problem;
    if (arguments.Positional.isEmpty()) {
        return UsageError(QStringLiteral("check"), QStringLiteral("no calendar file given"), err);
    }
    for (const QString& fileName : arguments.Positional) {
        CalendarFileContent content;
        if (ReadCalendar(fileName, content, problem)) {
            out << fileName << ": " << Summary(content) << '\n';
        } else {
            out << problem << '\n';
            status = kFileProblem;
        }
    }
    out.flush();
    return status;
}

}  // namespace kelvane::cal
