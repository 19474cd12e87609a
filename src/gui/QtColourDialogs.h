#pragma once

#include <QPointer>
#include <QWidget>

#include "gui/ColourDialogs.h"

namespace kelvane {

// QColorDialog, modal over the active window (or the owner when one is set).
class QtColourDialogs final : public ColourDialogs {
  public:
    void SetOwner(QWidget* owner) { owner_ = owner; }

    std::optional<qint32> Show(qint32 initial) override;

  private:
    QPointer<QWidget> owner_;
};

}  // namespace kelvane
