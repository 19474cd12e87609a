#pragma once

#include <QWidget>

#include <functional>

#include "gui/CalenderEvents.h"
#include "gui/ImageSurface.h"
#include "gui/MonthGridAnnouncer.h"
#include "gui/MonthGridDescription.h"

namespace kelvane {

// A window for the month view: it owns the picture the control draws on,
// paints only from that picture, and passes resizes, mouse presses and clicks
// on to the control. The picture has as many pixels as the screen shows, so it
// stays sharp on scaled screens.
class SurfaceWidget final : public QWidget {
  public:
    // Answers a key pressed while the view has the keyboard; true when used.
    using KeyHandler = std::function<bool(int key, Qt::KeyboardModifiers modifiers)>;

    explicit SurfaceWidget(QWidget* parent = nullptr);

    ImageSurface& Surface() { return surface_; }
    // Whom to tell about resizes, presses and clicks; none until set.
    void SetEvents(CalenderEvents* events) { events_ = events; }
    // From now on the view takes the keyboard, by Tab and by a click, and
    // passes the keys it gets to `keys`.
    void SetKeys(KeyHandler keys);
    // What screen readers are told about the grid, and the bridge that tells
    // them of its changes; none (a plain picture) until set. Both must outlive
    // the widget or be unset first.
    void SetDescription(const MonthGridDescription* description, AccessibilityBridge* bridge);
    const MonthGridDescription* Description() const { return description_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    // A new picture at the window's size and pixel ratio, drawn again.
    void RemakePicture();
    void PaintFocusFrame(QPainter& painter);

    ImageSurface surface_;
    CalenderEvents* events_ = nullptr;
    KeyHandler keys_;
    const MonthGridDescription* description_ = nullptr;
    MonthGridAnnouncer announcer_{*this};
    bool leftPressed_ = false;
};

}  // namespace kelvane
