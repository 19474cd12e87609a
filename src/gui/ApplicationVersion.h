#pragma once

#include <QString>

namespace kelvane {

// The release's major, minor and revision numbers, set by the build.
int VersionMajor();
int VersionMinor();
int VersionRevision();

// "Version 1.0.0": the three numbers as the splash and the about box show them.
QString VersionCaption();

}  // namespace kelvane
