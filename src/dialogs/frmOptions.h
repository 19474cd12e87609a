#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <memory>

#include "calendar/Calender.h"
#include "gui/SurfaceWidget.h"
#include "store/Store.h"

namespace kelvane {

// "Options": the month grid's font and the colour scheme, with a preview
// month beside them. Colour edits go straight into the document's colour list;
// the font is tried on the preview and handed to the main grid on OK. Cancel
// puts the colour list back as it was at open; closing the window by its frame
// does neither.
class frmOptions final : public QDialog {
  public:
    // Font sizes from 5 up to, not including, 25 points are taken as typed.
    static constexpr int SmallestFontSize = 5;
    static constexpr int TooLargeFontSize = 25;
    static constexpr qint16 FallbackFontSize = 10;

    frmOptions(Store& store, Calender& calender1, QWidget* parent = nullptr);
    ~frmOptions() override;

    void lstColourList_Click();
    void txtRed_KeyUp() { Channel_KeyUp(txtRed, &ColourListItem::Red); }
    void txtGreen_KeyUp() { Channel_KeyUp(txtGreen, &ColourListItem::Green); }
    void txtBlue_KeyUp() { Channel_KeyUp(txtBlue, &ColourListItem::Blue); }
    void chkAbsolute_Click() { Flag_Click(chkAbsolute, &ColourListItem::Absolute); }
    void chkEnabled_Click() { Flag_Click(chkEnabled, &ColourListItem::Enabled); }
    void cmdColour_Click();
    void cmbFontName_Change() { ApplyFont(); }
    void txtFontSize_Change();
    void cmdOK_Click();
    void cmdCancel_Click();

    // The preview month and the control that draws it.
    Calender& calender2() { return *calender2_; }
    SurfaceWidget* calender2View;

    QFrame* picOptions;
    QLabel* lblFontName;
    QComboBox* cmbFontName;
    QLabel* lblFontSize;
    QLineEdit* txtFontSize;
    QListWidget* lstColourList;
    QPushButton* cmdColour;
    QLineEdit* txtRed;
    QLineEdit* txtGreen;
    QLineEdit* txtBlue;
    QCheckBox* chkAbsolute;
    QCheckBox* chkEnabled;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;

    // The colour-list slot being edited, 0..20.
    qint16 CurrentItem = 0;
    // False while the dialog is being filled.
    bool Loaded = false;
    // The colour list as it was at open, for Cancel.
    ColourListTable SavedColours;

    // Cancel; Escape answers as it does.
    void reject() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void BuildControls();
    void SetUpKeyboard();
    void Connect();
    void Form_Load();
    void ListColours();
    void ShowColourItem();
    void ApplyFont();
    void Channel_KeyUp(const QLineEdit* box, qint16 ColourListItem::*channel);
    void Flag_Click(const QCheckBox* box, bool ColourListItem::*flag);
    void RedrawPreview();
    ColourListItem& Item() {
        return store_.calender.ColourList[static_cast<std::size_t>(CurrentItem)];
    }

    Store& store_;
    Calender& calender1_;
    std::unique_ptr<Calender> calender2_;
    // True while the frame's close box is ending the dialog.
    bool closingByFrame_ = false;
};

}  // namespace kelvane
