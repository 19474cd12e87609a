#pragma once

#include "gui/FontList.h"

namespace kelvane {

// The font families Qt's font database knows.
class QtFontList final : public FontList {
  public:
    QStringList Families() const override;
};

}  // namespace kelvane
