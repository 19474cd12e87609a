#include <QBuffer>
#include <QFile>
#include <QFileInfo>

#include "kelvane_cal/caldav/CalDavImport.h"
#include "kelvane_cal/caldav/CalDavUrl.h"
#include "kelvane_cal/cli/Arguments.h"
#include "kelvane_cal/cli/CommandRunners.h"
#include "kelvane_cal/cli/Files.h"
#include "kelvane_cal/cli/SharedOptions.h"
#include "kelvane_cal/ical/CalendarFacts.h"
#include "kelvane_cal/ical/EventTexts.h"
#include "kelvane_cal/ical/FileYear.h"
#include "kelvane_cal/ical/ICalImport.h"
#include "kelvane_cal/ical/ImportedDates.h"
#include "kelvane_cal/ical/ZoneBook.h"

#include "calfile/YearRules.h"

namespace kelvane::cal {

namespace {

const char* const kImportHelp =
    "usage: kelvane-cal import IN.ics --year YYYY [-o OUT.cal] [--into CAL]\n"
    "                          [--timezone ZONE] [--force]\n"
    "       kelvane-cal import URL --year YYYY [...] [--user NAME]\n"
    "                          [--password-file FILE] [--allow-http]\n"
    "                          [--timeout SECONDS] [--ca-file FILE]\n"
    "\n"
    "Makes a calendar file from the events of an iCalendar file ('-' for the\n"
    "standard input), or of a CalDAV calendar collection at an http(s) URL, that\n"
    "fall in year YYYY. Repeating events are expanded within the year and\n"
    "cancelled ones left out. All-day events become titles (several on one day\n"
    "are joined with \"; \") and their descriptions notes (cut to 800 characters,\n"
    "with a warning). Timed events become activities: the 39 earliest of each\n"
    "date are kept and the rest reported. An event that goes past midnight keeps\n"
    "its end as a clock time; one longer than a day gets no end time.\n"
    "\n"
    "An unreadable date, time or repeat rule stops the import with its line,\n"
    "and nothing is written; any other property libical cannot read is left\n"
    "out with a warning.\n"
    "\n"
    "  --year YYYY      the year to import (%1 to %2)\n"
    "  -o, --output OUT.cal\n"
    "                   the file to write; '-' or none for the standard output\n"
    "  --into CAL       start from a copy of calendar file CAL: the dates the\n"
    "                   events fall on gain what they do not hold yet, and every\n"
    "                   other date is kept as it is (CAL itself is not changed\n"
    "                   unless it is also OUT.cal)\n"
    "  --timezone ZONE  the zone times with a zone are put into, such as\n"
    "                   Europe/London (the system's zone when left out); times\n"
    "                   without a zone stay as they are\n"
    "  --force          replace OUT.cal when it exists\n"
    "  --user NAME      the CalDAV user (else the one in ~/.netrc); the password\n"
    "                   comes from --password-file, ~/.netrc or the environment\n"
    "                   variable KELVANE_CALDAV_PASSWORD\n"
    "  --allow-http     allow plain http to other computers (a warning each run)\n"
    "  --timeout SECONDS\n"
    "                   how long the server may go without answering (60 when\n"
    "                   left out)\n"
    "  --ca-file FILE   trust the certificates in FILE (PEM), besides the system's,\n"
    "                   such as the certificate a home server made for itself\n";

// The years libical can count seconds in, with a year to spare at the end.
constexpr int kFirstYear = 1902;
constexpr int kLastYear = 9998;

// The help with the years an import takes.
QByteArray ImportHelp() {
    return QString::fromLatin1(kImportHelp).arg(kFirstYear).arg(kLastYear).toLatin1();
}

struct ImportWords {
    QString Input;
    QString Output;
    QString Into;
    int Year = 0;
    int TodayYear = 0;  // the year a calendar file that names none lays out
    bool Force = false;
    QUrl Url;  // when the input is a CalDAV collection
    QString User;
    QString PasswordFile;
    int TimeoutSeconds = kDefaultTimeoutSeconds;
    QList<QSslCertificate> Trusted;  // --ca-file
    icaltimezone* Zone = nullptr;
    QString ZoneWarning;  // when the system's zone is unknown
};

// Fills `words` from the arguments; false with the usage problem.
bool ReadImportWords(const Arguments& arguments, const Environment& environment, ImportWords& words,
                     QString& problem) {
    if (arguments.Positional.size() != 1) {
        problem = QStringLiteral("give one iCalendar file");
        return false;
    }
    words.Input = arguments.Positional.first();
    words.TodayYear = environment.Today.year();
    if (!ParseWholeNumber(arguments.Value(QStringLiteral("--year")), kFirstYear, kLastYear,
                          words.Year)) {
        problem =
            QStringLiteral("--year takes a year from %1 to %2").arg(kFirstYear).arg(kLastYear);
        return false;
    }
    words.Output = arguments.Value(QStringLiteral("--output"));
    words.Into = arguments.Value(QStringLiteral("--into"));
    words.Force = arguments.Has(QStringLiteral("--force"));
    if (arguments.HasValue(QStringLiteral("--timezone"))) {
        words.Zone = ZoneNamed(arguments.Value(QStringLiteral("--timezone")));
        if (words.Zone == nullptr) {
            problem = QStringLiteral("unknown time zone '%1'")
                          .arg(arguments.Value(QStringLiteral("--timezone")));
            return false;
        }
        return true;
    }
    words.Zone = ZoneNamed(environment.SystemZone);
    if (words.Zone == nullptr) {
        words.Zone = icaltimezone_get_utc_timezone();
        words.ZoneWarning = QStringLiteral(
                                "libical does not know the system's time zone '%1'; "
                                "times with a zone are put into UTC (--timezone "
                                "chooses a zone)")
                                .arg(environment.SystemZone);
    }
    return true;
}

QByteArray CalendarBytes(const CalendarFileContent& content) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        LineWriter writer(buffer);
        WriteCalendarFile(writer, content);
    }
    return buffer.data();
}

