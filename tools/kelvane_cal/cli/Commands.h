#pragma once

#include <QDate>
#include <QDateTime>
#include <QIODevice>
#include <QString>
#include <QStringList>
#include <QTextStream>

namespace kelvane::cal {

// What a command may need from outside its arguments; tests give fixed values.
struct Environment {
    QDate Today;
    QDateTime Now;             // the stamp of exported events, in UTC
    QString SystemZone;        // the IANA name imported times are turned into by default
    QString StateFolder;       // where publish keeps what it published
    QString NetrcFile;         // ~/.netrc
    QString PasswordVariable;  // the value of KELVANE_CALDAV_PASSWORD
    bool PasswordVariableSet = false;
    QIODevice* StandardInput = nullptr;  // what "import -" reads; none reads nothing
};

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
