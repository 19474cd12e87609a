#pragma once

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>

#include <array>

#include "calfile/CalendarFile.h"
#include "editor/ColourChoiceControls.h"
#include "gui/Announcer.h"
#include "store/MonthViewControl.h"
#include "store/Store.h"

namespace kelvane {

// The date editor, "Tivrel Edit": one date's title and colours ("Outlook"),
// its schedule ("Schedule") and its note ("Notes"). It works on the working
// copy the caller loaded (current date entry, appointment list and note
// buffer) and never writes to the stores. Colour and schedule edits change the
// working copy at once; the title and the note are taken on OK, which also sets
// EditAccepted and marks the document changed.
class frmEdit final : public QDialog {
  public:
    // The pages stand this far in from the dialog's left and top edge.
    static constexpr double PanelLeftTwips = 240;
    static constexpr double PanelTopTwips = 360;

    // Builds the dialog and fills it from the working copy. `monthView` lends
    // the sample its font.
    frmEdit(Store& store, const MonthViewControl& monthView, QWidget* parent = nullptr);

    void tabEdit_Click();
    void lstSchedule_Click();
    void cmdAddAppointment_Click();
    void cmdDelete_Click();
    void cmdClear_Click();
    void txtTitle_Change();
    void cmdOK_Click();
    void cmdCancel_Click();

    // The date being edited as OK would keep it, the working copy untouched.
    CalendarFileDate AsAccepted() const;
    // False while the dialog is open, and when its loop was ended from outside
    // (the session ending) rather than by OK, Cancel, Escape or its close box.
    bool Answered() const { return answered_; }
    // True once anything differs from what the date held when the editor opened.
    bool Changed() const { return AsAccepted() != loaded_; }
    void done(int result) override;
    // Cancel; Escape and the close box answer as it does.
    void reject() override;
    // Shown with the cursor at the end of the title, nothing selected.
    void setVisible(bool visible) override;

    QLabel* lblDate;
    QTabBar* tabEdit;
    // The pages of the tabs "Outlook", "Schedule" and "Notes".
    std::array<QWidget*, 3> Picture1;

    QLabel* Label1;
    QLineEdit* txtTitle;
    ColourChoiceControls* Colours;

    QLabel* Label5;
    QListWidget* lstSchedule;
    QLabel* Label6;
    QLineEdit* txtAppointNum;
    QLabel* Label3;
    QLineEdit* txtStartTime;
    QLabel* Label4;
    QLineEdit* txtEndTime;
    QLabel* Label2;
    QLineEdit* txtAppDescription;
    QPushButton* cmdAddAppointment;
    QPushButton* cmdDelete;
    QPushButton* cmdClear;
    // Tells a screen reader the line Add put in the schedule.
    Announcer* annSchedule;

    QPlainTextEdit* txtNotes;
    // How many of the note's 800 characters are used, as the note is stored.
    QLabel* lblNoteCount;

    QPushButton* cmdOK;
    QPushButton* cmdCancel;

  private:
    void BuildOutlookPage(QWidget* page);
    void BuildSchedulePage(QWidget* page);
    void LayOutSchedulePage(QWidget* page);
    void BuildNotesPage(QWidget* page);
    void ArrangePages();
    void SetUpKeyboard();
    void AddPageKeys(const QList<QKeySequence>& keys, int step);
    void StepPage(int step);
    QWidget* FirstControl(int page) const;
    void Connect();
    void Form_Load(const MonthViewControl& monthView);
    void PutKeyboardOnTitle();
    void LimitLengths();
    void ShowNoteCount();
    void ShowPanel(int index);
    void FillSchedule();
    void Refuse(const QString& message);
    void TellAdded(const QString& line);

    Store& store_;
    AppointmentSlots& schedule_;
    int shownPanel_ = -1;
    bool answered_ = false;
    CalendarFileDate loaded_;
    // Where every page shows, in pixels.
    QPoint pagePosition_;
};

}  // namespace kelvane
