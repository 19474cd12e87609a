#pragma once

#include "gui/ProgramDirectory.h"

namespace kelvane {

// The directory of the running executable.
class QtProgramDirectory final : public ProgramDirectory {
  public:
    QString Path() const override;
};

}  // namespace kelvane
