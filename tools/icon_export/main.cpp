// Writes the program's picture as kelvane.png at every icon size into an icon
// theme tree: FOLDER/<n>x<n>/apps/kelvane.png. The checked-in icons under
// packaging/icons/hicolor are made with it:
//
//   QT_QPA_PLATFORM=offscreen build/plain/tools/kelvane-icon-export packaging/icons/hicolor
#include <QDir>
#include <QGuiApplication>
#include <QStringList>
#include <QTextStream>

#include <cstdio>

#include "gui/ProgramIcon.h"

int main(int argc, char* argv[]) {
    QGuiApplication application(argc, argv);
    QTextStream err(stderr);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() != 2) {
        err << "usage: kelvane-icon-export FOLDER\n";
        return 2;
    }
    const QDir theme(arguments[1]);
    for (const int size : kelvane::kProgramIconSizes) {
        const QString folder = QStringLiteral("%1x%1/apps").arg(size);
        const QString path = theme.filePath(folder + QStringLiteral("/kelvane.png"));
        if (!theme.mkpath(folder) || !kelvane::ProgramPicture(size).save(path, "PNG")) {
            err << "kelvane-icon-export: cannot write " << path << "\n";
            return 1;
        }
    }
    return 0;
}
