#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QPushButton>
#include <QWidget>

#include "calfile/Records.h"
#include "gui/ColourDialogs.h"

namespace kelvane {

// A channel typed into a colour box: the text's value rounded, kept from -255
// to 255 (offsets may be negative); anything else gives 0.
qint16 ColourChannelValue(const QString& text);

// The colour controls a dialog page shows for a font colour and a back colour:
// per colour a button that opens the colour dialog, "Enabled" and "Absoloute"
// check boxes and red, green and blue boxes; and the sample label that shows
// both colours. They edit two ColourChoice values in place, at once.
class ColourChoiceControls final : public QObject {
  public:
    // The controls are made as children of `page`; Columns holds everything but
    // the sample, which the page places itself.
    ColourChoiceControls(QWidget* page, ColourDialogs& dialogs);

    // Edits these two from now on and shows their values.
    void Attach(ColourChoice& font, ColourChoice& back);
    // Colours the sample as the two choices make it, on the page's background.
    void RedrawSample();
    // The controls as Tab walks them: the font colour's column, then the back
    // colour's, each from its button down to its boxes.
    QList<QWidget*> TabOrder() const;

    void txtFCred_KeyUp() { Box_KeyUp(txtFCred, font_->Red); }
    void txtFCgreen_KeyUp() { Box_KeyUp(txtFCgreen, font_->Green); }
    void txtFCBlue_KeyUp() { Box_KeyUp(txtFCBlue, font_->Blue); }
    void txtBCRed_KeyUp() { Box_KeyUp(txtBCRed, back_->Red); }
    void txtBCGreen_KeyUp() { Box_KeyUp(txtBCGreen, back_->Green); }
    void txtBCblue_KeyUp() { Box_KeyUp(txtBCblue, back_->Blue); }
    void chkFCValid_Click() { CheckBox_Click(chkFCValid, font_->Enabled); }
    void chkBCValid_Click() { CheckBox_Click(chkBCValid, back_->Enabled); }
    void chkFCAbsolute_Click() { CheckBox_Click(chkFCAbsolute, font_->Absolute); }
    void chkBCAbsolute_Click() { CheckBox_Click(chkBCAbsolute, back_->Absolute); }
    void cmdFontCol_Click() { ColourButton_Click(*font_, txtFCred, txtFCgreen, txtFCBlue); }
    void cmdBackCol_Click() { ColourButton_Click(*back_, txtBCRed, txtBCGreen, txtBCblue); }

    QWidget* Columns;
    QLabel* lblSample;
    QPushButton* cmdFontCol;
    QPushButton* cmdBackCol;
    QCheckBox* chkFCValid;
    QCheckBox* chkBCValid;
    QCheckBox* chkFCAbsolute;
    QCheckBox* chkBCAbsolute;
    QLineEdit* txtFCred;
    QLineEdit* txtFCgreen;
    QLineEdit* txtFCBlue;
    QLineEdit* txtBCRed;
    QLineEdit* txtBCGreen;
    QLineEdit* txtBCblue;

    // The colour the colour dialog gave last (black until it gives one); a
    // cancelled dialog leaves it, and it is used all the same.
    qint32 LastColour = 0;

  private:
    void BuildColumns();
    void NameBoxes();
    void Connect();
    void ShowValues();
    void Box_KeyUp(const QLineEdit* box, qint16& component);
    void CheckBox_Click(const QCheckBox* box, bool& flag);
    void ColourButton_Click(ColourChoice& choice, QLineEdit* red, QLineEdit* green,
                            QLineEdit* blue);

    QWidget* page_;
    ColourDialogs& dialogs_;
    ColourChoice* font_ = nullptr;
    ColourChoice* back_ = nullptr;
    ColourChoice unattached_[2];
};

}  // namespace kelvane