// The input file, open, or false with the problem.
bool OpenInput(const QString& fileName, QFile& input, QString& problem) {
    const QFileInfo info(fileName);
    if (info.isDir()) {
        problem = FolderProblem(fileName, QStringLiteral("an iCalendar file"));
        return false;
    }
    if (info.exists() && !info.isFile()) {
        problem = QStringLiteral("%1: is not a regular file").arg(fileName);
        return false;
    }
    if (!input.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("%1: cannot be read: %2")
                      .arg(fileName,
                           info.exists() ? input.errorString() : QStringLiteral("no such file"));
        return false;
    }
    return true;
}

// The first date from which a calendar laid out as `layout` shows other
// weekdays than `year` has: 1 January when the weekday of 1 January differs,
// 1 March when only the leap flag does (Kelvane saves every calendar as a leap
// year), or nothing when they agree.
QString FirstDifferentDate(const FileYear& layout, int year) {
    if (layout.FirstWeekday() != FirstWeekdayOfGregorianYear(year)) {
        return DayAndMonth(1, 1);
    }
    return layout.IsLeap() != QDate::isLeapYear(year) ? DayAndMonth(3, 1) : QString();
}

// A warning when the calendar merged into lays out another year than the one
// imported, so that Kelvane shows it with other weekdays than that year's.
QString LayoutWarning(const ImportWords& words, const CalendarFileContent& calendar) {
    const FileYear layout(calendar.Settings, words.TodayYear);
    const QString from = FirstDifferentDate(layout, words.Year);
    if (from.isEmpty()) {
        return {};
    }
    return QStringLiteral(
               "%1: it lays out %2 with 1 January a %3, so from %4 on the weekdays shown for "
               "it differ from those of %5")
        .arg(words.Into,
             layout.IsLeap() ? QStringLiteral("a leap year")
                             : QStringLiteral("a year that is not leap"),
             WeekdayName(layout.FirstWeekday()), from, QString::number(words.Year));
}

// Whether the input named is the standard input: "-", as for -o.
bool IsStandardInput(const QString& input) {
    return input == QStringLiteral("-");
}

// The input as messages name it.
QString InputName(const QString& input) {
    return IsStandardInput(input) ? QStringLiteral("standard input") : input;
}

