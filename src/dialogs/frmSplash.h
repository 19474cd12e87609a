#pragma once

#include <QDialog>
#include <QFrame>
#include <QLabel>

namespace kelvane {

// The window shown while the program starts: its name, version and warning.
class frmSplash final : public QDialog {
  public:
    explicit frmSplash(QWidget* parent = nullptr);

    QFrame* fraMainFrame;
    QLabel* Image1;
    QLabel* lblProductName;
    QLabel* lblVersion;
    QLabel* lblWarning;
    QLabel* lblCompany;
    QLabel* lblCompanyProduct;
    QLabel* lblPlatform;
    QLabel* lblLicense;

  private:
    void BuildControls();
    void Form_Load();
};

}  // namespace kelvane
