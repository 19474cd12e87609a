#include "kelvane_cal/cli/Commands.h"

#include "kelvane_cal/cli/CommandRunners.h"

namespace kelvane::cal {

namespace {

const char* const kProgramHelp =
    "usage: kelvane-cal COMMAND [OPTIONS] ...\n"
    "\n"
    "Works with Kelvane's calendar files (.cal) from the command line.\n"
    "\n"
    "Commands:\n"
    "  check FILE...                     check calendar files as Kelvane reads them\n"
    "  show FILE [--month M]             print the dates that have content\n"
    "  export FILE --year YYYY [-o OUT]  write the calendar as iCalendar (.ics)\n"
    "  import IN.ics --year YYYY [-o OUT] [--into CAL]\n"
    "                                    make a calendar file from iCalendar\n"
    "  import URL --year YYYY [-o OUT] [--into CAL]\n"
    "                                    the same from a CalDAV calendar\n"
    "  publish FILE --year YYYY --url URL\n"
    "                                    make a CalDAV calendar hold the export\n"
    "\n"
    "'kelvane-cal COMMAND --help' describes a command. Output files are replaced\n"
    "only with --force; without -o the output goes to the standard output.\n"
    "\n"
    "Exit status: 0 done, 1 a file is damaged or cannot be read or written,\n"
    "2 a usage error.\n";

}  // namespace

bool StartCommand(const QString& command, const QStringList& words,
                  const std::vector<OptionSpec>& options, const char* help, Arguments& arguments,
                  QTextStream& out, QTextStream& err, int& status) {
    QString problem;
    if (!ParseArguments(words, options, arguments, problem)) {
        status = UsageError(command, problem, err);
        return false;
    }
    if (arguments.Has(QStringLiteral("--help"))) {
        out << help;
        out.flush();
        status = kDone;
        return false;
    }
    return true;
}

int UsageError(const QString& command, const QString& problem, QTextStream& err) {
    err << "kelvane-cal: " << problem << '\n';
    err << "Try 'kelvane-cal " << (command.isEmpty() ? QString() : command + QLatin1Char(' '))
        << "--help'.\n";
    err.flush();
    return kUsageError;
}

int FileError(const QString& problem, QTextStream& err) {
    err << "kelvane-cal: " << problem << '\n';
    err.flush();
    return kFileProblem;
}

void Warn(const QString& warning, QTextStream& err) {
    err << "kelvane-cal: warning: " << warning << '\n';
}

void WarnAbout(const QString& name, const QStringList& warnings, QTextStream& err) {
    for (const QString& warning : warnings) {
        Warn(name + QStringLiteral(": ") + warning, err);
    }
}

int RunCommand(const QStringList& arguments, const Environment& environment, QTextStream& out,
               QTextStream& err) {
    const QString command = arguments.value(0);
    const QStringList words = arguments.mid(1);
    if (command == QStringLiteral("--help") || command == QStringLiteral("-h") ||
        command == QStringLiteral("help")) {
        out << kProgramHelp;
        out.flush();
        return kDone;
    }
    if (command == QStringLiteral("--version")) {
        out << "kelvane-cal " << KELVANE_VERSION << '\n';
        out.flush();
        return kDone;
    }
    if (command == QStringLiteral("check")) {
        return RunCheck(words, out, err);
    }
    if (command == QStringLiteral("show")) {
        return RunShow(words, environment, out, err);
    }
    if (command == QStringLiteral("export")) {
        return RunExport(words, environment, out, err);
    }
    if (command == QStringLiteral("publish")) {
        return RunPublish(words, environment, out, err);
    }
    if (command == QStringLiteral("import")) {
        return RunImport(words, environment, out, err);
    }
    return UsageError(QString(),
                      command.isEmpty() ? QStringLiteral("no command given")
                                        : QStringLiteral("unknown command '%1'").arg(command),
                      err);
}

}  // namespace kelvane::cal
