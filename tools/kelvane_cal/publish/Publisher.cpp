#include "kelvane_cal/publish/Publisher.h"

#include "kelvane_cal/caldav/DavXml.h"
#include "kelvane_cal/ical/ICalExport.h"
#include "kelvane_cal/publish/PublishReplies.h"

namespace kelvane::cal {

namespace {

constexpr int kParallel = 4;
// Server errors (5xx) in a row after which a run sends nothing more.
constexpr int kMostServerErrors = 3;

}  // namespace

Publisher::Publisher(const PublishRequest& request, std::map<QString, EventText> local,
                     const Credentials& credentials, const QString& stateFolder, QTextStream& out,
                     QTextStream& err)
    : request_(request),
      credentials_(credentials),
      out_(out),
      err_(err),
      // Older versions kept the state under the URL as it was given.
      state_(stateFolder, CollectionName(request.Url), UidSeedOf(request.File, request.Seed),
             request.Url.toString(), CollectionKey(request.Url)),
      uidYear_(EventUidYear(request.Year)),
      uidEnding_(EventUidEnding(UidSeedOf(request.File, request.Seed))),
      local_(std::move(local)) {}

bool Publisher::ListServer(QString& problem) {
    const DavReply reply =
        client_->Send({"PROPFIND",
                       request_.Url,
                       ETagsRequestBody(),
                       {{"Depth", "1"}, {"Content-Type", "application/xml; charset=utf-8"}}});
    if (reply.Status != 207) {
        problem = reply.Status == 200 ? QStringLiteral("%1: is no WebDAV collection; check the URL")
                                            .arg(request_.Url.toString())
                                      : DescribeFailure(reply, client_->TimeoutSeconds());
        return false;
    }
    std::vector<DavResource> resources;
    if (!ParseMultistatus(reply.Body, resources, problem)) {
        problem = request_.Url.toString() + QStringLiteral(": ") + problem;
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
            requests.push_back({"GET", EventUrl(request_.Url, action.Uid), {}, {}});
            checks.push_back(&action);
        }
    }
    const std::vector<DavReply> replies = client_->SendAll(
        requests, kParallel, [](std::size_t, const DavReply& reply) { return Answered(reply); });
    for (std::size_t index = 0; index < replies.size(); ++index) {
        CheckOne(*checks[index], replies[index]);
    }
}

void Publisher::CheckOne(PublishAction& action, const DavReply& reply) {
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
    } else if (request_.Force) {
        action.Step = PublishStep::Replace;
        action.IfMatch = etag;
    } else {
        action.Step = PublishStep::Conflict;
        action.Reason = state_.Events().count(action.Uid) > 0
                            ? QStringLiteral("changed on the server since the last publish")
                            : QStringLiteral("on the server already, saying something else");
    }
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

bool ChangesCollection(const PublishAction& action) {
    return action.Step == PublishStep::Create || action.Step == PublishStep::Replace ||
           action.Step == PublishStep::Delete;
}

DavRequest ChangeRequest(const QUrl& collection, const PublishAction& action,
                         const QByteArray& text) {
    const QUrl url = EventUrl(collection, action.Uid);
    if (action.Step == PublishStep::Delete) {
        return {"DELETE", url, {}, {{"If-Match", action.IfMatch}}};
    }
    QList<QPair<QByteArray, QByteArray>> headers{{"Content-Type", "text/calendar; charset=utf-8"}};
    headers.append(action.Step == PublishStep::Create
                       ? QPair<QByteArray, QByteArray>{"If-None-Match", "*"}
                       : QPair<QByteArray, QByteArray>{"If-Match", action.IfMatch});
    return {"PUT", url, text, headers};
}

void Publisher::Execute(const PublishPlan& plan) {
    std::vector<DavRequest> requests;
    std::vector<const PublishAction*> actions;
    for (const PublishAction& action : plan.Actions) {
        if (ChangesCollection(action)) {
            requests.push_back(ChangeRequest(request_.Url, action, local_[action.Uid].Text));
            actions.push_back(&action);
        }
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

bool Publisher::Run(bool& complete, QString& problem) {
    if ((!request_.DryRun && !state_.Lock(problem)) || !state_.Load(problem)) {
        return false;
    }
    client_ =
        std::make_unique<CalDavClient>(credentials_, request_.TimeoutSeconds, request_.Trusted);
    if (!ListServer(problem) || (!request_.DryRun && !state_.StartJournal(problem))) {
        return false;
    }
    PublishPlan plan = PlanPublish(
        local_, state_.Events(), server_, request_.Force,
        [this](const QString& uid) { return OwnUid(uid); }, state_.Refused());
    unchanged_ = plan.Unchanged;
    staysRefused_ = plan.StaysRefused;
    if (!request_.DryRun) {
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
    if (request_.DryRun) {
        Tell(plan);
        complete = Finish();
        return true;
    }
    Execute(plan);
    if (etagsMissing_) {
        FillMissingETags();
    }
    complete = Finish();
    return true;
}

}  // namespace kelvane::cal
