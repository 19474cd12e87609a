#pragma once

#include <QStringList>
#include <QTextStream>

namespace kelvane::cal {

// Runs one kelvane-cal command line (without the program name) and gives the
// exit status: 0 done, 1 a file could not be read or written, 2 a usage error.
int RunCommand(const QStringList& arguments, QTextStream& out, QTextStream& err);

}  // namespace kelvane::cal