// The standard input, read whole: the import reads its text twice.
std::unique_ptr<QIODevice> ReadStandardInput(const Environment& environment) {
    auto buffer = std::make_unique<QBuffer>();
    if (environment.StandardInput != nullptr) {
        buffer->setData(environment.StandardInput->readAll());
    }
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

// The iCalendar text to read: the file, the standard input for "-", or the
// collection's events of the year.
std::unique_ptr<QIODevice> OpenImport(const ImportWords& words, const Environment& environment,
                                      QString& problem) {
    if (IsStandardInput(words.Input)) {
        return ReadStandardInput(environment);
    }
    if (words.Url.isEmpty()) {
        auto file = std::make_unique<QFile>(words.Input);
        return OpenInput(words.Input, *file, problem) ? std::move(file) : nullptr;
    }
    Credentials credentials;
    std::vector<QByteArray> calendars;
    if (!FindCredentials(words.Url, words.User, PasswordSourcesOf(words.PasswordFile, environment),
                         credentials, problem) ||
        !FetchYear(words.Url, words.Year, credentials, words.TimeoutSeconds, words.Trusted,
                   calendars, problem)) {
        return nullptr;
    }
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(JoinCalendars(calendars));
    buffer->open(QIODevice::ReadOnly);
    return buffer;
}

// The words of an import from a CalDAV collection.
bool ReadCollectionWords(const Arguments& arguments, ImportWords& words, QString& problem,
                         QTextStream& err) {
    if (!ReadCollectionUrl(arguments, words.Input, words.Url, problem, err)) {
        return false;
    }
    words.User = arguments.Value(QStringLiteral("--user"));
    words.PasswordFile = arguments.Value(QStringLiteral("--password-file"));
    return ReadTimeout(arguments, words.TimeoutSeconds, problem) &&
           ReadCaFile(arguments, words.Trusted, problem);
}

// The summary of an import: the events read and where their occurrences went.
void TellImported(const ImportWords& words, const ImportReport& report, const ImportedDates& dates,
                  QTextStream& err) {
    err << InputName(words.Input) << ": "
        << Counted(report.Events, QStringLiteral("event"), QStringLiteral("events")) << " read; "
        << Counted(report.Occurrences, QStringLiteral("occurrence"), QStringLiteral("occurrences"))
        << " in " << words.Year << " on "
        << Counted(dates.DatesTouched(), QStringLiteral("date"), QStringLiteral("dates")) << '\n';
    err.flush();
}

int Import(const ImportWords& words, const Environment& environment, QTextStream& out,
           QTextStream& err) {
    QString problem;
    CalendarFileContent calendar;
    if (!words.Into.isEmpty() && !ReadCalendar(words.Into, calendar, problem)) {
        return FileError(problem, err);
    }
    const std::unique_ptr<QIODevice> input = OpenImport(words, environment, problem);
    if (!input) {
        return FileError(problem, err);
    }
    ImportedDates dates;
    ImportReport report;
    if (!ImportICalendar(*input, {words.Year, words.Zone}, dates, report)) {
        return FileError(
            QStringLiteral("%1: line %2: %3; nothing was written")
                .arg(InputName(words.Input), QString::number(report.ProblemLine), report.Problem),
            err);
    }
    QStringList warnings = report.Warnings;
    if (!words.ZoneWarning.isEmpty()) {
        Warn(words.ZoneWarning, err);
    }
    if (words.Into.isEmpty()) {
        calendar = dates.NewCalendar(words.Year, warnings);
    } else {
        const QString layoutWarning = LayoutWarning(words, calendar);
        if (!layoutWarning.isEmpty()) {
            Warn(layoutWarning, err);
        }
        dates.MergeInto(calendar, warnings);
    }
    WarnAbout(InputName(words.Input), warnings, err);
    if (!WriteOutput(words.Output, CalendarBytes(calendar), words.Force, out, problem)) {
        return FileError(problem, err);
    }
    TellImported(words, report, dates, err);
    return kDone;
}

// The options of import, a file's and a collection's.
std::vector<OptionSpec> ImportOptions() {
    return {{QStringLiteral("--year"), QString(), true},
            {QStringLiteral("--output"), QStringLiteral("-o"), true},
            {QStringLiteral("--into"), QString(), true},
            {QStringLiteral("--timezone"), QString(), true},
            {QStringLiteral("--force"), QString(), false},
            {QStringLiteral("--user"), QString(), true},
            {QStringLiteral("--password-file"), QString(), true},
            {QStringLiteral("--allow-http"), QString(), false},
            {QStringLiteral("--timeout"), QString(), true},
            {QStringLiteral("--ca-file"), QString(), true}};
}

}  // namespace

int RunImport(const QStringList& words, const Environment& environment, QTextStream& out,
              QTextStream& err) {
    const QString command = QStringLiteral("import");
    Arguments arguments;
    int status = kDone;
    if (!StartCommand(command, words, ImportOptions(), ImportHelp().constData(), arguments, out,
                      err, status)) {
        return status;
    }
    QString problem;
    ImportWords importWords;
    if (!ReadImportWords(arguments, environment, importWords, problem)) {
        return UsageError(command, problem, err);
    }
    if (IsWebAddress(importWords.Input) &&
        !ReadCollectionWords(arguments, importWords, problem, err)) {
        return UsageError(command, problem, err);
    }
    if (!OutputAllowed(importWords.Output, importWords.Force, problem)) {
        return FileError(problem, err);
    }
    return Import(importWords, environment, out, err);
}

}  // namespace kelvane::cal
