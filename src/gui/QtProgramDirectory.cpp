#include "gui/QtProgramDirectory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace kelvane {

QString ChooseProgramDirectory(const QString& programDir, bool programDirWritable,
                               const QString& userDataDir) {
    if (programDirWritable || userDataDir.isEmpty()) {
        return QDir::toNativeSeparators(programDir);
    }
    return QDir::toNativeSeparators(userDataDir);
}

QString UserProgramDataDirectory() {
    // Not AppLocalDataLocation: with the organisation named like the program
    // that would be ~/.local/share/Kelvane/Kelvane.
    const QString dataFolder =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (dataFolder.isEmpty()) {
        return {};
    }
    return QDir(dataFolder).filePath(QCoreApplication::applicationName());
}

QString QtProgramDirectory::Path() const {
    if (path_.isEmpty()) {
        const QString programDir = QCoreApplication::applicationDirPath();
        const bool writable = QFileInfo(programDir).isWritable();
        const QString userDataDir = writable ? QString() : UserProgramDataDirectory();
        if (!userDataDir.isEmpty()) {
            // When it cannot be made, the stores report their files as for any
            // other directory they cannot write to.
            QDir().mkpath(userDataDir);
        }
        path_ = ChooseProgramDirectory(programDir, writable, userDataDir);
    }
    return path_;
}

QString QtProgramDirectory::UserDataPath() const {
    const QString userDataDir = UserProgramDataDirectory();
    if (userDataDir.isEmpty()) {
        return Path();
    }
    return QDir::toNativeSeparators(userDataDir);
}

// Not the temporary folder: it is often emptied at the restart that follows
// the end of a session, and others may read it.
QStringList QtProgramDirectory::SpareFolders() const {
    return {QDir::toNativeSeparators(QDir::homePath())};
}

}  // namespace kelvane
