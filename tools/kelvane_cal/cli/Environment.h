#pragma once

#include <QDate>
#include <QDateTime>
#include <QIODevice>
#include <QString>

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

}  // namespace kelvane::cal
