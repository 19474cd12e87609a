#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>

namespace kelvane {

// "About Kelvane": name, version, description and disclaimer. A click on the
// dialog, or its OK button, closes it.
class frmAbout final : public QDialog {
  public:
    explicit frmAbout(QWidget* parent = nullptr);

    void cmdOK_Click() { accept(); }

    QLabel* Image1;
    QLabel* lblTitle;
    QLabel* lblVersion;
    QLabel* lblDescription;
    QLabel* Label1;
    QLabel* lblDisclaimer;
    QPushButton* cmdOK;

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    void BuildControls();
    void Form_Load();
};

}  // namespace kelvane
