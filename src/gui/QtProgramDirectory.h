#pragma once

#include "gui/ProgramDirectory.h"

namespace kelvane {

// The directory of the running executable, where the program keeps its
// temporary files and its recent-file list. A copy installed where its user
// cannot write, such as /usr/bin, uses the user's own data folder instead
// (UserProgramDataDirectory), which is made when it is missing.
class QtProgramDirectory final : public ProgramDirectory {
  public:
    // Decided on the first call and kept for the rest of the run, so that the
    // files of one run never end up in two places.
    QString Path() const override;
    // UserProgramDataDirectory; made by the first file that goes there.
    QString UserDataPath() const override;
    QStringList SpareFolders() const override;

  private:
    mutable QString path_;
};

// The directory for the program's files: `programDir` when it can be written,
// otherwise `userDataDir`, or `programDir` all the same when there is no user
// folder to go to. The result is in native form.
QString ChooseProgramDirectory(const QString& programDir, bool programDirWritable,
                               const QString& userDataDir);

// The user's folder for the program's files: the application's name in the
// user's data folder (~/.local/share/Kelvane on Linux), or an empty string when
// the system has no data folder for the user.
QString UserProgramDataDirectory();

}  // namespace kelvane
