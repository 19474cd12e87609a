#include <QFileInfo>

#include <algorithm>
#include <iterator>

#include "kelvane_cal/caldav/CalDavClient.h"
#include "kelvane_cal/caldav/CalDavUrl.h"
#include "kelvane_cal/caldav/DavXml.h"
#include "kelvane_cal/cli/Arguments.h"
#include "kelvane_cal/cli/CommandRunners.h"
#include "kelvane_cal/cli/Files.h"
#include "kelvane_cal/ical/CalendarFacts.h"
#include "kelvane_cal/ical/ICalExport.h"
#include "kelvane_cal/publish/PublishPlan.h"

#include "store/Module1.h"

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

constexpr int kParallel = 4;
// Server errors (5xx) in a row after which a run sends nothing more.
constexpr int kMostServerErrors = 3;

struct PublishWords {
    QString File;
    int Year = 0;
    QUrl Url;
    QString User;
    QString Seed;
    QString PasswordFile;
    int TimeoutSeconds = kDefaultTimeoutSeconds;
    QList<QSslCertificate> Trusted;  // --ca-file
    bool DryRun = false;
    bool Force = false;
};

bool ReadPublishWords(const Arguments& arguments, PublishWords& words, QString& problem,
                      QTextStream& err) {
    if (arguments.Positional.size() != 1) {
        problem = QStringLiteral("give one calendar file");
        return false;
    }
    words.File = arguments.Positional.first();
    if (!ReadExportYear(arguments.Value(QStringLiteral("--year")), words.Year, problem)) {
        return false;
    }
    if (!arguments.HasValue(QStringLiteral("--url"))) {
        problem = QStringLiteral("give the calendar collection with --url");
        return false;
    }
    words.Seed = arguments.Value(QStringLiteral("--uid-seed"));
    if (arguments.HasValue(QStringLiteral("--uid-seed")) && words.Seed.trimmed().isEmpty()) {
        problem = QStringLiteral("--uid-seed takes a text that is not blank");
        return false;
    }
    words.User = arguments.Value(QStringLiteral("--user"));
    words.PasswordFile = arguments.Value(QStringLiteral("--password-file"));
    if (!ReadTimeout(arguments, words.TimeoutSeconds, problem) ||
        !ReadCaFile(arguments, words.Trusted, problem)) {
        return false;
    }
    words.DryRun = arguments.Has(QStringLiteral("--dry-run"));
    words.Force = arguments.Has(QStringLiteral("--force"));
    return CollectionUrl(arguments.Value(QStringLiteral("--url")),
                         arguments.Has(QStringLiteral("--allow-http")), words.Url, problem, err);
}

QString SeedOf(const PublishWords& words) {
    return words.Seed.isEmpty() ? QFileInfo(words.File).fileName() : words.Seed;
}

// "17 March 2026" for a UID that starts with its date.
QString DateOfUid(const QString& uid) {
    const QDate date = QDate::fromString(uid.left(8), QStringLiteral("yyyyMMdd"));
    if (!date.isValid()) {
        return uid;
    }
    return QStringLiteral("%1 %2 %3")
        .arg(date.day())
        .arg(QLocale::c().monthName(date.month()))
        .arg(date.year());
}

// Whether the server said anything: after a time-out or a lost connection
// the rest of a run is not sent.
bool Answered(const DavReply& reply) {
    return reply.Status != 0 || reply.RedirectRefused;
}

// A refusal of the event itself that sending it again cannot change: a 403
// that names a condition other than the user's rights (such as Cyrus's
// "valid-calendar-data: DTEND must occur after DTSTART").
QString LastingRefusal(const DavReply& reply) {
    return reply.Status == 403 && NamesABrokenCondition(reply.Body) ? DavErrorText(reply.Body)
                                                                    : QString();
}

// A refusal of this one event that a later run may get past, such as a 400
// or a 413: not a matter of the URL, the user's rights or a conflict, which
// hold for every event and have messages of their own.
bool RefusesTheEvent(const DavReply& reply) {
    static constexpr int kAboutTheCollection[] = {401, 403, 404, 405, 407, 412};
    return reply.Status >= 400 && reply.Status < 500 &&
           std::find(std::begin(kAboutTheCollection), std::end(kAboutTheCollection),
                     reply.Status) == std::end(kAboutTheCollection);
}

