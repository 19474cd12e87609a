#pragma once

#include "gui/ProgramDirectory.h"

namespace kelvane {

// A program directory chosen by the test, normally a temporary one.
class FakeProgramDirectory final : public ProgramDirectory {
  public:
    QString Path() const override { return Directory; }

    QString Directory;
};

}  // namespace kelvane
