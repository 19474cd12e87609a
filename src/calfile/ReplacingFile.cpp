#include "calfile/ReplacingFile.h"

#include "calfile/ReadBack.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kelvane {

namespace {

const QString kReadBackDiffers = QStringLiteral("the file read back differs from what was written");

// Whether this process may make files in `folder`, judged by its effective
// user, as the system judges the writes themselves.
bool MayMakeFilesIn(const QString& folder) {
#ifdef Q_OS_UNIX
    return ::faccessat(AT_FDCWD, QFile::encodeName(folder).constData(), W_OK, AT_EACCESS) == 0;
#else
    return QFileInfo(folder).isWritable();
#endif
}

// Asks the system to put what the file holds on the disk, where some file
// systems report a full disk only now. Those that cannot sync at all have
// reported everything already.
bool SyncToDisk(QFileDevice& file, QString& error) {
#ifdef Q_OS_UNIX
    const int handle = file.handle();
    if (handle < 0 || ::fsync(handle) == 0 || errno == EINVAL || errno == ENOTSUP) {
        return true;
    }
    error = QString::fromLocal8Bit(std::strerror(errno));
    return false;
#else
    Q_UNUSED(file);
    Q_UNUSED(error);
    return true;
#endif
}

// Hands every byte to the file and the file to the disk. A write the disk
// takes only in part is tried again for the rest, which then says why not.
bool WriteWhole(QFileDevice& file, const QByteArray& bytes, QString& error) {
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0) {
            error = file.errorString();
            return false;
        }
        done += written;
    }
    // A flush the disk took in part knows no reason; flushing the rest finds it.
    if (!file.flush()) {
        file.flush();
        error = file.errorString();
        return false;
    }
    return SyncToDisk(file, error);
}

// Removes the temporary file; the named one is not touched.
void DropTemporary(QSaveFile& file) {
    file.cancelWriting();
    file.commit();  // only removes the temporary file: writing was cancelled
}

// Writes `bytes` over the start of the existing file and cuts it to their
// length. The file is never emptied first: what is not written yet is still there.
bool RewriteInPlace(const QString& fileName, const QByteArray& bytes, QString& error) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadWrite)) {
        error = file.errorString();
        return false;
    }
    if (!WriteWhole(file, bytes, error)) {
        return false;
    }
    if (!file.resize(bytes.size())) {
        error = file.errorString();
        return false;
    }
    file.close();
    if (file.error() != QFileDevice::NoError) {
        error = file.errorString();
        return false;
    }
    return true;
}

// The kept copies may lie in a folder others can read (the temporary one):
// only their owner may read them. QSaveFile keeps the permissions of the file
// it replaces.
bool KeepPrivately(const QString& fileName, const QByteArray& bytes, QString& error) {
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) ||
        !file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner)) {
        error = file.errorString();
        return false;
    }
    file.close();
    return ReplaceFileContent(fileName, bytes, error);
}

// A name in `folder` that no file has yet: "plans.cal.old", "plans.cal-2.old"...
QString FreeName(const QString& folder, const QString& bareName, const QString& suffix) {
    const QDir directory(folder);
    QString name = directory.filePath(bareName + suffix);
    for (int copy = 2; QFileInfo::exists(name); ++copy) {
        name = directory.filePath(QStringLiteral("%1-%2%3").arg(bareName).arg(copy).arg(suffix));
    }
    return name;
}

}  // namespace

bool ReplacingFile::Open(const QString& fileName) {
    Cancel();
    fileName_ = fileName;
    error_.clear();
    beside_.setFileName(fileName);
    beside_.setDirectWriteFallback(false);
    if (beside_.open(QIODevice::WriteOnly)) {
        way_ = Way::Beside;
    } else if (MayRewriteInPlace(fileName)) {
        way_ = Way::InPlace;
    } else {
        if (error_.isEmpty()) {
            error_ = beside_.errorString();
        }
        return false;
    }
    buffer_.setBuffer(&content_);
    buffer_.open(QIODevice::WriteOnly);
    return true;
}

