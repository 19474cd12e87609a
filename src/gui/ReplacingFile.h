#pragma once

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QString>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace kelvane {

// A file written whole or not at all. The writes go to a temporary file beside
// the named one, which takes its place only at Commit, so a write that fails
// half-way leaves any old file as it was. A folder that lets its files be
// replaced but no new file be made in it (some shared folders) cannot hold the
// temporary file: an existing file there that may be written is written in
// place instead, the one case where a failed write is not undone.
//
// Defined in this header: the document store, which links Qt Core alone,
// writes its files with it too.
class ReplacingFile {
  public:
    ReplacingFile() = default;
    // A file never committed is thrown away (or, written in place, closed).
    ~ReplacingFile() { Cancel(); }
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;

    bool Open(const QString& fileName);
    QIODevice& Device();
    // Puts everything written in place of the named file; false when any
    // write failed or the file could not be replaced.
    bool Commit();
    // Drops what was written; nothing happens to the named file unless it is
    // being written in place.
    void Cancel();
    // Why the last Open or Commit failed.
    QString ErrorString() const;

    bool WritesInPlace() const { return inPlace_.isOpen(); }

  private:
    bool OpenInPlace(const QString& fileName);

    QSaveFile replacement_;
    QFile inPlace_;
};

namespace replacing_file {

// Whether this process may make files in `folder`, judged by its effective
// user, as the system judges the writes themselves.
inline bool MayMakeFilesIn(const QString& folder) {
#ifdef Q_OS_UNIX
    return ::faccessat(AT_FDCWD, QFile::encodeName(folder).constData(), W_OK, AT_EACCESS) == 0;
#else
    return QFileInfo(folder).isWritable();
#endif
}

}  // namespace replacing_file

inline bool ReplacingFile::Open(const QString& fileName) {
    Cancel();
    replacement_.setFileName(fileName);
    return replacement_.open(QIODevice::WriteOnly) || OpenInPlace(fileName);
}

// Only an existing file, in a folder where no file may be made: any other
// failure to make the temporary file (a full disk, say) must not put the old
// file at risk. Qt's own fallback for this depends on errno surviving its
// error handling, which optimised builds do not promise.
inline bool ReplacingFile::OpenInPlace(const QString& fileName) {
    const QFileInfo file(fileName);
    if (!file.isFile() || replacing_file::MayMakeFilesIn(file.absolutePath())) {
        return false;
    }
    inPlace_.setFileName(fileName);
    return inPlace_.open(QIODevice::WriteOnly | QIODevice::Truncate);
}

inline QIODevice& ReplacingFile::Device() {
    if (WritesInPlace()) {
        return inPlace_;
    }
    return replacement_;
}

inline bool ReplacingFile::Commit() {
    if (WritesInPlace()) {
        const bool written = inPlace_.flush() && inPlace_.error() == QFileDevice::NoError;
        inPlace_.close();
        return written && inPlace_.error() == QFileDevice::NoError;
    }
    return replacement_.isOpen() && replacement_.commit();
}

inline void ReplacingFile::Cancel() {
    if (WritesInPlace()) {
        inPlace_.close();
    }
    if (replacement_.isOpen()) {
        replacement_.cancelWriting();
        replacement_.commit();  // only closes: writing was cancelled
    }
}

inline QString ReplacingFile::ErrorString() const {
    return inPlace_.error() != QFileDevice::NoError ? inPlace_.errorString()
                                                    : replacement_.errorString();
}

}  // namespace kelvane
