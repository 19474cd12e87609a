#include "gui/QtColours.h"

namespace kelvane {

QColor ToQColor(qint32 colour) {
    return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

qint32 FromQColor(const QColor& colour) {
    return colour.red() + colour.green() * 256 + colour.blue() * 65536;
}

}  // namespace kelvane