// The server's words on a refusal: its DAV:error, or a short text body.
QString ServerWords(const DavReply& reply) {
    const QString reason = DavErrorText(reply.Body);
    if (!reason.isEmpty() || reply.Body.size() > 300 || reply.Body.contains('<')) {
        return reason;
    }
    return QString::fromUtf8(reply.Body).simplified();
}

// Runs one publish from its words to its exit status.
class Publisher {
  public:
    Publisher(const PublishWords& words, const Environment& environment, QTextStream& out,
              QTextStream& err)
        : words_(words),
          environment_(environment),
          out_(out),
          err_(err),
          // Older versions kept the state under the URL as it was given.
          state_(environment.StateFolder, CollectionName(words.Url), SeedOf(words),
                 words.Url.toString(), CollectionKey(words.Url)),
          ownSuffix_(EventUid(SeedOf(words), words.Year, 1, 1, 0).section(QLatin1Char('-'), -1)) {}

    int Run();

  private:
    bool Export(QString& problem);
    bool ListServer(QString& problem);
    void Check(PublishPlan& plan);
    void Execute(const PublishPlan& plan);
    void Tell(const PublishPlan& plan);
    bool Applied(const PublishAction& action, const DavReply& reply);
    void Record(const PublishAction& action, const DavReply& reply);
    void FillMissingETags();
    void Conflict(const QString& uid, const QString& reason);
    void Refused(const QString& uid, const QString& reason);
    void RefusedThisTime(const QString& uid, const DavReply& reply);
    void ForgetRefusalsOfGoneEvents();
    void TellUnfinished();
    int Finish();
    bool OwnUid(const QString& uid) const {
        return uid.startsWith(QString::number(words_.Year).rightJustified(4, QLatin1Char('0'))) &&
               uid.endsWith(QLatin1Char('-') + ownSuffix_);
    }

    const PublishWords& words_;
    const Environment& environment_;
    QTextStream& out_;
    QTextStream& err_;
    PublishState state_;
    QString ownSuffix_;
    std::unique_ptr<CalDavClient> client_;
    std::map<QString, EventText> local_;
    std::map<QString, ServerEvent> server_;
    int created_ = 0;
    int replaced_ = 0;
    int deleted_ = 0;
    int unchanged_ = 0;
    int conflicts_ = 0;
    int refused_ = 0;          // refused for good in this run
    int refusedThisTime_ = 0;  // refused in this run, sent again by the next
    int staysRefused_ = 0;     // refused by an earlier run and unchanged since
    int notSent_ = 0;          // left unsent once the server stopped answering
    int serverErrorsInARow_ = 0;
    bool etagsMissing_ = false;
    QStringList failures_;
};

bool Publisher::Export(QString& problem) {
    CalendarFileContent content;
    if (!ReadCalendar(words_.File, content, problem)) {
        return false;
    }
    ExportRequest request{words_.File, words_.Year, environment_.Now, words_.Seed};
    request.EndEveryActivity = true;
    const ExportResult result = ExportToICalendar(content, request);
    for (const QString& warning : result.Warnings) {
        Warn(words_.File + QStringLiteral(": ") + warning, err_);
    }
    for (EventText& event : SplitEvents(result.Text)) {
        local_[event.Uid] = std::move(event);
    }
    return true;
}

bool Publisher::ListServer(QString& problem) {
    const DavReply reply =
        client_->Send({"PROPFIND",
                       words_.Url,
                       ETagsRequestBody(),
                       {{"Depth", "1"}, {"Content-Type", "application/xml; charset=utf-8"}}});
    if (reply.Status != 207) {
        problem = reply.Status == 200 ? QStringLiteral("%1: is no WebDAV collection; check the URL")
                                            .arg(words_.Url.toString())
                                      : DescribeFailure(reply, client_->TimeoutSeconds());
        return false;
    }
    std::vector<DavResource> resources;
    if (!ParseMultistatus(reply.Body, resources, problem)) {
        problem = words_.Url.toString() + QStringLiteral(": ") + problem;
        return false;
    }
    for (const DavResource& resource : resources) {
        const QString uid = UidOfHref(resource.Href);
        if (!uid.isEmpty()) {
            server_[uid] = {resource.Href, resource.ETag};
        }
    }
    return true;
}

