#include "gui/QtProgramDirectory.h"

#include <QCoreApplication>
#include <QDir>

namespace kelvane {

QString QtProgramDirectory::Path() const {
    return QDir::toNativeSeparators(QCoreApplication::applicationDirPath());
}

}  // namespace kelvane
