#include "gui/SurfaceWidget.h"

#include <QMouseEvent>
#include <QPainter>

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
}

void SurfaceWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QRect area = event->rect();
    painter.drawImage(area, surface_.Image(), area);
}

void SurfaceWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    surface_.Resize(width(), height());
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

}  // namespace kelvane
