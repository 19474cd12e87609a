#include "kelvane_cal/publish/PublishState.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include "calfile/ReplacingFile.h"
#include "kelvane_cal/publish/JournalLine.h"

#include <unistd.h>

namespace kelvane::cal {

namespace {

PublishedEvent EventOf(const QJsonObject& fields) {
    return {fields.value(QStringLiteral("etag")).toString().toUtf8(),
            fields.value(QStringLiteral("hash")).toString().toLatin1()};
}

QString Key(const QString& text) {
    return QString::fromLatin1(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex().left(24));
}

// Whether all of `bytes` went to the unbuffered `file`. A write that the
// system cuts short, as when the disk fills in the middle of a line, is a
// failure, as it was when a flush of the buffer wrote only part of it.
bool WriteWhole(QFile& file, const QByteArray& bytes) {
    return file.write(bytes) == bytes.size();
}

QByteArray Compact(const QJsonObject& object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

bool BelongsTo(const QJsonObject& root, const QString& url, const QString& seed) {
    return root.value(QStringLiteral("url")).toString() == url &&
           root.value(QStringLiteral("seed")).toString() == seed;
}

void SetRefusal(std::map<QString, QByteArray>& refused, const QString& uid,
                const QByteArray& hash) {
    if (hash.isEmpty()) {
        refused.erase(uid);
    } else {
        refused[uid] = hash;
    }
}

QString StateBaseName(const QString& url, const QString& seed) {
    return QStringLiteral("caldav-") + Key(url + QLatin1Char('\n') + seed);
}

constexpr QFileDevice::Permissions kOwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

constexpr QFileDevice::Permissions kOthers = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                             QFileDevice::ExeGroup | QFileDevice::ReadOther |
                                             QFileDevice::WriteOther | QFileDevice::ExeOther;

bool IsOurs(const QFileInfo& info) {
    return info.ownerId() == ::geteuid();
}

QString Damaged(const QString& fileName) {
    return QStringLiteral(
               "%1: is damaged or belongs to another collection; move it away "
               "and publish again")
        .arg(fileName);
}

}  // namespace

PublishState::PublishState(const QString& folder, const QString& url, const QString& seed,
                           const QString& formerUrl, const QString& lockKey)
    : folder_(folder), url_(url), seed_(seed), formerUrl_(formerUrl) {
    const QString base = StateBaseName(url, seed);
    fileName_ = QDir(folder).filePath(base + QStringLiteral(".json"));
    journalName_ = QDir(folder).filePath(base + QStringLiteral(".journal"));
    const QString formerBase = StateBaseName(formerUrl, seed);
    formerFileName_ = QDir(folder).filePath(formerBase + QStringLiteral(".json"));
    formerJournalName_ = QDir(folder).filePath(formerBase + QStringLiteral(".journal"));
    // One run at a time writes to a collection, whatever its seed.
    lockName_ =
        QDir(folder).filePath(QStringLiteral("caldav-") + Key(lockKey.isEmpty() ? url : lockKey) +
                              QStringLiteral(".lock"));
}

PublishState::~PublishState() = default;

bool PublishState::MakeFolder(QString& problem) {
    if (folderMade_) {
        return true;
    }
    if (!QDir().mkpath(folder_)) {
        problem = QStringLiteral("%1: the folder cannot be made").arg(folder_);
        return false;
    }
    KeepToOwner();
    folderMade_ = true;
    return true;
}

// The states name the collection and every date published: the folder and
// its files are made (or, left by older versions, turned) private.
void PublishState::KeepToOwner() const {
    if (IsOurs(QFileInfo(folder_))) {
        QFile::setPermissions(folder_, kOwnerOnly | QFileDevice::ExeOwner);
    }
    const QFileInfoList files =
        QDir(folder_).entryInfoList({QStringLiteral("caldav-*")}, QDir::Files | QDir::Hidden);
    for (const QFileInfo& file : files) {
        if (IsOurs(file) && (file.permissions() & kOthers)) {
            QFile::setPermissions(file.filePath(), kOwnerOnly);
        }
    }
}

bool PublishState::Lock(QString& problem) {
    if (!MakeFolder(problem)) {
        return false;
    }
    lock_ = std::make_unique<QLockFile>(lockName_);
    // A publish may run for a long time: only a lock whose process has ended
    // is stale.
    lock_->setStaleLockTime(0);
    if (lock_->tryLock(0)) {
        QFile::setPermissions(lockName_, kOwnerOnly);
        return true;
    }
    qint64 pid = 0;
    QString host;
    QString application;
    lock_->getLockInfo(&pid, &host, &application);
    problem = lock_->error() == QLockFile::LockFailedError
                  ? QStringLiteral(
                        "another publish to this collection is running (process %1); try "
                        "again when it has ended")
                        .arg(pid)
                  : QStringLiteral("%1: cannot be made").arg(lock_->fileName());
    lock_.reset();
    return false;
}

bool PublishState::KeptUnderFormerUrl() const {
    return !formerUrl_.isEmpty() && formerUrl_ != url_ && !QFile::exists(fileName_) &&
           !QFile::exists(journalName_) &&
           (QFile::exists(formerFileName_) || QFile::exists(formerJournalName_));
}

bool PublishState::Load(QString& problem) {
    events_.clear();
    readFormer_ = KeptUnderFormerUrl();
    loaded_ = readFormer_ ? ReadSaved(formerFileName_, formerUrl_, problem) &&
                                ReplayJournal(formerJournalName_, formerUrl_, problem)
                          : ReadSaved(fileName_, url_, problem) &&
                                ReplayJournal(journalName_, url_, problem);
    return loaded_;
}

bool PublishState::ReadSaved(const QString& fileName, const QString& url, QString& problem) {
    QFile file(fileName);
    if (!file.exists()) {
        return true;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("%1: cannot be read: %2").arg(fileName, file.errorString());
        return false;
    }
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    const QJsonObject root = document.object();
    if (!document.isObject() || !BelongsTo(root, url, seed_)) {
        problem = Damaged(fileName);
        return false;
    }
    const QJsonObject events = root.value(QStringLiteral("events")).toObject();
    for (auto event = events.begin(); event != events.end(); ++event) {
        events_[event.key()] = EventOf(event.value().toObject());
    }
    const QJsonObject refused = root.value(QStringLiteral("refused")).toObject();
    for (auto event = refused.begin(); event != refused.end(); ++event) {
        refused_[event.key()] = event.value().toString().toLatin1();
    }
    return true;
}

// The journal's first line names its collection and seed; each further line
// puts or erases one event. A last line without its line end was cut short
// when the run stopped, and is passed over; so is everything from a line that
// cannot be read on, which the next run's checks of the server put right.
bool PublishState::ReplayJournal(const QString& journalName, const QString& url, QString& problem) {
    QFile file(journalName);
    if (!file.exists()) {
        return true;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        problem = QStringLiteral("%1: cannot be read: %2").arg(journalName, file.errorString());
        return false;
    }
    const QList<QByteArray> lines = file.readAll().split('\n');
    if (lines.size() < 2) {
        return true;  // stopped while it wrote its first line: nothing recorded
    }
    if (!BelongsTo(QJsonDocument::fromJson(lines.first()).object(), url, seed_)) {
        problem = Damaged(journalName);
        return false;
    }
    for (qsizetype index = 1; index + 1 < lines.size(); ++index) {
        const QJsonObject change = QJsonDocument::fromJson(lines[index]).object();
        const QString uid = change.value(QStringLiteral("uid")).toString();
        if (uid.isEmpty()) {
            break;
        }
        if (change.value(QStringLiteral("gone")).toBool()) {
            events_.erase(uid);
            refused_.erase(uid);
        } else if (change.contains(QStringLiteral("refused"))) {
            SetRefusal(refused_, uid,
                       change.value(QStringLiteral("refused")).toString().toLatin1());
        } else {
            events_[uid] = EventOf(change);
            refused_.erase(uid);
        }
    }
    return true;
}

QByteArray PublishState::Header() const {
    return Compact({{QStringLiteral("url"), url_}, {QStringLiteral("seed"), seed_}});
}

bool PublishState::StartJournal(QString& problem) {
    // Compacting an old journal into a state that was never read would lose it.
    if (!loaded_ && !Load(problem)) {
        return false;
    }
    // What an earlier run that stopped left in the journal goes into the
    // saved state first, so that a line it cut short ends the old journal.
    // A state read under the former URL is saved under the new one.
    if ((QFile::exists(journalName_) || readFormer_) && !Save(problem)) {
        return false;
    }
    if (!MakeFolder(problem)) {
        return false;
    }
    journal_ = std::make_unique<QFile>(journalName_);
    if (!journal_->open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered,
                        kOwnerOnly) ||
        !WriteWhole(*journal_, Header() + '\n')) {
        problem =
            QStringLiteral("%1: cannot be written: %2").arg(journalName_, journal_->errorString());
        journal_.reset();
        return false;
    }
    return true;
}

void PublishState::AddToJournal(QByteArray line) {
    if (!journal_ || !journalProblem_.isEmpty()) {
        return;
    }
    // Each change is handed to the system at once, in one write of the
    // unbuffered file: a run that is killed keeps every change it was told of.
    line += '\n';
    if (!WriteWhole(*journal_, line)) {
        journalProblem_ =
            QStringLiteral("%1: cannot be written: %2").arg(journalName_, journal_->errorString());
    }
}

void PublishState::Put(const QString& uid, const PublishedEvent& event) {
    events_[uid] = event;
    refused_.erase(uid);
    AddToJournal(PutLine(uid, event));
}

void PublishState::Erase(const QString& uid) {
    events_.erase(uid);
    refused_.erase(uid);
    AddToJournal(Compact({{QStringLiteral("uid"), uid}, {QStringLiteral("gone"), true}}));
}

void PublishState::Refuse(const QString& uid, const QByteArray& hash) {
    SetRefusal(refused_, uid, hash);
    AddToJournal(Compact(
        {{QStringLiteral("uid"), uid}, {QStringLiteral("refused"), QString::fromLatin1(hash)}}));
}

bool PublishState::Save(QString& problem) {
    if (!MakeFolder(problem)) {
        return false;
    }
    QString error;
    if (!ReplaceFileContent(fileName_, StateText(url_, seed_, events_, refused_), error,
                            QDir::tempPath())) {
        problem = QStringLiteral("%1: cannot be written: %2").arg(fileName_, error);
        return false;
    }
    QFile::setPermissions(fileName_, kOwnerOnly);
    // Everything the journal says is in the saved state now. Should the
    // removal fail, reading the journal again changes nothing.
    journal_.reset();
    QFile::remove(journalName_);
    RemoveFormerFiles();
    return true;
}

// Once the state is saved under the new URL, what was kept under the former
// one is in it.
void PublishState::RemoveFormerFiles() {
    if (readFormer_) {
        QFile::remove(formerJournalName_);
        QFile::remove(formerFileName_);
        readFormer_ = false;
    }
}

}  // namespace kelvane::cal
