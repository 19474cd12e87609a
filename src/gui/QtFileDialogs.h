#pragma once

#include <QPointer>
#include <QStringList>
#include <QWidget>

#include "gui/FileDialogs.h"

namespace kelvane {

// Qt's name filters for a "description|pattern|..." filter: each pair becomes
// "description (pattern)" unless the description already shows its pattern.
// "*.*" matches every file, with or without a dot.
QStringList QtNameFilters(const QString& filter);

// File dialogs shown with QFileDialog, modal over the owner window when one is set.
class QtFileDialogs final : public FileDialogs {
  public:
    void SetOwner(QWidget* owner) { owner_ = owner; }

    QString Show(const FileDialogRequest& request) override;

  private:
    QPointer<QWidget> owner_;
};

}  // namespace kelvane
