#include "gui/SurfaceWidget.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "gui/MonthGridAccessible.h"

namespace kelvane {

namespace {

CalenderEvents::MouseButton ButtonOf(Qt::MouseButton button) {
    switch (button) {
        case Qt::RightButton:
            return CalenderEvents::MouseButton::Right;
        case Qt::MiddleButton:
            return CalenderEvents::MouseButton::Middle;
        default:
            return CalenderEvents::MouseButton::Left;
    }
}

}  // namespace

SurfaceWidget::SurfaceWidget(QWidget* parent)
    : QWidget(parent),
      surface_(palette().color(QPalette::Window), palette().color(QPalette::WindowText)) {
    // Every pixel comes from the picture, so Qt need not clear the background.
    setAttribute(Qt::WA_OpaquePaintEvent);
    surface_.OnChanged([this] { update(); });
    surface_.OnFinished([this] { announcer_.DrawingFinished(); });
}

void SurfaceWidget::SetKeys(KeyHandler keys) {
    keys_ = std::move(keys);
    setFocusPolicy(keys_ ? Qt::StrongFocus : Qt::NoFocus);
}

// Qt keeps the first interface made for a widget; one made before the grid
// had a description is dropped so that the table takes its place.
void SurfaceWidget::SetDescription(const MonthGridDescription* description,
                                   AccessibilityBridge* bridge) {
    QAccessible::installFactory(MonthGridAccessibleFactory);
    announcer_.SetDescription(description, bridge);
    if (description_ == description) {
        return;
    }
    if (QAccessibleInterface* made = QAccessible::queryAccessibleInterface(this)) {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(made));
    }
    description_ = description;
}

void SurfaceWidget::paintEvent(QPaintEvent* event) {
    if (!qFuzzyCompare(surface_.PixelRatio(), devicePixelRatioF())) {
        RemakePicture();  // the window moved to a screen of another scale
    }
    QPainter painter(this);
    const QRect area = event->rect();
    const QImage& picture = surface_.Image();
    const qreal ratio = picture.devicePixelRatio();
    painter.drawImage(
        QRectF(area), picture,
        QRectF(area.x() * ratio, area.y() * ratio, area.width() * ratio, area.height() * ratio));
    if (hasFocus()) {
        PaintFocusFrame(painter);
    }
}

// The frame goes round the selected day when it is shown, else round the
// whole grid; it is painted over the picture and never drawn into it.
void SurfaceWidget::PaintFocusFrame(QPainter& painter) {
    QRectF area = rect();
    const std::optional<QPoint> cell =
        description_ != nullptr ? description_->SelectedCell() : std::nullopt;
    if (cell) {
        area = description_->CellArea(cell->y(), cell->x());
    }
    QPen pen(palette().color(QPalette::Highlight), 2);
    pen.setStyle(Qt::DashLine);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(area.adjusted(2, 2, -2, -2));
}

void SurfaceWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    RemakePicture();
}

void SurfaceWidget::RemakePicture() {
    surface_.Resize(width(), height(), devicePixelRatioF());
    if (events_) {
        events_->Calender_Resize();
    }
    update();
}

void SurfaceWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        leftPressed_ = true;
    }
    if (events_) {
        const QPointF point = event->position();
        events_->Calender_MouseDown(ButtonOf(event->button()), point.x(), point.y());
    }
}

void SurfaceWidget::mouseReleaseEvent(QMouseEvent* event) {
    const bool click = event->button() == Qt::LeftButton && leftPressed_ &&
                       rect().contains(event->position().toPoint());
    if (event->button() == Qt::LeftButton) {
        leftPressed_ = false;
    }
    if (click && events_) {
        events_->Calender_Click();
    }
}

void SurfaceWidget::keyPressEvent(QKeyEvent* event) {
    if (keys_ && keys_(event->key(), event->modifiers())) {
        event->accept();
        return;
    }
    QWidget::keyPressEvent(event);
}

void SurfaceWidget::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
    announcer_.FocusTaken();
}

void SurfaceWidget::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

}  // namespace kelvane