// Events on the server that the state does not know are taken as published
// when they say what the file says (a run that stopped before it saved);
// otherwise they are conflicts.
void Publisher::Check(PublishPlan& plan) {
    std::vector<DavRequest> requests;
    std::vector<PublishAction*> checks;
    for (PublishAction& action : plan.Actions) {
        if (action.Step == PublishStep::Check) {
            requests.push_back({"GET", EventUrl(words_.Url, action.Uid), {}, {}});
            checks.push_back(&action);
        }
    }
    const std::vector<DavReply> replies = client_->SendAll(
        requests, kParallel, [](std::size_t, const DavReply& reply) { return Answered(reply); });
    for (std::size_t index = 0; index < replies.size(); ++index) {
        PublishAction& action = *checks[index];
        const DavReply& reply = replies[index];
        const EventText& event = local_[action.Uid];
        const std::vector<EventText> there = SplitEvents(reply.Body);
        const QByteArray etag = action.IfMatch.isEmpty() ? reply.ETag : action.IfMatch;
        if (reply.NotSent) {
            ++notSent_;
            action.Step = PublishStep::Forget;
            action.Uid.clear();
        } else if (reply.Status != 200) {
            failures_.append(DescribeFailure(reply, client_->TimeoutSeconds()));
            action.Step = PublishStep::Forget;  // left alone until a run can read it
            action.Uid.clear();
        } else if (there.size() == 1 && there.front().Hash == event.Hash && !etag.isEmpty()) {
            state_.Put(action.Uid, {etag, event.Hash});
            ++unchanged_;
            action.Step = PublishStep::Forget;  // nothing more to do
            action.Uid.clear();
        } else if (words_.Force) {
            action.Step = PublishStep::Replace;
            action.IfMatch = etag;
        } else {
            action.Step = PublishStep::Conflict;
            action.Reason = state_.Events().count(action.Uid) > 0
                                ? QStringLiteral("changed on the server since the last publish")
                                : QStringLiteral("on the server already, saying something else");
        }
    }
}

// What a dry run would do, one event a line, counted for the summary.
void Publisher::Tell(const PublishPlan& plan) {
    for (const PublishAction& action : plan.Actions) {
        const char* verb = action.Step == PublishStep::Create    ? "create"
                           : action.Step == PublishStep::Replace ? "replace"
                           : action.Step == PublishStep::Delete  ? "delete"
                                                                 : nullptr;
        if (verb != nullptr) {
            out_ << "would " << verb << ' ' << action.Uid << " (" << DateOfUid(action.Uid) << ")\n";
        }
        created_ += action.Step == PublishStep::Create ? 1 : 0;
        replaced_ += action.Step == PublishStep::Replace ? 1 : 0;
        deleted_ += action.Step == PublishStep::Delete ? 1 : 0;
    }
}

void Publisher::Conflict(const QString& uid, const QString& reason) {
    ++conflicts_;
    err_ << "kelvane-cal: conflict: " << uid << " (" << DateOfUid(uid) << ") " << reason
         << "; left as the server has it (--force replaces it)\n";
}

void Publisher::Refused(const QString& uid, const QString& reason) {
    ++refused_;
    err_ << "kelvane-cal: refused: " << uid << " (" << DateOfUid(uid)
         << "): the server refuses this (403): " << reason
         << "; it is not sent again until it changes\n";
}

void Publisher::RefusedThisTime(const QString& uid, const DavReply& reply) {
    ++refusedThisTime_;
    const QString words = ServerWords(reply);
    err_ << "kelvane-cal: refused: " << uid << " (" << DateOfUid(uid) << "): the server answered "
         << reply.Status << (words.isEmpty() ? QString() : QStringLiteral(": ") + words)
         << "; the next run sends it again\n";
}

