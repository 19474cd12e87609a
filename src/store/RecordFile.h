#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include "store/FileNumbers.h"

namespace kelvane {

// A random-access file of fixed-length records numbered from 1. While it is not
// open, reads find nothing and writes do nothing.
class RecordFile {
  public:
    // Whether each write goes to the disk before Write returns. A store of the
    // document needs to know at once that its write failed; a scratch file
    // read back by its own writer can let the writes collect.
    enum class Writes { Flushed, Buffered };

    explicit RecordFile(int recordLength, Writes writes = Writes::Flushed)
        : recordLength_(recordLength), writes_(writes) {}

    // Opens for reading and writing, creating the file when it is missing and
    // keeping what an existing one holds.
    bool Open(const QString& path);
    void Close();
    // Closes the file and deletes it.
    void CloseAndRemove();
    bool IsOpen() const { return file_.isOpen(); }

    // Writes whole records from `firstRecord` on; false when not all bytes
    // reached the disk (or, for buffered writes, the file's buffer).
    bool Write(qint64 firstRecord, const QByteArray& records);
    // Puts buffered writes on the disk; false when they did not all get there.
    bool Flush() { return !IsOpen() || file_.flush(); }
    // Reads `count` records from `firstRecord` on; false when the file holds fewer.
    bool Read(qint64 firstRecord, int count, QByteArray& records);

    int RecordLength() const { return recordLength_; }

  private:
    qint64 OffsetOf(qint64 record) const { return (record - 1) * recordLength_; }
    // Moves to the start of a record; staying put keeps the file's buffers.
    bool MoveTo(qint64 record);

    QFile file_;
    int recordLength_;
    Writes writes_;
};

// Opens `file` at `path` on the lowest free number of `numbers`. Returns that
// number, or 0 when no number is free or the file does not open.
qint16 OpenNumbered(RecordFile& file, const QString& path, FileNumbers& numbers);
// Closes `file`, when it is open, and frees its number.
void CloseNumbered(RecordFile& file, qint16 number, FileNumbers& numbers);

}  // namespace kelvane
