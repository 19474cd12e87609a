#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTimeZone>

#include "kelvane_cal/cli/Commands.h"

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    kelvane::cal::Environment environment;
    environment.Today = QDate::currentDate();
    environment.Now = QDateTime::currentDateTimeUtc();
    environment.SystemZone = QString::fromUtf8(QTimeZone::systemTimeZoneId());
    const QString home = QDir::homePath();
    const QString stateHome = qEnvironmentVariable("XDG_STATE_HOME");
    environment.StateFolder =
        (stateHome.isEmpty() ? home + QStringLiteral("/.local/state") : stateHome) +
        QStringLiteral("/Kelvane");
    environment.NetrcFile = home + QStringLiteral("/.netrc");
    environment.PasswordVariableSet = qEnvironmentVariableIsSet("KELVANE_CALDAV_PASSWORD");
    environment.PasswordVariable = qEnvironmentVariable("KELVANE_CALDAV_PASSWORD");
    QFile input;
    if (input.open(stdin, QIODevice::ReadOnly)) {
        environment.StandardInput = &input;
    }
    return kelvane::cal::RunCommand(QCoreApplication::arguments().mid(1), environment, out, err);
}
