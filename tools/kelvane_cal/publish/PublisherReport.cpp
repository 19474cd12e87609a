#include "kelvane_cal/ical/CalendarFacts.h"
#include "kelvane_cal/ical/ICalExport.h"
#include "kelvane_cal/publish/PublishReplies.h"
#include "kelvane_cal/publish/Publisher.h"

// What a publish tells: each conflict and refusal, the summary and what is
// left unfinished.
namespace kelvane::cal {

namespace {

// "17 March 2026" for a UID that starts with its date.
QString DateOfUid(const QString& uid) {
    const QDate date = DateOfEventUid(uid);
    if (!date.isValid()) {
        return uid;
    }
    return QStringLiteral("%1 %2").arg(DayAndMonth(date.month(), date.day())).arg(date.year());
}

}  // namespace

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

bool Publisher::Finish() {
    QString problem;
    if (!state_.JournalProblem().isEmpty()) {
        failures_.prepend(state_.JournalProblem());
    }
    if (!request_.DryRun && !state_.Save(problem)) {
        failures_.append(problem);
    }
    const QString verb = request_.DryRun ? QStringLiteral("would be ") : QString();
    out_ << request_.Url.toString() << ": " << created_ << ' ' << verb << "created, " << replaced_
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
    return finished && conflicts_ == 0 && refused_ == 0;
}

}  // namespace kelvane::cal
