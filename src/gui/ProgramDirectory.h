#pragma once

#include <QString>

namespace kelvane {

// The directory the program was started from; its temporary files live there.
class ProgramDirectory {
  public:
    virtual ~ProgramDirectory() = default;

    // The directory in the platform's native form, with or without a trailing separator.
    virtual QString Path() const = 0;
};

}  // namespace kelvane
