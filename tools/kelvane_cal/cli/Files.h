#pragma once

#include <QByteArray>
#include <QString>
#include <QTextStream>

#include "calfile/CalendarFile.h"

namespace kelvane::cal {

// Reads a calendar file with the program's own reader. False with the problem
// as "FILE: line N: what is wrong" (or "FILE: no such file" and the like).
bool ReadCalendar(const QString& fileName, CalendarFileContent& content, QString& problem);

// "FILE: is a folder, not WHAT" for a folder named where a file is wanted,
// with `what` such as "a calendar file".
QString FolderProblem(const QString& fileName, const QString& what);

// "FILE: line N: what is wrong" for a report that is not Ok.
QString DescribeReport(const QString& fileName, const CalendarFileReport& report);

// Whether `fileName` stands for the standard output: "-" or nothing.
bool IsStandardOutput(const QString& fileName);

// Puts `bytes` in place of the named file in one step (nothing reaches it
// unless everything was written), or on `out` for the standard output. An
// existing file is only replaced when `force` is set. False with the problem.
bool WriteOutput(const QString& fileName, const QByteArray& bytes, bool force, QTextStream& out,
                 QString& problem);

// An output file that would be refused, checked before any work is done:
// false with the problem when it exists and `force` is not set.
bool OutputAllowed(const QString& fileName, bool force, QString& problem);

}  // namespace kelvane::cal
