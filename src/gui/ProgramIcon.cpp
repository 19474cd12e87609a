#include "gui/ProgramIcon.h"

#include <QPainter>
#include <QPainterPath>

namespace kelvane {

namespace {

const QColor kHeading(176, 36, 44);
const QColor kLeaf(252, 250, 244);
const QColor kLines(150, 150, 150);
const QColor kMarkedDay(250, 204, 70);

// Four rows of four days under the heading, one of them marked.
void DrawDays(QPainter& painter, const QRectF& area) {
    constexpr int kColumns = 4;
    constexpr int kRows = 4;
    const double cellWidth = area.width() / kColumns;
    const double cellHeight = area.height() / kRows;
    painter.fillRect(
        QRectF(area.left() + 2 * cellWidth, area.top() + cellHeight, cellWidth, cellHeight),
        kMarkedDay);
    painter.setPen(QPen(kLines, std::max(1.0, area.width() / 64)));
    for (int column = 1; column < kColumns; ++column) {
        const double x = area.left() + column * cellWidth;
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    }
    for (int row = 1; row < kRows; ++row) {
        const double y = area.top() + row * cellHeight;
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    }
}

}  // namespace

QPixmap ProgramPicture(int size) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const double edge = size / 16.0;
    const QRectF leaf(edge, edge, size - 2 * edge, size - 2 * edge);
    const double corner = size / 10.0;
    painter.setPen(QPen(kHeading.darker(140), std::max(1.0, size / 48.0)));
    painter.setBrush(kLeaf);
    painter.drawRoundedRect(leaf, corner, corner);
    const QRectF heading(leaf.left(), leaf.top(), leaf.width(), leaf.height() / 4);
    QPainterPath leafPath;
    leafPath.addRoundedRect(leaf, corner, corner);
    painter.save();
    painter.setClipPath(leafPath);
    painter.fillRect(heading, kHeading);
    painter.restore();
    const double inset = leaf.width() / 12;
    DrawDays(painter,
             QRectF(leaf.left() + inset, heading.bottom() + inset, leaf.width() - 2 * inset,
                    leaf.bottom() - heading.bottom() - 2 * inset));
    return picture;
}

QPixmap ProgramPicture(int size, qreal ratio) {
    if (ratio <= 1.0) {
        return ProgramPicture(size);
    }
    QPixmap picture = ProgramPicture(qRound(size * ratio));
    picture.setDevicePixelRatio(ratio);
    return picture;
}

QIcon ProgramIcon() {
    QIcon icon;
    for (const int size : kProgramIconSizes) {
        icon.addPixmap(ProgramPicture(size));
    }
    return icon;
}

}  // namespace kelvane
