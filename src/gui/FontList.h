#pragma once

#include <QStringList>

namespace kelvane {

// The names of the fonts installed for the screen.
class FontList {
  public:
    virtual ~FontList() = default;

    // Every family name, in the order the system gives them.
    virtual QStringList Families() const = 0;
};

}  // namespace kelvane
