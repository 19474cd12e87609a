#include "dialogs/frmAbout.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMouseEvent>

#include "gui/ApplicationVersion.h"
#include "gui/NamedWidgets.h"
#include "gui/ProgramIcon.h"

namespace kelvane {

frmAbout::frmAbout(QWidget* parent)
    : QDialog(parent),
      Image1(NamedWidget<QLabel>(this, "Image1")),
      lblTitle(NamedWidget<QLabel>(this, "lblTitle")),
      lblVersion(NamedWidget<QLabel>(this, "lblVersion")),
      lblDescription(NamedWidget<QLabel>(this, "lblDescription")),
      Label1(NamedWidget<QLabel>(this, "Label1")),
      lblDisclaimer(NamedWidget<QLabel>(this, "lblDisclaimer")),
      cmdOK(NamedButton(this, "cmdOK", QStringLiteral("OK"))) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About Kelvane"));
    setModal(true);
    BuildControls();
    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    Form_Load();
}

void frmAbout::BuildControls() {
    Image1->setPixmap(ProgramPicture(64, devicePixelRatioF()));
    Image1->setAccessibleName(QStringLiteral("Kelvane picture"));
    QFont title = lblTitle->font();
    title.setBold(true);
    title.setPointSizeF(title.pointSizeF() * 1.4);
    lblTitle->setFont(title);
    // A sunken line between the program's description and the disclaimer.
    Label1->setFrameShape(QFrame::HLine);
    Label1->setFrameShadow(QFrame::Sunken);
    Label1->setAccessibleName(QStringLiteral("Separator"));
    lblDisclaimer->setWordWrap(true);
    lblDescription->setWordWrap(true);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK);
    auto* layout = new QGridLayout(this);
    layout->addWidget(Image1, 0, 0, 3, 1, Qt::AlignTop);
    layout->addWidget(lblTitle, 0, 1);
    layout->addWidget(lblVersion, 1, 1);
    layout->addWidget(lblDescription, 2, 1);
    layout->addWidget(Label1, 3, 0, 1, 2);
    layout->addWidget(lblDisclaimer, 4, 0, 1, 2);
    layout->addLayout(buttons, 5, 0, 1, 2);
    layout->setColumnMinimumWidth(1, 340);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

// The line breaks of the texts are shown as new lines.
void frmAbout::Form_Load() {
    lblVersion->setText(VersionCaption());
    lblTitle->setText(QStringLiteral("Kelvane, the desktop calendar and day planner") +
                      QLatin1Char('\n') + QStringLiteral("\"Kelvane\""));
    lblDisclaimer->setText(QStringLiteral("I accept no ") +
                           QStringLiteral("responsibility for damage of any kind during the use "
                                          "of this product. This product is provided ") +
                           QStringLiteral("'as is'."));
    lblDescription->setText(QStringLiteral("This copy of Kelvane 1.0.0 is Freeware") +
                            QLatin1Char('\n') + QStringLiteral("Date: August 2000"));
}

void frmAbout::mouseReleaseEvent(QMouseEvent* event) {
    QDialog::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) {
        accept();
    }
}

}  // namespace kelvane
