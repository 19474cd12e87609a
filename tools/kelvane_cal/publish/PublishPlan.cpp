#include "kelvane_cal/publish/PublishPlan.h"

namespace kelvane::cal {

namespace {

const QString kChangedOnServer = QStringLiteral("changed on the server since the last publish");
const QString kDeletedOnServer = QStringLiteral("deleted on the server since the last publish");

void PlanLocalEvent(const EventText& event, const std::map<QString, PublishedEvent>& published,
                    const std::map<QString, ServerEvent>& server, bool force, PublishPlan& plan) {
    const auto known = published.find(event.Uid);
    const auto there = server.find(event.Uid);
    const bool inState = known != published.end();
    const bool onServer = there != server.end();
    if (!onServer) {
        if (inState && !force) {
            plan.Actions.push_back({PublishStep::Conflict, event.Uid, {}, kDeletedOnServer});
        } else {
            plan.Actions.push_back({PublishStep::Create, event.Uid, {}, {}});
        }
        return;
    }
    // An ETag that is not the one recorded may be our own last change whose
    // answer was lost; the check tells that from a change made on the server.
    // So does a missing ETag, which could make no conditional request.
    const QByteArray& etag = there->second.ETag;
    if (!inState || etag.isEmpty() || etag != known->second.ETag) {
        plan.Actions.push_back({PublishStep::Check, event.Uid, etag, {}});
    } else if (known->second.Hash != event.Hash) {
        plan.Actions.push_back({PublishStep::Replace, event.Uid, known->second.ETag, {}});
    } else {
        ++plan.Unchanged;
    }
}

// An event this file published, or that its seed made, which the file no
// longer has.
void PlanGoneEvent(const QString& uid, const std::map<QString, PublishedEvent>& published,
                   const std::map<QString, ServerEvent>& server, bool force, PublishPlan& plan) {
    const auto known = published.find(uid);
    const auto there = server.find(uid);
    if (there == server.end()) {
        plan.Actions.push_back({PublishStep::Forget, uid, {}, {}});
        return;
    }
    const QByteArray& etag = there->second.ETag;
    const bool unchanged = known != published.end() && known->second.ETag == etag;
    if (etag.isEmpty() && !force) {
        plan.Actions.push_back(
            {PublishStep::Conflict, uid, {}, QStringLiteral("has no ETag on the server")});
    } else if (unchanged || force || known == published.end()) {
        plan.Actions.push_back({PublishStep::Delete, uid, there->second.ETag, {}});
    } else {
        plan.Actions.push_back({PublishStep::Conflict, uid, {}, kChangedOnServer});
    }
}

}  // namespace

PublishPlan PlanPublish(const std::map<QString, EventText>& local,
                        const std::map<QString, PublishedEvent>& published,
                        const std::map<QString, ServerEvent>& server, bool force,
                        const std::function<bool(const QString&)>& ownUid,
                        const std::map<QString, QByteArray>& refused) {
    PublishPlan plan;
    for (const auto& [uid, event] : local) {
        const auto refusal = refused.find(uid);
        if (refusal != refused.end() && refusal->second == event.Hash) {
            ++plan.StaysRefused;
            continue;
        }
        PlanLocalEvent(event, published, server, force, plan);
    }
    std::map<QString, bool> gone;
    // Only events of the year being published go: another year's stay.
    for (const auto& [uid, event] : published) {
        if (local.find(uid) == local.end() && ownUid(uid)) {
            gone[uid] = true;
        }
    }
    for (const auto& [uid, event] : server) {
        if (local.find(uid) == local.end() && ownUid(uid)) {
            gone[uid] = true;
        }
    }
    for (const auto& [uid, unused] : gone) {
        PlanGoneEvent(uid, published, server, force, plan);
    }
    return plan;
}

}  // namespace kelvane::cal