// Records what a request did; false when the run should send no more: the
// server stopped answering or kept failing, or what is done can no longer be
// recorded.
bool Publisher::Applied(const PublishAction& action, const DavReply& reply) {
    Record(action, reply);
    serverErrorsInARow_ = reply.Status >= 500 ? serverErrorsInARow_ + 1 : 0;
    return Answered(reply) && serverErrorsInARow_ < kMostServerErrors &&
           state_.JournalProblem().isEmpty();
}

void Publisher::Record(const PublishAction& action, const DavReply& reply) {
    if (reply.Status == 412) {
        Conflict(action.Uid, QStringLiteral("changed on the server since the last publish"));
        return;
    }
    if (action.Step == PublishStep::Delete && (reply.Status == 404 || reply.Status == 410)) {
        state_.Erase(action.Uid);
        return;
    }
    const QString refusal = LastingRefusal(reply);
    if (action.Step != PublishStep::Delete && !refusal.isEmpty()) {
        state_.Refuse(action.Uid, local_[action.Uid].Hash);
        Refused(action.Uid, refusal);
        return;
    }
    if (action.Step != PublishStep::Delete && RefusesTheEvent(reply)) {
        RefusedThisTime(action.Uid, reply);
        return;
    }
    if (reply.Status < 200 || reply.Status >= 300) {
        failures_.append(DescribeFailure(reply, client_->TimeoutSeconds()));
        return;
    }
    if (action.Step == PublishStep::Delete) {
        state_.Erase(action.Uid);
        ++deleted_;
    } else {
        state_.Put(action.Uid, {reply.ETag, local_[action.Uid].Hash});
        ++(action.Step == PublishStep::Create ? created_ : replaced_);
        etagsMissing_ = etagsMissing_ || reply.ETag.isEmpty();
    }
}

void Publisher::Execute(const PublishPlan& plan) {
    std::vector<DavRequest> requests;
    std::vector<const PublishAction*> actions;
    for (const PublishAction& action : plan.Actions) {
        const QUrl url = EventUrl(words_.Url, action.Uid);
        if (action.Step == PublishStep::Create || action.Step == PublishStep::Replace) {
            QList<QPair<QByteArray, QByteArray>> headers{
                {"Content-Type", "text/calendar; charset=utf-8"}};
            headers.append(action.Step == PublishStep::Create
                               ? QPair<QByteArray, QByteArray>{"If-None-Match", "*"}
                               : QPair<QByteArray, QByteArray>{"If-Match", action.IfMatch});
            requests.push_back({"PUT", url, local_[action.Uid].Text, headers});
        } else if (action.Step == PublishStep::Delete) {
            requests.push_back({"DELETE", url, {}, {{"If-Match", action.IfMatch}}});
        } else {
            continue;
        }
        actions.push_back(&action);
    }
    const std::vector<DavReply> replies = client_->SendAll(
        requests, kParallel, [this, &actions](std::size_t index, const DavReply& reply) {
            return Applied(*actions[index], reply);
        });
    for (const DavReply& reply : replies) {
        notSent_ += reply.NotSent ? 1 : 0;
    }
}

// A server that gives no ETag with its answer to a PUT is asked for them all
// once more at the end.
void Publisher::FillMissingETags() {
    QString problem;
    server_.clear();
    if (!ListServer(problem)) {
        failures_.append(problem);
        return;
    }
    std::map<QString, PublishedEvent> filled;
    for (const auto& [uid, event] : state_.Events()) {
        const auto there = server_.find(uid);
        if (event.ETag.isEmpty() && there != server_.end()) {
            filled[uid] = {there->second.ETag, event.Hash};
        }
    }
    for (const auto& [uid, event] : filled) {
        state_.Put(uid, event);
    }
}

// An event the server refused that the file no longer has is forgotten;
// another year's stay.
void Publisher::ForgetRefusalsOfGoneEvents() {
    std::vector<QString> gone;
    for (const auto& [uid, hash] : state_.Refused()) {
        if (local_.find(uid) == local_.end() && OwnUid(uid)) {
            gone.push_back(uid);
        }
    }
    for (const QString& uid : gone) {
        state_.Refuse(uid, {});
    }
}

