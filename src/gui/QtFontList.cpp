#include "gui/QtFontList.h"

#include <QFontDatabase>

namespace kelvane {

QStringList QtFontList::Families() const {
    return QFontDatabase::families();
}

}  // namespace kelvane
