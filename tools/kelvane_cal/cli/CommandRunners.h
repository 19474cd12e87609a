#pragma once

#include <QStringList>
#include <QTextStream>

#include "kelvane_cal/cli/Arguments.h"
#include "kelvane_cal/cli/Commands.h"

// The commands of kelvane-cal, each given the words after its name.
namespace kelvane::cal {

int RunCheck(const QStringList& words, QTextStream& out, QTextStream& err);
int RunShow(const QStringList& words, const Environment& environment, QTextStream& out,
            QTextStream& err);
int RunExport(const QStringList& words, const Environment& environment, QTextStream& out,
              QTextStream& err);
int RunPublish(const QStringList& words, const Environment& environment, QTextStream& out,
               QTextStream& err);
int RunImport(const QStringList& words, const Environment& environment, QTextStream& out,
              QTextStream& err);

// The start every command shares: parses its words into `arguments`. False
// when the command ends there, with `status`: after showing its `help` for
// --help, or after a usage error.
bool StartCommand(const QString& command, const QStringList& words,
                  const std::vector<OptionSpec>& options, const char* help, Arguments& arguments,
                  QTextStream& out, QTextStream& err, int& status);

// Reports a usage error with a pointer to the command's help; gives kUsageError.
int UsageError(const QString& command, const QString& problem, QTextStream& err);
// Reports a problem with a file; gives kFileProblem.
int FileError(const QString& problem, QTextStream& err);
// Prints a warning.
void Warn(const QString& warning, QTextStream& err);
// Prints each of the warnings about a file (or other input) named `name`.
void WarnAbout(const QString& name, const QStringList& warnings, QTextStream& err);

}  // namespace kelvane::cal
