#include "shell/ToolbarIcons.h"

#include <QPainter>
#include <QPixmap>

#include <array>

namespace kelvane {

namespace {

// The pictures are designed on a 32 x 32 grid and drawn at each size a
// 16-unit button needs on screens scaled to 100, 150, 200 and 300 %.
constexpr double kDesignSize = 32;
constexpr std::array<int, 4> kSizes{16, 24, 32, 48};
const QColor kInk(50, 60, 80);

// The picture `draw` makes on a transparent 32 x 32 grid, at every size.
template <typename Draw>
QIcon Drawn(Draw draw) {
    QIcon icon;
    for (const int size : kSizes) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / kDesignSize, size / kDesignSize);
        painter.setPen(QPen(kInk, 2));
        draw(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

// A page of a wall calendar: a coloured band over a grid of days.
void DrawCalendarPage(QPainter& p, const QRect& page) {
    p.fillRect(page, Qt::white);
    p.fillRect(QRect(page.left(), page.top(), page.width(), 6), QColor(200, 60, 60));
    p.drawRect(page);
    p.setPen(QPen(kInk, 1));
    for (int x = page.left() + page.width() / 4; x < page.right(); x += page.width() / 4) {
        p.drawLine(x, page.top() + 6, x, page.bottom());
    }
    for (int y = page.top() + 12; y < page.bottom(); y += 6) {
        p.drawLine(page.left(), y, page.right(), y);
    }
}

QIcon EditIcon() {
    return Drawn([](QPainter& p) {
        p.setBrush(QColor(240, 200, 80));
        const QPointF pencil[] = {{6, 22}, {22, 6}, {26, 10}, {10, 26}};
        p.drawPolygon(pencil, 4);
        p.setBrush(kInk);
        const QPointF tip[] = {{6, 22}, {10, 26}, {4, 28}};
        p.drawPolygon(tip, 3);
    });
}

QIcon ColourFillIcon() {
    return Drawn([](QPainter& p) {
        const QColor colours[] = {QColor(220, 70, 70), QColor(70, 170, 90), QColor(70, 110, 220)};
        for (int i = 0; i < 3; ++i) {
            p.setBrush(colours[i]);
            p.drawRect(QRect(3 + i * 9, 6 + i * 6, 12, 12));
        }
    });
}

QIcon SelectMonthIcon() {
    return Drawn([](QPainter& p) {
        DrawCalendarPage(p, QRect(3, 3, 20, 20));
        p.setBrush(kInk);
        const QPointF arrow[] = {{18, 24}, {30, 24}, {24, 30}};
        p.drawPolygon(arrow, 3);
    });
}

QIcon ViewCalenderIcon() {
    return Drawn([](QPainter& p) { DrawCalendarPage(p, QRect(3, 4, 26, 24)); });
}

QIcon ViewScheduleIcon() {
    return Drawn([](QPainter& p) {
        p.fillRect(QRect(5, 3, 22, 26), Qt::white);
        p.drawRect(QRect(5, 3, 22, 26));
        p.setPen(QPen(kInk, 2));
        for (int y = 9; y <= 23; y += 5) {
            p.drawLine(9, y, 23, y);
        }
    });
}

QIcon CommingUpIcon() {
    return Drawn([](QPainter& p) {
        p.setBrush(Qt::white);
        p.drawEllipse(QRect(3, 3, 24, 24));
        p.drawLine(15, 15, 15, 7);
        p.drawLine(15, 15, 21, 18);
        p.setBrush(QColor(70, 170, 90));
        const QPointF arrow[] = {{22, 22}, {30, 26}, {22, 30}};
        p.drawPolygon(arrow, 3);
    });
}

QIcon NewIcon() {
    return Drawn([](QPainter& p) {
        p.setBrush(Qt::white);
        const QPointF page[] = {{7, 3}, {19, 3}, {25, 9}, {25, 29}, {7, 29}};
        p.drawPolygon(page, 5);
        p.drawPolyline(QPolygonF({{19, 3}, {19, 9}, {25, 9}}));
    });
}

QIcon OpenIcon() {
    return Drawn([](QPainter& p) {
        p.setBrush(QColor(240, 200, 80));
        const QPointF folder[] = {{3, 8}, {12, 8}, {15, 11}, {27, 11}, {27, 27}, {3, 27}};
        p.drawPolygon(folder, 6);
        p.setBrush(QColor(250, 225, 130));
        const QPointF flap[] = {{3, 27}, {8, 15}, {30, 15}, {27, 27}};
        p.drawPolygon(flap, 4);
    });
}

QIcon SaveIcon() {
    return Drawn([](QPainter& p) {
        p.setBrush(QColor(70, 110, 200));
        p.drawRect(QRect(4, 4, 24, 24));
        p.fillRect(QRect(9, 5, 14, 9), Qt::white);
        p.fillRect(QRect(9, 19, 14, 8), QColor(200, 200, 210));
    });
}

QIcon EraseIcon() {
    return Drawn([](QPainter& p) {
        p.setBrush(QColor(235, 120, 140));
        const QPointF eraser[] = {{4, 20}, {16, 8}, {28, 20}, {20, 28}, {12, 28}};
        p.drawPolygon(eraser, 5);
        p.drawLine(10, 14, 22, 26);
    });
}

QIcon ArrowIcon(bool left) {
    return Drawn([left](QPainter& p) {
        p.setBrush(QColor(70, 170, 90));
        p.setPen(Qt::NoPen);
        p.drawEllipse(QRect(3, 3, 26, 26));
        p.setBrush(Qt::white);
        const double tip = left ? 8 : 24;
        const double back = left ? 17 : 15;
        const double tail = left ? 24 : 8;
        const QPointF arrow[] = {{tip, 16},  {back, 8},  {back, 13}, {tail, 13},
                                 {tail, 19}, {back, 19}, {back, 24}};
        p.drawPolygon(arrow, 7);
    });
}

}  // namespace

QIcon ToolbarIcon(ToolbarImage image) {
    switch (image) {
        case ToolbarImage::New:
            return NewIcon();
        case ToolbarImage::Open:
            return OpenIcon();
        case ToolbarImage::Save:
            return SaveIcon();
        case ToolbarImage::Edit:
            return EditIcon();
        case ToolbarImage::Erase:
            return EraseIcon();
        case ToolbarImage::ColourFill:
            return ColourFillIcon();
        case ToolbarImage::PreviousMonth:
            return ArrowIcon(true);
        case ToolbarImage::SelectMonth:
            return SelectMonthIcon();
        case ToolbarImage::NextMonth:
            return ArrowIcon(false);
        case ToolbarImage::ViewCalender:
            return ViewCalenderIcon();
        case ToolbarImage::ViewSchedule:
            return ViewScheduleIcon();
        case ToolbarImage::CommingUp:
            return CommingUpIcon();
    }
    return QIcon();
}

}  // namespace kelvane
