#pragma once

#include <QPointer>
#include <QWidget>

#include "gui/MessageBoxes.h"

namespace kelvane {

// Message boxes shown with QMessageBox, modal over the owner window when one is set.
class QtMessageBoxes final : public MessageBoxes {
  public:
    void SetOwner(QWidget* owner) { owner_ = owner; }

  protected:
    MessageAnswer Present(const MessageBoxRequest& request) override;

  private:
    QPointer<QWidget> owner_;
};

}  // namespace kelvane
