#pragma once

#include <QList>

#include "gui/ColourDialogs.h"

namespace kelvane {

// Records the colour each dialog opened with and answers from a script, for
// tests. A dialog that finds the script empty is cancelled.
class FakeColourDialogs final : public ColourDialogs {
  public:
    // Queues the colour the next dialog gives.
    void Choose(qint32 colour) { Script.append(colour); }
    // Queues a cancel for the next dialog.
    void Cancel() { Script.append(std::nullopt); }

    std::optional<qint32> Show(qint32 initial) override {
        Shown.append(initial);
        return Script.isEmpty() ? std::nullopt : Script.takeFirst();
    }

    QList<qint32> Shown;
    QList<std::optional<qint32>> Script;
};

}  // namespace kelvane
