#pragma once

#include <QIcon>
#include <QPixmap>

namespace kelvane {

// Kelvane's picture: a calendar leaf with a coloured heading and one marked
// day, drawn at `size` pixels square.
QPixmap ProgramPicture(int size);
// The picture at the sizes window frames and task bars ask for.
QIcon ProgramIcon();

}  // namespace kelvane
