#include <QCoreApplication>
#include <QDateTime>
#include <QTimeZone>

#include "kelvane_cal/Commands.h"

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const kelvane::cal::Environment environment{QDate::currentDate(),
                                                QDateTime::currentDateTimeUtc(),
                                                QString::fromUtf8(QTimeZone::systemTimeZoneId())};
    return kelvane::cal::RunCommand(QCoreApplication::arguments().mid(1), environment, out, err);
}
