#pragma once

#include <QColor>
#include <QtGlobal>

namespace kelvane {

// Colours between the program's numbers (red + green * 256 + blue * 65536)
// and Qt's.
QColor ToQColor(qint32 colour);
qint32 FromQColor(const QColor& colour);

}  // namespace kelvane
