#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include <array>

#include "editor/ColourChoiceControls.h"
#include "report/StartDates.h"
#include "store/MonthViewControl.h"
#include "store/Store.h"

class QGridLayout;

namespace kelvane {

// "Colour Fill": gives one font colour and one back colour to a run of dates,
// every day or every week on the start's weekday, from today or the selected
// date, to the dates that hold something ("Edited"), the empty ones
// ("Un-Edited") or both. The run never goes past 31 December. The person's
// selection is selected again when the fill ends.
class frmColourFill final : public QDialog {
  public:
    // Run kinds, as the option buttons' index + 1.
    enum Kind : qint16 { Daily = 1, Weekly = 2 };

    frmColourFill(Store& store, MonthViewControl& monthView, QWidget* parent = nullptr);

    void lstDateFrom_Click();
    void optUnit_Click(int index);
    void txtUnit_Change();
    void cmdDoIt_Click();
    void cmdCancel_Click();

    // The last date of the run from StartDate over Units of Kind.
    CalDate EndDate() const;
    // True once Do It! has coloured the run.
    bool Filled() const { return filled_; }

    QLabel* Label2;
    QListWidget* lstDateFrom;
    QLineEdit* txtDateTo;
    QLabel* Label1;
    QLineEdit* txtUnit;
    std::array<QRadioButton*, 2> optUnit;
    QLabel* Label4;
    std::array<QCheckBox*, 2> chkFill;
    ColourChoiceControls* Colours;
    QPushButton* cmdDoIt;
    QPushButton* cmdCancel;

    qint16 Units = 1;
    qint16 Kind = Daily;
    qint16 Step = 1;
    CalDate StartDate;
    ColourChoice FontColour;
    ColourChoice BackColour;

  private:
    void BuildControls();
    // The run's settings: start date, end date, length and unit.
    QGridLayout* RunLayout();
    void SetUpKeyboard();
    void Connect();
    void Form_Load();
    void ShowEndDate();
    CalDate WeeklyEnd() const;
    bool DateIsEdited() const;
    void FillRun();

    Store& store_;
    MonthViewControl& monthView_;
    StartDates startDates_;
    bool filled_ = false;
};

}  // namespace kelvane
