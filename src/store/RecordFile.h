#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <map>

#include "store/FileNumbers.h"

namespace kelvane {

// What closing a store does with its temporary file.
enum class TemporaryFile { Delete, Keep };

// A random-access file of fixed-length records numbered from 1. A record whose
// write does not reach the disk (a full disk, a file that never opened) is kept
// in memory instead, and reads find it there, until a later write of it gets
// through: what a store was given is never lost while the program runs.
class RecordFile {
  public:
    // Whether each write goes to the disk before Write returns. A store of the
    // document needs to know at once that its write failed; a scratch file
    // read back by its own writer can let the writes collect.
    enum class Writes { Flushed, Buffered };

    explicit RecordFile(int recordLength, Writes writes = Writes::Flushed)
        : recordLength_(recordLength), writes_(writes) {}

    // Opens for reading and writing, creating the file when it is missing and
    // keeping what an existing one holds. Records kept in memory are dropped.
    bool Open(const QString& path);
    void Close();
    // Closes the file and deletes it, with the records kept in memory.
    void CloseAndRemove();
    bool IsOpen() const { return file_.isOpen(); }

    // Writes whole records from `firstRecord` on; false when not all bytes
    // reached the disk (or, for buffered writes, the file's buffer): the
    // records are then kept in memory.
    bool Write(qint64 firstRecord, const QByteArray& records);
    // Puts buffered writes on the disk; false when they did not all get there.
    bool Flush() { return !IsOpen() || file_.flush(); }
    // Reads `count` records from `firstRecord` on, from memory where they are
    // kept there; false when neither holds them all.
    bool Read(qint64 firstRecord, int count, QByteArray& records);
    // Reads the whole file into memory for a run of reads: they find their
    // records there instead of asking the disk each time. Any write, open or
    // close, and StopReadingAhead, drops the copy; until the file is closed,
    // its room is kept for the next run, so that no fresh memory is taken.
    void ReadAhead();
    void StopReadingAhead() { DropReadAhead(); }
    // Records kept in memory because the disk did not take them.
    std::size_t KeptInMemory() const { return kept_.size(); }

    int RecordLength() const { return recordLength_; }

  private:
    qint64 OffsetOf(qint64 record) const { return (record - 1) * recordLength_; }
    // Moves to the start of a record; staying put keeps the file's buffers.
    bool MoveTo(qint64 record);
    bool WriteToDisk(qint64 firstRecord, const QByteArray& records);
    void Keep(qint64 firstRecord, const QByteArray& records);
    void Forget(qint64 firstRecord, qint64 count);
    void DropUnwritten();
    QIODevice::OpenMode OpenMode() const;
    bool ReadKept(qint64 firstRecord, int count, QByteArray& records) const;
    void ReadFromDisk(qint64 firstRecord, qint64 length, QByteArray& records);
    void DropReadAhead() { ahead_.resize(0); }

    QFile file_;
    int recordLength_;
    Writes writes_;
    std::map<qint64, QByteArray> kept_;
    // The file's bytes as ReadAhead found them; empty when not reading ahead.
    QByteArray ahead_;
};

// Opens `file` at `path` on the lowest free number of `numbers`. Returns that
// number, or 0 when no number is free or the file does not open.
qint16 OpenNumbered(RecordFile& file, const QString& path, FileNumbers& numbers);
// Closes `file`, when it is open, and frees its number.
void CloseNumbered(RecordFile& file, qint16 number, FileNumbers& numbers);

}  // namespace kelvane
