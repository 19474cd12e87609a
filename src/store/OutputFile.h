#pragma once

#include <QString>

#include "calfile/ReplacingFile.h"
#include "store/FileNumbers.h"

namespace kelvane {

// A text file being written under a file number. Nothing reaches the named
// file until Close succeeds, and a write that fails leaves any old file whole
// (see ReplacingFile).
class OutputFile {
  public:
    // `keepFolder`: where a file that can only be rewritten in place has its old
    // and new content kept meanwhile; without one such a file cannot be written.
    explicit OutputFile(FileNumbers& numbers, QString keepFolder = QString())
        : numbers_(numbers), file_(std::move(keepFolder)) {}
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    // An output file that was never closed is thrown away.
    ~OutputFile();

    // Takes a free file number and opens the file; the number, or 0 when no
    // number is free or the file cannot be created.
    qint16 OpenForOutput(const QString& fileName);
    QIODevice& Device() { return file_.Device(); }
    // Puts everything written in place of the named file; false when any write
    // failed or the file could not be replaced. Frees the number either way.
    bool Close();
    // Why OpenForOutput or Close failed, and what became of the old file.
    QString ErrorString() const;

  private:
    void Release();

    FileNumbers& numbers_;
    ReplacingFile file_;
    qint16 number_ = 0;
    QString error_;
};

}  // namespace kelvane
