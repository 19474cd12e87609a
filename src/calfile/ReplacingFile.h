#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QSaveFile>
#include <QString>

#include <utility>

namespace kelvane {

// New content put in place of a file, whole or not at all. What is written is
// collected in memory; Commit hands it to the disk, checks that every byte got
// there (Qt's QSaveFile alone lets a full disk slip through at its last
// flush), reads the file back, and only then counts it done.
//
// Normally the content goes to a temporary file beside the named one, which
// takes its place at once. A folder that lets its files be rewritten but no new
// file be made in it (some shared folders) leaves one way: rewriting the file
// in place. That is done only with a keep folder: the old and the new content
// are written there first, the file is rewritten, read back, and on any
// failure its old content is put back.
class ReplacingFile {
  public:
    explicit ReplacingFile(QString keepFolder = QString()) : keepFolder_(std::move(keepFolder)) {}
    ~ReplacingFile() { Cancel(); }
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;

    // False, with the reason in ErrorString, when the file cannot be replaced.
    bool Open(const QString& fileName);
    // Where the new content is written.
    QIODevice& Device() { return buffer_; }
    // True once the file holds exactly what was written. Otherwise the file is
    // as it was before, or ErrorString says where its old content is kept, or
    // (a disk that gives back other bytes than it took) that it was replaced.
    bool Commit();
    // Drops what was written; the named file is not touched.
    void Cancel();
    // Why the last Open or Commit failed, and what became of the old file.
    QString ErrorString() const { return error_; }

  private:
    enum class Way { None, Beside, InPlace };

    bool MayRewriteInPlace(const QString& fileName);
    bool CommitBeside();
    bool CommitInPlace();
    void Finish();

    QString keepFolder_;
    QString fileName_;
    QByteArray content_;
    QBuffer buffer_;
    QSaveFile beside_;
    Way way_ = Way::None;
    QString error_;
};

// Writes `content` as the whole of `fileName` through a ReplacingFile; false
// with the reason in `error`.
bool ReplaceFileContent(const QString& fileName, const QByteArray& content, QString& error,
                        const QString& keepFolder = QString());

}  // namespace kelvane
