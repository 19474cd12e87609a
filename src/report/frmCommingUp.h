#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

#include <array>

#include "report/StartDates.h"
#include "report/usrDocViewer.h"
#include "store/MonthViewControl.h"
#include "store/Store.h"

namespace kelvane {

// "Comming Up...": the dates with a title or a schedule over a span of days,
// weeks or months from today or from the selected date, optionally with their
// schedules, latest activity first. The report is rebuilt whenever a setting
// changes. Building it walks the month view's selection and the working copies
// over every date of the span and then puts both back as they were: the report
// only reads.
class frmCommingUp final : public QDialog {
  public:
    // Span kinds, as the option buttons' index + 1.
    enum Kind : qint16 { Days = 1, Weeks = 2, Months = 3 };

    frmCommingUp(Store& store, MonthViewControl& monthView, QWidget* parent = nullptr);
    // Deletes the viewer's temporary file.
    ~frmCommingUp() override;

    void lstDateFrom_Click();
    void optTimeDuration_Click(int index);
    void txtTimeUnits_Change();
    void chkDisplay_Click();

    // The last date of the span from StartDate over Units of Kind, never past
    // 31 December.
    CalDate EndDate() const;
    // Writes the report into the viewer and shows it.
    void BuildReport();

    QLabel* Label2;
    QListWidget* lstDateFrom;
    QLabel* Label1;
    QLineEdit* txtTimeUnits;
    std::array<QRadioButton*, 3> optTimeDuration;
    QCheckBox* chkDisplay;
    usrDocViewer* usrDocViewer1;

    qint16 Units = 1;
    qint16 Kind = Days;
    CalDate StartDate;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void BuildControls();
    void SetUpKeyboard();
    void Connect();
    void Form_Load();
    void Form_Resize();
    void AddDate(const CalDate& date, AppointmentSlots& scratch);
    void ListEntries(qint16 count, AppointmentSlots& scratch);
    QString DateLine(const CalDate& date, const QString& gap) const;

    Store& store_;
    MonthViewControl& monthView_;
    StartDates startDates_;
};

}  // namespace kelvane
