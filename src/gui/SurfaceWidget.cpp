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
    surface_.OnFinished([this] { AnnounceDrawing(); });
}

void SurfaceWidget::SetKeys(KeyHandler keys) {
    keys_ = std::move(keys);
    setFocusPolicy(keys_ ? Qt::StrongFocus : Qt::NoFocus);
}

// Qt keeps the first interface made for a widget; one made before the grid
// had a description is dropped so that the table takes its place.
void SurfaceWidget::SetDescription(const MonthGridDescription* description) {
    QAccessible::installFactory(MonthGridAccessibleFactory);
    if (description_ == description) {
        return;
    }
    if (QAccessibleInterface* made = QAccessible::queryAccessibleInterface(this)) {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(made));
    }
    description_ = description;
    announcedSelection_.clear();
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
    if (const std::optional<QPoint> cell = SelectedCell()) {
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
    AnnounceSelection(QAccessible::Focus);
}

void SurfaceWidget::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

std::optional<QPoint> SurfaceWidget::SelectedCell() const {
    if (description_ == nullptr) {
        return std::nullopt;
    }
    for (int row = 0; row < MonthGridDescription::Rows; ++row) {
        for (int column = 0; column < MonthGridDescription::Columns; ++column) {
            if (description_->CellIsSelected(row, column)) {
                return QPoint(column, row);
            }
        }
    }
    return std::nullopt;
}

int SurfaceWidget::SelectedChild() const {
    const std::optional<QPoint> cell = SelectedCell();
    return cell ? MonthGridAccessible::CellIndex(cell->y(), cell->x()) : -1;
}

bool SurfaceWidget::Heard() const {
    return description_ != nullptr && (listener_ || QAccessible::isActive());
}

void SurfaceWidget::Send(QAccessibleEvent& event) {
    if (listener_) {
        listener_(event);
    } else {
        QAccessible::updateAccessibility(&event);
    }
}

void SurfaceWidget::AnnounceSelection(QAccessible::Event type) {
    if (!Heard()) {
        return;
    }
    const int child = SelectedChild();
    if (child < 0) {
        return;
    }
    QAccessibleEvent event(this, type);
    event.setChild(child);
    Send(event);
}

// Every drawing may have changed what the cells read; a selection that moved
// is announced as selected, and as focused while the grid has the keyboard.
void SurfaceWidget::AnnounceDrawing() {
    if (!Heard()) {
        return;
    }
    QAccessibleTableModelChangeEvent changed(this, QAccessibleTableModelChangeEvent::DataChanged);
    changed.setFirstRow(0);
    changed.setLastRow(MonthGridDescription::Rows - 1);
    changed.setFirstColumn(0);
    changed.setLastColumn(MonthGridDescription::Columns - 1);
    Send(changed);

    const std::optional<QPoint> cell = SelectedCell();
    const QString selection = cell ? description_->CellName(cell->y(), cell->x()) : QString();
    if (selection == announcedSelection_) {
        return;
    }
    announcedSelection_ = selection;
    AnnounceSelection(QAccessible::Selection);
    if (hasFocus()) {
        AnnounceSelection(QAccessible::Focus);
    }
}

}  // namespace kelvane
