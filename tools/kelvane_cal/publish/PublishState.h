#pragma once

#include <QByteArray>
#include <QFile>
#include <QLockFile>
#include <QString>

#include <map>
#include <memory>

namespace kelvane::cal {

// What one event was when it was last published.
struct PublishedEvent {
    QByteArray ETag;  // the server's, with its quotes
    QByteArray Hash;  // of the event's text without its stamp
};

// What a calendar file published to one collection: kept for each collection
// URL and UID seed in a file of its own, replaced whole by Save, and in a
// journal beside it to which every change is added as it is made, so that a
// run that is stopped at any point loses none of what it did. The folder and
// its files are for their owner alone.
class PublishState {
  public:
    // The state of `url` and `seed` in `folder`; empty when none was saved.
    // When none is kept under `url`, one kept under `formerUrl` (the name an
    // older version gave the collection) is read, and saved under `url`. The
    // lock is taken on `lockKey` (where the requests go), else on `url`.
    PublishState(const QString& folder, const QString& url, const QString& seed,
                 const QString& formerUrl = QString(), const QString& lockKey = QString());
    ~PublishState();
    PublishState(const PublishState&) = delete;
    PublishState& operator=(const PublishState&) = delete;

    // Takes the collection for this process alone; false with the problem
    // when another run, of any seed, holds it. Held until the object goes.
    bool Lock(QString& problem);
    // Reads the saved state and then the changes its journal adds; false with
    // the problem when a file is damaged (missing files are an empty state).
    bool Load(QString& problem);
    // From now on every Put and Erase is added to the journal at once; what
    // an older journal held is saved first (reading the state if need be).
    bool StartJournal(QString& problem);
    // Writes the whole state and empties the journal; false with the problem
    // when it cannot be written.
    bool Save(QString& problem);

    // Put also forgets a refusal of the event; Erase forgets the event and
    // its refusal.
    void Put(const QString& uid, const PublishedEvent& event);
    void Erase(const QString& uid);
    // Remembers that the server refused the event whose text has `hash` for
    // good, so that it is not sent again until it changes; an empty hash
    // forgets the refusal.
    void Refuse(const QString& uid, const QByteArray& hash);
    // Why the journal could not be written to, once it could not; empty while
    // all went well.
    QString JournalProblem() const { return journalProblem_; }

    QString FileName() const { return fileName_; }
    QString JournalName() const { return journalName_; }
    const std::map<QString, PublishedEvent>& Events() const { return events_; }
    // The hashes of the events the server refused for good, by UID.
    const std::map<QString, QByteArray>& Refused() const { return refused_; }

  private:
    bool MakeFolder(QString& problem);
    void KeepToOwner() const;
    bool ReadSaved(const QString& fileName, const QString& url, QString& problem);
    bool ReplayJournal(const QString& journalName, const QString& url, QString& problem);
    bool KeptUnderFormerUrl() const;
    void RemoveFormerFiles();
    void AddToJournal(QByteArray line);
    QByteArray Header() const;

    QString folder_;
    QString fileName_;
    QString journalName_;
    QString lockName_;
    QString url_;
    QString seed_;
    QString formerUrl_;
    QString formerFileName_;
    QString formerJournalName_;
    bool readFormer_ = false;  // what was loaded is kept under the former URL
    bool folderMade_ = false;
    std::map<QString, PublishedEvent> events_;  // by UID
    std::map<QString, QByteArray> refused_;     // by UID
    bool loaded_ = false;
    std::unique_ptr<QLockFile> lock_;
    std::unique_ptr<QFile> journal_;
    QString journalProblem_;
};

}  // namespace kelvane::cal
