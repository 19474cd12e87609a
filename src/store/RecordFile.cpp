#include "store/RecordFile.h"

namespace kelvane {

bool RecordFile::Open(const QString& path) {
    Close();
    file_.setFileName(path);
    return file_.open(QIODevice::ReadWrite);
}

void RecordFile::Close() {
    if (file_.isOpen()) {
        file_.close();
    }
}

void RecordFile::CloseAndRemove() {
    Close();
    if (!file_.fileName().isEmpty()) {
        file_.remove();
    }
}

bool RecordFile::MoveTo(qint64 record) {
    const qint64 offset = OffsetOf(record);
    return file_.pos() == offset || file_.seek(offset);
}

bool RecordFile::Write(qint64 firstRecord, const QByteArray& records) {
    if (!IsOpen() || firstRecord < 1 || !MoveTo(firstRecord)) {
        return false;
    }
    if (file_.write(records) != records.size()) {
        return false;
    }
    // Flushed at once, a full disk shows up here and not at some later write.
    return writes_ == Writes::Buffered || file_.flush();
}

bool RecordFile::Read(qint64 firstRecord, int count, QByteArray& records) {
    records.clear();
    if (!IsOpen() || firstRecord < 1 || count < 1 || !MoveTo(firstRecord)) {
        return false;
    }
    const qint64 wanted = static_cast<qint64>(count) * recordLength_;
    records = file_.read(wanted);
    return records.size() == wanted;
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
