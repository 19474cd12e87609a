#include <QCoreApplication>

#include <cstdio>

#include "kelvane_cal/Commands.h"

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return kelvane::cal::RunCommand(QCoreApplication::arguments().mid(1), out, err);
}
