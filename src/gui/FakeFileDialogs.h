#pragma once

#include <QList>

#include <functional>

#include "gui/FileDialogs.h"

namespace kelvane {

// Records every file dialog shown and answers from a script, for tests. A
// dialog that finds the script empty is cancelled.
class FakeFileDialogs final : public FileDialogs {
  public:
    // Queues the file name the next dialog gives; an empty name cancels it.
    void Choose(const QString& fileName) { Script.append(fileName); }

    QString Show(const FileDialogRequest& request) override {
        Shown.append(request);
        if (WhileShown) {
            WhileShown(request);
        }
        return Script.isEmpty() ? QString() : Script.takeFirst();
    }

    QList<FileDialogRequest> Shown;
    QList<QString> Script;
    // Runs while a dialog is up, before it gives its answer.
    std::function<void(const FileDialogRequest&)> WhileShown;
};

}  // namespace kelvane