// The first failure in full, then how many more failed and how many were
// not sent, which another run completes.
void Publisher::TellUnfinished() {
    if (!failures_.isEmpty()) {
        err_ << "kelvane-cal: " << failures_.first() << '\n';
    }
    QStringList counts;
    if (failures_.size() > 1) {
        counts << Counted(failures_.size() - 1, QStringLiteral("more request failed"),
                          QStringLiteral("more requests failed"));
    }
    if (notSent_ > 0) {
        counts << Counted(notSent_, QStringLiteral("request was not sent"),
                          QStringLiteral("requests were not sent"));
    }
    if (!counts.isEmpty()) {
        err_ << "kelvane-cal: " << counts.join(QStringLiteral(", "))
             << "; run publish again to complete the calendar\n";
    }
}

int Publisher::Finish() {
    QString problem;
    if (!state_.JournalProblem().isEmpty()) {
        failures_.prepend(state_.JournalProblem());
    }
    if (!words_.DryRun && !state_.Save(problem)) {
        failures_.append(problem);
    }
    const QString verb = words_.DryRun ? QStringLiteral("would be ") : QString();
    out_ << words_.Url.toString() << ": " << created_ << ' ' << verb << "created, " << replaced_
         << ' ' << verb << "replaced, " << deleted_ << ' ' << verb << "deleted, " << unchanged_
         << " unchanged, " << conflicts_ << (conflicts_ == 1 ? " conflict" : " conflicts");
    if (const int refused = refused_ + staysRefused_ + refusedThisTime_; refused > 0) {
        out_ << ", " << refused << " refused";
    }
    out_ << "; requests: " << client_->Sent("PROPFIND") << " PROPFIND, " << client_->Sent("GET")
         << " GET, " << client_->Sent("PUT") << " PUT, " << client_->Sent("DELETE") << " DELETE\n";
    out_.flush();
    TellUnfinished();
    if (staysRefused_ > 0) {
        err_ << "kelvane-cal: "
             << Counted(staysRefused_, QStringLiteral("event stays refused by the server"),
                        QStringLiteral("events stay refused by the server"))
             << "; a change to one sends it again\n";
    }
    err_.flush();
    const bool finished = failures_.isEmpty() && notSent_ == 0 && refusedThisTime_ == 0;
    return finished && conflicts_ == 0 && refused_ == 0 ? kDone : kFileProblem;
}

int Publisher::Run() {
    QString problem;
    Credentials credentials;
    if (!Export(problem) ||
        !FindCredentials(words_.Url, words_.User,
                         PasswordSourcesOf(words_.PasswordFile, environment_), credentials,
                         problem) ||
        (!words_.DryRun && !state_.Lock(problem)) || !state_.Load(problem)) {
        return FileError(problem, err_);
    }
    client_ = std::make_unique<CalDavClient>(credentials, words_.TimeoutSeconds, words_.Trusted);
    if (!ListServer(problem) || (!words_.DryRun && !state_.StartJournal(problem))) {
        return FileError(problem, err_);
    }
    PublishPlan plan = PlanPublish(
        local_, state_.Events(), server_, words_.Force,
        [this](const QString& uid) { return OwnUid(uid); }, state_.Refused());
    unchanged_ = plan.Unchanged;
    staysRefused_ = plan.StaysRefused;
    if (!words_.DryRun) {
        ForgetRefusalsOfGoneEvents();
    }
    Check(plan);
    for (const PublishAction& action : plan.Actions) {
        if (action.Step == PublishStep::Conflict) {
            Conflict(action.Uid, action.Reason);
        } else if (action.Step == PublishStep::Forget && !action.Uid.isEmpty()) {
            state_.Erase(action.Uid);
        }
    }
    if (words_.DryRun) {
        Tell(plan);
        return Finish();
    }
    Execute(plan);
    if (etagsMissing_) {
        FillMissingETags();
    }
    return Finish();
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
    return Publisher(publishWords, environment, out, err).Run();
}

}  // namespace kelvane::cal
