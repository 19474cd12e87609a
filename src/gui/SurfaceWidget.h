#pragma once

#include <QWidget>

#include "gui/CalenderEvents.h"
#include "gui/ImageSurface.h"

namespace kelvane {

// A window for the month view: it owns the picture the control draws on,
// paints only from that picture, and passes resizes, mouse presses and clicks
// on to the control.
class SurfaceWidget final : public QWidget {
  public:
    explicit SurfaceWidget(QWidget* parent = nullptr);

    ImageSurface& Surface() { return surface_; }
    // Whom to tell about resizes, presses and clicks; none until set.
    void SetEvents(CalenderEvents* events) { events_ = events; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    ImageSurface surface_;
    CalenderEvents* events_ = nullptr;
    bool leftPressed_ = false;
};

}  // namespace kelvane
