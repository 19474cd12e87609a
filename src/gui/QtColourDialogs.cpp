#include "gui/QtColourDialogs.h"

#include <QApplication>
#include <QColorDialog>

namespace kelvane {

namespace {

QColor ToQColor(qint32 colour) {
    return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

qint32 FromQColor(const QColor& colour) {
    return colour.red() + colour.green() * 256 + colour.blue() * 65536;
}

}  // namespace

std::optional<qint32> QtColourDialogs::Show(qint32 initial) {
    QWidget* owner = owner_ ? owner_.data() : QApplication::activeWindow();
    QColorDialog dialog(ToQColor(initial), owner);
    dialog.setObjectName(QStringLiteral("dlgColour"));
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return FromQColor(dialog.selectedColor());
}

}  // namespace kelvane
