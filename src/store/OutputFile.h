#pragma once

#include <QSaveFile>
#include <QString>

#include "store/FileNumbers.h"

namespace kelvane {

// A text file being written under a file number. Nothing reaches the named
// file until Close succeeds: a write that fails half-way leaves any old file
// whole.
class OutputFile {
  public:
    explicit OutputFile(FileNumbers& numbers) : numbers_(numbers) {}
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    // An output file that was never closed is thrown away.
    ~OutputFile();

    // Takes a free file number and opens the file; the number, or 0 when no
    // number is free or the file cannot be created.
    qint16 OpenForOutput(const QString& fileName);
    QIODevice& Device() { return file_; }
    // Puts everything written in place of the named file; false when any write
    // failed or the file could not be replaced. Frees the number either way.
    bool Close();

  private:
    void Release();

    FileNumbers& numbers_;
    QSaveFile file_;
    qint16 number_ = 0;
};

}  // namespace kelvane
