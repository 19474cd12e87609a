#include "kelvane_cal/cli/Arguments.h"
#include "kelvane_cal/cli/CommandRunners.h"
#include "kelvane_cal/cli/Files.h"
#include "kelvane_cal/cli/SharedOptions.h"
#include "kelvane_cal/ical/EventTexts.h"
#include "kelvane_cal/ical/ICalExport.h"
#include "kelvane_cal/publish/Publisher.h"

#include "calfile/YearRules.h"

namespace kelvane::cal {

namespace {

const char* const kPublishHelp =
    "usage: kelvane-cal publish FILE --year YYYY --url COLLECTION-URL [--user NAME]\n"
    "                           [--uid-seed TEXT] [--password-file FILE]\n"
    "                           [--dry-run] [--force] [--allow-http]\n"
    "                           [--timeout SECONDS] [--ca-file FILE]\n"
    "\n"
    "Makes a CalDAV calendar collection hold exactly the events that 'export'\n"
    "writes for year YYYY, one resource <UID>.ics per event: new events are\n"
    "created, changed ones replaced and those the file no longer has deleted.\n"
    "Only events this file's UID seed made are ever changed or deleted. What was\n"
    "published is kept in ~/.local/state/Kelvane as each change is made, so that\n"
    "a second run with nothing changed sends nothing but one PROPFIND, and an\n"
    "interrupted run is completed by the next. One publish to a collection runs\n"
    "at a time.\n"
    "\n"
    "An event changed on the server since the last publish is a conflict: it is\n"
    "reported, left as the server has it, and the exit status is 1. An event the\n"
    "server refuses for good is reported and not sent again until it changes.\n"
    "An activity without an end, or one that ends as it starts, is sent one\n"
    "second long, marked so that import reads it back as it was.\n"
    "\n"
    "The password comes from --password-file (which only its owner may read),\n"
    "from ~/.netrc, or from the environment variable KELVANE_CALDAV_PASSWORD.\n"
    "\n"
    "  --year YYYY          the year the dates are put in (%1)\n"
    "  --url URL            the calendar collection, https (http only to this\n"
    "                       computer)\n"
    "  --user NAME          the user name (else the one in ~/.netrc)\n"
    "  --uid-seed TEXT      the seed of the UIDs, as for export\n"
    "  --password-file FILE the file whose first line is the password\n"
    "  --dry-run            say which events would be created, replaced or\n"
    "                       deleted, and do nothing\n"
    "  --force              replace or delete events changed on the server\n"
    "  --allow-http         allow plain http to other computers (a warning each run)\n"
    "  --timeout SECONDS    how long the server may go without answering (60 when\n"
    "                       left out)\n"
    "  --ca-file FILE       trust the certificates in FILE (PEM), besides the\n"
    "                       system's, such as the certificate a home server made\n"
    "                       for itself\n";

// The help with the years an export writes.
QByteArray PublishHelp() {
    return QString::fromLatin1(kPublishHelp).arg(ExportYears()).toLatin1();
}

struct PublishWords {
    PublishRequest Request;
    QString User;
    QString PasswordFile;
};

bool ReadPublishWords(const Arguments& arguments, PublishWords& words, QString& problem,
                      QTextStream& err) {
    PublishRequest& request = words.Request;
    if (arguments.Positional.size() != 1) {
        problem = QStringLiteral("give one calendar file");
        return false;
    }
    request.File = arguments.Positional.first();
    if (!ReadExportYear(arguments.Value(QStringLiteral("--year")), request.Year, problem)) {
        return false;
    }
    if (!arguments.HasValue(QStringLiteral("--url"))) {
        problem = QStringLiteral("give the calendar collection with --url");
        return false;
    }
    if (!ReadUidSeed(arguments, request.Seed, problem)) {
        return false;
    }
    words.User = arguments.Value(QStringLiteral("--user"));
    words.PasswordFile = arguments.Value(QStringLiteral("--password-file"));
    if (!ReadTimeout(arguments, request.TimeoutSeconds, problem) ||
        !ReadCaFile(arguments, request.Trusted, problem)) {
        return false;
    }
    request.DryRun = arguments.Has(QStringLiteral("--dry-run"));
    request.Force = arguments.Has(QStringLiteral("--force"));
    return ReadCollectionUrl(arguments, arguments.Value(QStringLiteral("--url")), request.Url,
                             problem, err);
}

// The events the file exports for publishing, by UID; its warnings go to `err`.
std::map<QString, EventText> ExportedEvents(const CalendarFileContent& content,
                                            const PublishRequest& request, const QDateTime& now,
                                            QTextStream& err) {
    ExportRequest exportRequest{request.File, request.Year, now, request.Seed};
    exportRequest.EndEveryActivity = true;
    const ExportResult result = ExportToICalendar(content, exportRequest);
    WarnAbout(request.File, result.Warnings, err);
    std::map<QString, EventText> events;
    for (EventText& event : SplitEvents(result.Text)) {
        events[event.Uid] = std::move(event);
    }
    return events;
}

int Publish(const PublishWords& words, const Environment& environment, QTextStream& out,
            QTextStream& err) {
    QString problem;
    CalendarFileContent content;
    if (!ReadCalendar(words.Request.File, content, problem)) {
        return FileError(problem, err);
    }
    std::map<QString, EventText> events =
        ExportedEvents(content, words.Request, environment.Now, err);
    Credentials credentials;
    if (!FindCredentials(words.Request.Url, words.User,
                         PasswordSourcesOf(words.PasswordFile, environment), credentials,
                         problem)) {
        return FileError(problem, err);
    }
    Publisher publisher(words.Request, std::move(events), credentials, environment.StateFolder, out,
                        err);
    bool complete = false;
    if (!publisher.Run(complete, problem)) {
        return FileError(problem, err);
    }
    return complete ? kDone : kFileProblem;
}

}  // namespace

int RunPublish(const QStringList& words, const Environment& environment, QTextStream& out,
               QTextStream& err) {
    const QString command = QStringLiteral("publish");
    Arguments arguments;
    int status = kDone;
    if (!StartCommand(command, words,
                      {{QStringLiteral("--year"), QString(), true},
                       {QStringLiteral("--url"), QString(), true},
                       {QStringLiteral("--user"), QString(), true},
                       {QStringLiteral("--uid-seed"), QString(), true},
                       {QStringLiteral("--password-file"), QString(), true},
                       {QStringLiteral("--timeout"), QString(), true},
                       {QStringLiteral("--dry-run"), QString(), false},
                       {QStringLiteral("--force"), QString(), false},
                       {QStringLiteral("--allow-http"), QString(), false},
                       {QStringLiteral("--ca-file"), QString(), true}},
                      PublishHelp().constData(), arguments, out, err, status)) {
        return status;
    }
    PublishWords publishWords;
    QString problem;
    if (!ReadPublishWords(arguments, publishWords, problem, err)) {
        return UsageError(command, problem, err);
    }
    return Publish(publishWords, environment, out, err);
}

}  // namespace kelvane::cal
