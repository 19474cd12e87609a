#pragma once

#include <QString>

#include "gui/ReplacingFile.h"

#include "store/FileNumbers.h"

namespace kelvane {

// A text file being written under a file number. Nothing reaches the named
// file until Close succeeds: a write that fails half-way leaves any old file
// whole. The one exception is an existing file that can be written in a
// folder that cannot: it is written in place, since that is the only way to
// replace it (see ReplacingFile).
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
    QIODevice& Device() { return file_.Device(); }
    // Puts everything written in place of the named file; false when any write
    // failed or the file could not be replaced. Frees the number either way.
    bool Close();

  private:
    void Release();

    FileNumbers& numbers_;
    ReplacingFile file_;
    qint16 number_ = 0;
};

}  // namespace kelvane
