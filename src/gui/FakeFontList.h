#pragma once

#include "gui/FontList.h"

namespace kelvane {

// A fixed list of font names for tests.
class FakeFontList final : public FontList {
  public:
    QStringList Families() const override { return Names; }

    QStringList Names{QStringLiteral("Arial"), QStringLiteral("Courier New"),
                      QStringLiteral("Times New Roman")};
};

}  // namespace kelvane
