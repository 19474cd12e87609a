#pragma once

#include <QStringList>
#include <QTextStream>

#include "kelvane_cal/Commands.h"

// The commands of kelvane-cal, each given the words after its name.
namespace kelvane::cal {

int RunCheck(const QStringList& words, QTextStream& out, QTextStream& err);
int RunShow(const QStringList& words, const Environment& environment, QTextStream& out,
            QTextStream& err);
int RunExport(const QStringList& words, const Environment& environment, QTextStream& out,
              QTextStream& err);
int RunImport(const QStringList& words, const Environment& environment, QTextStream& out,
              QTextStream& err);

// Reports a usage error with a pointer to the command's help; gives kUsageError.
int UsageError(const QString& command, const QString& problem, QTextStream& err);
// Reports a problem with a file; gives kFileProblem.
int FileError(const QString& problem, QTextStream& err);
// Prints a warning.
void Warn(const QString& warning, QTextStream& err);

}  // namespace kelvane::cal
