#include "store/RecordFile.h"

namespace kelvane {

namespace {

// Reads from the file's position to its end into `bytes`, in the room they
// already have where it is enough. Reading stops early on an error.
void ReadToEnd(QFile& file, QByteArray& bytes) {
    const qint64 size = file.size() - file.pos();
    if (size <= 0) {
        bytes.resize(0);
        return;
    }
    bytes.resize(size);
    const qint64 read = file.read(bytes.data(), size);
    bytes.resize(read > 0 ? read : 0);
}

}  // namespace

bool RecordFile::Open(const QString& path) {
    Close();
    ahead_.clear();
    kept_.clear();
    file_.setFileName(path);
    return file_.open(OpenMode());
}

// Flushed writes go straight to the system: a write the disk refuses leaves
// nothing behind in a buffer of the file's own.
QIODevice::OpenMode RecordFile::OpenMode() const {
    return writes_ == Writes::Flushed ? QIODevice::ReadWrite | QIODevice::Unbuffered
                                      : QIODevice::ReadWrite;
}

void RecordFile::Close() {
    ahead_.clear();
    if (file_.isOpen()) {
        file_.close();
    }
}

void RecordFile::CloseAndRemove() {
    Close();
    kept_.clear();
    if (!file_.fileName().isEmpty()) {
        file_.remove();
    }
}

bool RecordFile::MoveTo(qint64 record) {
    const qint64 offset = OffsetOf(record);
    return file_.pos() == offset || file_.seek(offset);
}

bool RecordFile::Write(qint64 firstRecord, const QByteArray& records) {
    if (firstRecord < 1 || records.size() % recordLength_ != 0) {
        return false;
    }
    DropReadAhead();
    if (WriteToDisk(firstRecord, records)) {
        Forget(firstRecord, records.size() / recordLength_);
        return true;
    }
    Keep(firstRecord, records);
    DropUnwritten();
    return false;
}

// A buffered write the disk refused stays in the file's buffer, where a later
// write to another record would take it along to the wrong place, and a read
// would fail on it. The file is opened anew without it (never made anew, should
// it have gone meanwhile): the records are kept in memory.
void RecordFile::DropUnwritten() {
    if (IsOpen() && writes_ == Writes::Buffered) {
        file_.close();
        file_.open(OpenMode() | QIODevice::ExistingOnly);
    }
}

bool RecordFile::WriteToDisk(qint64 firstRecord, const QByteArray& records) {
    if (!IsOpen() || !MoveTo(firstRecord) || file_.write(records) != records.size()) {
        return false;
    }
    // Flushed at once, a full disk shows up here and not at some later write.
    return writes_ == Writes::Buffered || file_.flush();
}

void RecordFile::Keep(qint64 firstRecord, const QByteArray& records) {
    for (qsizetype offset = 0; offset < records.size(); offset += recordLength_) {
        kept_[firstRecord + offset / recordLength_] = records.mid(offset, recordLength_);
    }
}

void RecordFile::Forget(qint64 firstRecord, qint64 count) {
    if (!kept_.empty()) {
        kept_.erase(kept_.lower_bound(firstRecord), kept_.lower_bound(firstRecord + count));
    }
}

bool RecordFile::Read(qint64 firstRecord, int count, QByteArray& records) {
    records.clear();
    if (firstRecord < 1 || count < 1) {
        return false;
    }
    const qint64 wanted = static_cast<qint64>(count) * recordLength_;
    ReadFromDisk(firstRecord, wanted, records);
    if (kept_.empty()) {
        return records.size() == wanted;
    }
    return ReadKept(firstRecord, count, records);
}

void RecordFile::ReadAhead() {
    DropReadAhead();
    if (IsOpen() && MoveTo(1)) {
        ReadToEnd(file_, ahead_);
    }
}

// Up to `length` bytes from the start of a record on, from the copy read
// ahead when it holds them all; `records` is left alone when the file is not
// open or cannot be read there.
void RecordFile::ReadFromDisk(qint64 firstRecord, qint64 length, QByteArray& records) {
    const qint64 offset = OffsetOf(firstRecord);
    if (offset + length <= ahead_.size()) {
        records = ahead_.mid(offset, length);
    } else if (IsOpen() && MoveTo(firstRecord)) {
        records = file_.read(length);
    }
}

// Puts the records kept in memory over what the disk gave; every record must
// come from one or the other.
bool RecordFile::ReadKept(qint64 firstRecord, int count, QByteArray& records) const {
    const qsizetype fromDisk = records.size() / recordLength_;
    records.resize(static_cast<qsizetype>(count) * recordLength_);
    for (int i = 0; i < count; ++i) {
        const auto kept = kept_.find(firstRecord + i);
        if (kept != kept_.end()) {
            records.replace(static_cast<qsizetype>(i) * recordLength_, recordLength_, kept->second);
        } else if (i >= fromDisk) {
            records.clear();
            return false;
        }
    }
    return true;
}

qint16 OpenNumbered(RecordFile& file, const QString& path, FileNumbers& numbers) {
    const qint16 number = numbers.Take();
    if (number != 0 && !file.Open(path)) {
        numbers.Release(number);
        return 0;
    }
    return number;
}

void CloseNumbered(RecordFile& file, qint16 number, FileNumbers& numbers) {
    if (file.IsOpen()) {
        file.Close();
        numbers.Release(number);
    }
}

}  // namespace kelvane
