#pragma once

#include <QByteArray>
#include <QString>

#include <map>
#include <vector>

#include "kelvane_cal/ical/EventTexts.h"
#include "kelvane_cal/publish/PublishState.h"

namespace kelvane::cal {

// An event resource the collection holds.
struct ServerEvent {
    QString Href;
    QByteArray ETag;
};

enum class PublishStep {
    Create,    // PUT with If-None-Match: *
    Replace,   // PUT with If-Match
    Delete,    // DELETE with If-Match
    Check,     // on the server but not in the state: compare before taking it as ours
    Conflict,  // changed on the server since the last publish: left alone
    Forget,    // gone from the file and from the server: only the state forgets it
};

struct PublishAction {
    PublishStep Step;
    QString Uid;
    QByteArray IfMatch;  // the ETag a Replace or Delete expects
    QString Reason;      // why a Conflict is one
};

struct PublishPlan {
    std::vector<PublishAction> Actions;
    int Unchanged = 0;
    int StaysRefused = 0;  // events the server refused for good, unchanged since
};

// What to do so that the collection holds exactly `local`, from what the last
// publish left (`published`, by UID) and what the collection holds now (`server`, by
// UID). Resources neither in the state nor made by this file's seed
// (`ownUid`) are never touched. With `force`, a conflict becomes a Replace or
// a Delete of what the server holds. An event whose text the server refused
// for good (`refused`: the hashes by UID) is not sent again until it changes.
PublishPlan PlanPublish(const std::map<QString, EventText>& local,
                        const std::map<QString, PublishedEvent>& published,
                        const std::map<QString, ServerEvent>& server, bool force,
                        const std::function<bool(const QString&)>& ownUid,
                        const std::map<QString, QByteArray>& refused = {});

}  // namespace kelvane::cal
