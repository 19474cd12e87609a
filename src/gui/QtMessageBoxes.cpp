#include "gui/QtMessageBoxes.h"

#include <QMessageBox>

namespace kelvane {

namespace {

QMessageBox::Icon ToQtIcon(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Critical:
            return QMessageBox::Critical;
        case MessageIcon::Exclamation:
            return QMessageBox::Warning;
        case MessageIcon::Question:
            return QMessageBox::Question;
        case MessageIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

// Our texts break lines with a lone carriage return; Qt wants a line feed.
QString DisplayText(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

}  // namespace

MessageAnswer QtMessageBoxes::Present(const MessageBoxRequest& request) {
    QMessageBox box(ToQtIcon(request.Icon), request.Title, DisplayText(request.Text),
                    QMessageBox::NoButton, owner_.data());
    box.setTextFormat(Qt::PlainText);
    if (!request.Description.isEmpty()) {
        box.setAccessibleDescription(request.Description);
    }
    if (request.Buttons == MessageButtons::YesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
    } else {
        box.setStandardButtons(QMessageBox::Ok);
    }
    const int pressed = box.exec();
    if (request.Buttons == MessageButtons::Ok) {
        return MessageAnswer::Ok;
    }
    return pressed == QMessageBox::Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

}  // namespace kelvane
