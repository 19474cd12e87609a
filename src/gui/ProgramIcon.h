#pragma once

#include <QIcon>
#include <QPixmap>

#include <array>

namespace kelvane {

// Kelvane's picture: a calendar leaf with a coloured heading and one marked
// day, drawn at `size` pixels square.
QPixmap ProgramPicture(int size);
// The same picture for a screen of `ratio` device pixels per unit: `size`
// units square, drawn at the screen's density.
QPixmap ProgramPicture(int size, qreal ratio);

// The sizes, in pixels, at which the picture is offered: in the window
// icon and in the installed icon theme (packaging/icons).
inline constexpr std::array<int, 7> kProgramIconSizes{16, 24, 32, 48, 64, 128, 256};

// The picture at the sizes window frames and task bars ask for.
QIcon ProgramIcon();

}  // namespace kelvane
