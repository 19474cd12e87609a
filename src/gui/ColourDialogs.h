#pragma once

#include <QtGlobal>

#include <optional>

namespace kelvane {

// The common colour dialog. Colours are red + green * 256 + blue * 65536.
class ColourDialogs {
  public:
    virtual ~ColourDialogs() = default;

    // Shows the dialog with `initial` chosen and waits; the colour the user
    // chose, or nothing when the user cancelled.
    virtual std::optional<qint32> Show(qint32 initial) = 0;
};

}  // namespace kelvane
