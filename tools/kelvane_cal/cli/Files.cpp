#include "kelvane_cal/cli/Files.h"

#include <QDir>
#include <QFileInfo>

#include "calfile/CalendarFileOnDisk.h"
#include "calfile/ReplacingFile.h"

namespace kelvane::cal {

QString DescribeReport(const QString& fileName, const CalendarFileReport& report) {
    if (report.DamagedLine > 0) {
        return QStringLiteral("%1: line %2: %3")
            .arg(fileName, QString::number(report.DamagedLine), report.Reason);
    }
    return QStringLiteral("%1: cannot be read: %2").arg(fileName, report.Reason);
}

QString FolderProblem(const QString& fileName, const QString& what) {
    return QStringLiteral("%1: is a folder, not %2").arg(fileName, what);
}

bool ReadCalendar(const QString& fileName, CalendarFileContent& content, QString& problem) {
    const QFileInfo info(fileName);
    if (!info.exists()) {
        problem = QStringLiteral("%1: no such file").arg(fileName);
        return false;
    }
    if (info.isDir()) {
        problem = FolderProblem(fileName, QStringLiteral("a calendar file"));
        return false;
    }
    const CalendarFileReport report = ReadCalendarFileNamed(fileName, content);
    if (report.Status != CalendarFileStatus::Ok) {
        problem = DescribeReport(fileName, report);
        return false;
    }
    return true;
}

bool IsStandardOutput(const QString& fileName) {
    return fileName.isEmpty() || fileName == QStringLiteral("-");
}

bool OutputAllowed(const QString& fileName, bool force, QString& problem) {
    if (IsStandardOutput(fileName)) {
        return true;
    }
    const QFileInfo info(fileName);
    if (info.isDir()) {
        problem = QStringLiteral("%1: is a folder").arg(fileName);
        return false;
    }
    if (info.exists() && !force) {
        problem = QStringLiteral("%1: already exists; add --force to replace it").arg(fileName);
        return false;
    }
    return true;
}

bool WriteOutput(const QString& fileName, const QByteArray& bytes, bool force, QTextStream& out,
                 QString& problem) {
    if (IsStandardOutput(fileName)) {
        out << QString::fromUtf8(bytes);
        out.flush();
        if (out.status() != QTextStream::Ok) {
            problem = QStringLiteral("the standard output cannot be written");
            return false;
        }
        return true;
    }
    if (!OutputAllowed(fileName, force, problem)) {
        return false;
    }
    // The temporary folder keeps the old content while a file in a folder that
    // takes no new file is rewritten in place.
    QString error;
    if (!ReplaceFileContent(fileName, bytes, error, QDir::tempPath())) {
        problem = QStringLiteral("%1: cannot be written: %2").arg(fileName, error);
        return false;
    }
    return true;
}

}  // namespace kelvane::cal
