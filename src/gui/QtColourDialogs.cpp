#include "gui/QtColourDialogs.h"

#include <QApplication>
#include <QColorDialog>

#include "gui/QtColours.h"

namespace kelvane {

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
