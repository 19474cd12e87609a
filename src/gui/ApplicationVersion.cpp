#include "gui/ApplicationVersion.h"

namespace kelvane {

int VersionMajor() {
    return KELVANE_VERSION_MAJOR;
}

int VersionMinor() {
    return KELVANE_VERSION_MINOR;
}

int VersionRevision() {
    return KELVANE_VERSION_PATCH;
}

QString VersionCaption() {
    return QStringLiteral("Version %1.%2.%3")
        .arg(VersionMajor())
        .arg(VersionMinor())
        .arg(VersionRevision());
}

}  // namespace kelvane
