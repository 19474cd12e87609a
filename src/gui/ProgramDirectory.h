#pragma once

#include <QString>
#include <QStringList>

namespace kelvane {

// The directory the program keeps its temporary files and recent-file list in:
// the one it was started from, unless that cannot be written (QtProgramDirectory).
class ProgramDirectory {
  public:
    virtual ~ProgramDirectory() = default;

    // The directory in the platform's native form, with or without a trailing separator.
    virtual QString Path() const = 0;
    // The user's own folder for files the program keeps for them, such as the
    // copy of unsaved changes made when the session ends. It is made only by
    // what writes there first, so that a session that needs none leaves none.
    // The program directory when the system has no such folder.
    virtual QString UserDataPath() const = 0;
    // Where a copy of unsaved work may still go when neither of the above can
    // take it: the user's home folder.
    virtual QStringList SpareFolders() const = 0;
};

}  // namespace kelvane
