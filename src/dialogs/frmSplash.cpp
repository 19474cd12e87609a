#include "dialogs/frmSplash.h"

#include <QGridLayout>
#include <QVBoxLayout>

#include "gui/ApplicationTitle.h"
#include "gui/ApplicationVersion.h"
#include "gui/NamedWidgets.h"
#include "gui/ProgramIcon.h"

namespace kelvane {

frmSplash::frmSplash(QWidget* parent)
    : QDialog(parent, Qt::SplashScreen | Qt::FramelessWindowHint),
      fraMainFrame(NamedWidget<QFrame>(this, "fraMainFrame")),
      Image1(NamedWidget<QLabel>(fraMainFrame, "Image1")),
      lblProductName(NamedWidget<QLabel>(fraMainFrame, "lblProductName")),
      lblVersion(NamedWidget<QLabel>(fraMainFrame, "lblVersion")),
      lblWarning(NamedWidget<QLabel>(fraMainFrame, "lblWarning")),
      lblCompany(NamedWidget<QLabel>(fraMainFrame, "lblCompany", QStringLiteral("Marrowby"))),
      lblCompanyProduct(NamedWidget<QLabel>(fraMainFrame, "lblCompanyProduct",
                                            QStringLiteral("Marrowby Desktop Planners"))),
      lblPlatform(
          NamedWidget<QLabel>(fraMainFrame, "lblPlatform", QStringLiteral("for the desktop"))),
      lblLicense(NamedWidget<QLabel>(fraMainFrame, "lblLicense",
                                     QStringLiteral("Freeware: free to use and to pass on"))) {
    setObjectName(QStringLiteral("frmSplash"));
    BuildControls();
    Form_Load();
}

void frmSplash::BuildControls() {
    fraMainFrame->setFrameShape(QFrame::Box);
    fraMainFrame->setLineWidth(2);
    Image1->setPixmap(ProgramPicture(96, devicePixelRatioF()));
    Image1->setAccessibleName(QStringLiteral("Kelvane picture"));
    QFont product = lblProductName->font();
    product.setPointSizeF(product.pointSizeF() * 2.6);
    product.setBold(true);
    lblProductName->setFont(product);
    QFont version = lblVersion->font();
    version.setBold(true);
    lblVersion->setFont(version);
    lblWarning->setWordWrap(true);
    for (QLabel* label : {lblProductName, lblCompanyProduct, lblPlatform, lblVersion}) {
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    auto* grid = new QGridLayout(fraMainFrame);
    grid->addWidget(lblLicense, 0, 0, 1, 2);
    grid->addWidget(Image1, 1, 0, 4, 1, Qt::AlignCenter);
    grid->addWidget(lblCompanyProduct, 1, 1);
    grid->addWidget(lblProductName, 2, 1);
    grid->addWidget(lblPlatform, 3, 1);
    grid->addWidget(lblVersion, 4, 1);
    grid->addWidget(lblWarning, 5, 0, 1, 2);
    grid->addWidget(lblCompany, 6, 0, 1, 2);
    grid->setColumnMinimumWidth(1, 320);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(fraMainFrame);
}

void frmSplash::Form_Load() {
    lblVersion->setText(VersionCaption());
    lblProductName->setText(QString::fromLatin1(ApplicationTitle));
    lblWarning->setText(QStringLiteral("Warning... I accept no") +
                        QStringLiteral(" responsibility for damage of any kind. This product is "
                                       "'freeware' and is provided ") +
                        QStringLiteral("'as is'."));
}

}  // namespace kelvane