// Only an existing file, in a folder where no file may be made: any other
// failure to make the temporary file (a full disk, say) must not put the old
// file at risk.
bool ReplacingFile::MayRewriteInPlace(const QString& fileName) {
    const QFileInfo file(fileName);
    if (!file.isFile() || MayMakeFilesIn(file.absolutePath())) {
        return false;
    }
    if (keepFolder_.isEmpty()) {
        error_ = QStringLiteral("no new file may be made in the folder");
        return false;
    }
    QFile probe(fileName);
    return probe.open(QIODevice::ReadWrite);
}

bool ReplacingFile::Commit() {
    if (way_ == Way::None) {
        error_ = QStringLiteral("the file is not open");
        return false;
    }
    buffer_.close();
    const bool done = way_ == Way::Beside ? CommitBeside() : CommitInPlace();
    Finish();
    return done;
}

bool ReplacingFile::CommitBeside() {
    if (!WriteWhole(beside_, content_, error_)) {
        DropTemporary(beside_);
        return false;
    }
    if (!beside_.commit()) {
        error_ = beside_.errorString();
        return false;
    }
    // The disk took every byte, yet gives back others: the old file is gone by now.
    if (!FileHolds(fileName_, content_)) {
        error_ = kReadBackDiffers + QStringLiteral("\rThe old file was replaced all the same.");
        return false;
    }
    return true;
}

// The old and the new content are kept in the keep folder until the file has
// been rewritten and read back, so that neither is lost however it ends.
bool ReplacingFile::CommitInPlace() {
    QByteArray old;
    if (!ReadWholeFile(fileName_, old)) {
        error_ = QStringLiteral("the file cannot be read");
        return false;
    }
    QDir().mkpath(keepFolder_);  // when it cannot be made, the writes below say so
    const QString bareName = QFileInfo(fileName_).fileName();
    const QString keptNew = FreeName(keepFolder_, bareName, QStringLiteral(".new"));
    const QString keptOld = FreeName(keepFolder_, bareName, QStringLiteral(".old"));
    QString why;
    if (!KeepPrivately(keptNew, content_, why) || !KeepPrivately(keptOld, old, why)) {
        QFile::remove(keptNew);
        QFile::remove(keptOld);
        error_ = QStringLiteral("its content could not be kept in %1 first: %2")
                     .arg(QDir::toNativeSeparators(keepFolder_), why);
        return false;
    }
    if (RewriteInPlace(fileName_, content_, error_) && FileHolds(fileName_, content_)) {
        QFile::remove(keptNew);
        QFile::remove(keptOld);
        return true;
    }
    if (error_.isEmpty()) {
        error_ = kReadBackDiffers;
    }
    QFile::remove(keptNew);
    if (RewriteInPlace(fileName_, old, why) && FileHolds(fileName_, old)) {
        QFile::remove(keptOld);
        error_ += QStringLiteral("\rThe file was put back as it was.");
    } else {
        error_ +=
            QStringLiteral("\rIts old content is kept in ") + QDir::toNativeSeparators(keptOld);
    }
    return false;
}

void ReplacingFile::Cancel() {
    if (beside_.isOpen()) {
        DropTemporary(beside_);
    }
    Finish();
}

void ReplacingFile::Finish() {
    buffer_.close();
    content_.clear();
    way_ = Way::None;
}

bool ReplaceFileContent(const QString& fileName, const QByteArray& content, QString& error,
                        const QString& keepFolder) {
    ReplacingFile file(keepFolder);
    if (!file.Open(fileName)) {
        error = file.ErrorString();
        return false;
    }
    file.Device().write(content);
    if (!file.Commit()) {
        error = file.ErrorString();
        return false;
    }
    return true;
}

}  // namespace kelvane
