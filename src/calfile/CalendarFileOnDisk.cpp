#include "calfile/CalendarFileOnDisk.h"

#include <QFile>

#include "calfile/LineReader.h"

namespace kelvane {

namespace {

// Far more than a year of the longest dates takes; anything larger is no
// calendar file and is not read into memory.
constexpr qint64 kLargestFile = 256 * 1024 * 1024;
// Enough of a file's start to hold its first line.
constexpr qint64 kHeaderBytes = 4096;

bool StartsWithHeader(QFile& file) {
    LineReader in(file.peek(kHeaderBytes));
    QString header;
    return in.ReadLine(header) && header == CalendarFileHeader;
}

CalendarFileReport Unrecognized(int line, const QString& reason) {
    return {CalendarFileStatus::Unrecognized, line, reason};
}

}  // namespace

CalendarFileReport ReadCalendarFileNamed(const QString& fileName, CalendarFileContent& content) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return Unrecognized(0, file.errorString());
    }
    if (file.size() > kLargestFile) {
        return Unrecognized(0, QStringLiteral("larger than any calendar file"));
    }
    if (!StartsWithHeader(file)) {
        return Unrecognized(1, QStringLiteral("not a calendar file"));
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return Unrecognized(0, file.errorString());
    }
    return ReadCalendarFile(bytes, content);
}

}  // namespace kelvane
