#pragma once

#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include <array>

#include "gui/RandomSource.h"

namespace kelvane {

// "Tips...": one hint at a time, chosen at random from the program's random
// numbers, with no hint shown twice until all ten have been seen.
class frmTip final : public QDialog {
  public:
    explicit frmTip(RandomSource& random, QWidget* parent = nullptr);

    void cmdNextTip_Click() { ShowNextTip(); }
    void cmdOK_Click() { accept(); }

    // The number of the tip shown last, 1..10.
    int ShownTip() const { return shownTip_; }

    QFrame* Picture1;
    QLabel* Label1;
    QLabel* lblTipText;
    QPushButton* cmdNextTip;
    QPushButton* cmdOK;

    qint16 TipCount = 10;
    // Index 1..10: the tip was shown in this round.
    std::array<bool, 11> TipShown{};
    qint16 TipsShownCount = 0;

  private:
    void BuildControls();
    void Form_Load();
    void ShowNextTip();
    int DrawUnshownTip();

    RandomSource& random_;
    int shownTip_ = 0;
};

}  // namespace kelvane
