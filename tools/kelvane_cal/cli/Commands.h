#pragma once

#include <QStringList>
#include <QTextStream>

#include "kelvane_cal/cli/Environment.h"

namespace kelvane::cal {

// Exit statuses.
inline constexpr int kDone = 0;
inline constexpr int kFileProblem = 1;  // a file is damaged, unreadable or unwritable
inline constexpr int kUsageError = 2;

// Runs one kelvane-cal command line (without the program name). Reports go to
// `out`, and so do the contents of an output file named "-" or left out;
// warnings and errors go to `err`.
int RunCommand(const QStringList& arguments, const Environment& environment, QTextStream& out,
               QTextStream& err);

}  // namespace kelvane::cal
