#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QStringList>
#include <QTest>

#include <algorithm>
#include <memory>

#include "editor/frmEdit.h"
#include "support/CalenderWorld.h"

namespace kelvane::testing {

// The date editor opened over a fresh document on a date of a month view, as
// the main window opens it: the date's entry, schedule and note loaded first.
struct EditorWorld {
    EditorWorld() { world.OpenStores(); }
    ~EditorWorld() {
        dialog.reset();
        world.appointments.CloseAppointmentStore();
        world.diary.CloseDiaryStore();
    }

    // Loads the date into the working copy and opens the editor on it.
    frmEdit& Open(qint16 month = 7, qint16 day = 17) {
        view.calender->SetDate(2000, month, day);
        const QString key = MakeDateKey(month, day);
        world.appointments.LoadAppointments(key);
        world.diary.LoadNote(key);
        dialog = std::make_unique<frmEdit>(world.store, *view.calender);
        dialog->show();
        return *dialog;
    }

    // Replaces a box's text by typing, as a user does; long text and text that
    // no key gives (tabs, letters beyond ASCII) is pasted in.
    static void Type(QLineEdit* box, const QString& text) {
        box->selectAll();
        box->del();
        constexpr qsizetype kLongestTyped = 100;
        const bool typable =
            text.size() <= kLongestTyped &&
            std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u' ' && c <= u'~'; });
        if (typable) {
            QTest::keyClicks(box, text);
        } else {
            box->insert(text);
        }
    }
    // Clicks a button in its middle, a check box or option button on its box.
    static void Click(QAbstractButton* button) {
        const bool box = qobject_cast<QCheckBox*>(button) != nullptr ||
                         qobject_cast<QRadioButton*>(button) != nullptr;
        const QPoint where =
            box ? QPoint(button->height() / 2, button->height() / 2) : button->rect().center();
        QTest::mouseClick(button, Qt::LeftButton, {}, where);
    }

    // Gives the dialog the keyboard, as a person's click on it does; false
    // when it never became the active window.
    static bool Activate(QWidget* dialog) {
        dialog->activateWindow();
        return QTest::qWaitForWindowActive(dialog);
    }

    // Fills the schedule boxes and presses Add.
    void Add(const QString& slot, const QString& start, const QString& end,
             const QString& description) {
        dialog->tabEdit->setCurrentIndex(1);
        Type(dialog->txtAppointNum, slot);
        Type(dialog->txtStartTime, start);
        Type(dialog->txtEndTime, end);
        Type(dialog->txtAppDescription, description);
        Click(dialog->cmdAddAppointment);
    }

    QStringList ListLines() const {
        QStringList lines;
        for (int row = 0; row < dialog->lstSchedule->count(); ++row) {
            lines << dialog->lstSchedule->item(row)->text();
        }
        return lines;
    }
    QStringList ShownTexts() const {
        QStringList texts;
        for (const MessageBoxRequest& box : world.platform.Messages.Shown) {
            texts << box.Text;
        }
        return texts;
    }
    Appointment& Slot(int slot) { return world.appointments.AppointmentList[slot]; }
    // Stores an activity in a date's schedule before the editor opens on it.
    void PutActivity(int slot, const QString& description, ClockTime start,
                     ClockTime end = {-1, -1}, qint16 month = 7, qint16 day = 17) {
        world.PutActivity(month, day, slot, description, start, end);
    }

    CalenderWorld view{2000, 3, 15};
    TestWorld& world = view.world;
    std::unique_ptr<frmEdit> dialog;
};

}  // namespace kelvane::testing
