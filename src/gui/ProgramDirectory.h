#pragma once

#include <QString>

namespace kelvane {

// The directory the program keeps its temporary files and recent-file list in:
// the one it was started from, unless that cannot be written (QtProgramDirectory).
class ProgramDirectory {
  public:
    virtual ~ProgramDirectory() = default;

    // The directory in the platform's native form, with or without a trailing separator.
    virtual QString Path() const = 0;
};

}  // namespace kelvane
