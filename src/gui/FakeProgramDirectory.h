#pragma once

#include "gui/ProgramDirectory.h"

namespace kelvane {

// A program directory chosen by the test, normally a temporary one.
class FakeProgramDirectory final : public ProgramDirectory {
  public:
    QString Path() const override { return Directory; }
    QString UserDataPath() const override { return UserData.isEmpty() ? Directory : UserData; }
    QStringList SpareFolders() const override { return Spare; }

    QString Directory;
    // The user's data folder; the program directory when empty.
    QString UserData;
    // None unless a test names some.
    QStringList Spare;
};

}  // namespace kelvane
