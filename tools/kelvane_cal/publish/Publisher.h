#pragma once

#include <QList>
#include <QSslCertificate>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <QUrl>

#include <map>
#include <memory>

#include "kelvane_cal/caldav/CalDavClient.h"
#include "kelvane_cal/caldav/CalDavUrl.h"
#include "kelvane_cal/caldav/Credentials.h"
#include "kelvane_cal/ical/EventTexts.h"
#include "kelvane_cal/publish/PublishPlan.h"
#include "kelvane_cal/publish/PublishState.h"

namespace kelvane::cal {

// What to publish where.
struct PublishRequest {
    QString File;  // the calendar file
    int Year = 0;
    QUrl Url;      // the collection
    QString Seed;  // --uid-seed, empty for the file's name
    int TimeoutSeconds = kDefaultTimeoutSeconds;
    QList<QSslCertificate> Trusted;  // --ca-file
    bool DryRun = false;
    bool Force = false;
};

// Runs one publish: makes the collection hold the exported events `local`
// (by UID), keeping what was published under `stateFolder`. Tells each
// conflict, refusal and failure on `err` and the summary on `out`.
class Publisher {
  public:
    Publisher(const PublishRequest& request, std::map<QString, EventText> local,
              const Credentials& credentials, const QString& stateFolder, QTextStream& out,
              QTextStream& err);

    // False with the problem when the run cannot start: the state cannot be
    // locked or read, or the collection cannot be listed. Otherwise
    // `complete` says whether every change was made, without conflicts or
    // refusals.
    bool Run(bool& complete, QString& problem);

  private:
    bool ListServer(QString& problem);
    void Check(PublishPlan& plan);
    void CheckOne(PublishAction& action, const DavReply& reply);
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
    bool Finish();
    bool OwnUid(const QString& uid) const {
        return uid.startsWith(uidYear_) && uid.endsWith(uidEnding_);
    }

    const PublishRequest& request_;
    Credentials credentials_;
    QTextStream& out_;
    QTextStream& err_;
    PublishState state_;
    QString uidYear_;    // what the UIDs of this year start with
    QString uidEnding_;  // what the UIDs of this file's seed end with
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

// Whether carrying out `action` changes the collection: a create, a replace
// or a delete.
bool ChangesCollection(const PublishAction& action);
// The request that carries out such an action on the event of `action.Uid` in
// `collection`; `text` is the event's iCalendar text, sent by a create or a
// replace.
DavRequest ChangeRequest(const QUrl& collection, const PublishAction& action,
                         const QByteArray& text);

}  // namespace kelvane::cal
