#include <QImage>

#include <gtest/gtest.h>

#include "support/MainWindowWorld.h"

namespace kelvane::testing {
namespace {

// What the editor gives 7 March in this test.
const QString kTitle = QStringLiteral("Dentist day");
const ColourChoice kBack{0, 160, 0, true, true};
const ColourChoice kFont{0, 0, 200, true, true};
const QString kNote = QStringLiteral("Bring the forms\r\nPay at the desk");

void EditTheDate(frmEdit& editor, FakeColourDialogs& colours) {
    editor.txtTitle->setText(kTitle);
    ColourChoiceControls& c = *editor.Colours;
    colours.Choose(160 * 256);  // green
    c.cmdBackCol->click();
    c.chkBCValid->click();
    c.chkBCAbsolute->click();
    for (QLineEdit* box : {c.txtFCred, c.txtFCgreen}) {
        box->setText(QStringLiteral("0"));
    }
    c.txtFCBlue->selectAll();
    c.txtFCBlue->insert(QStringLiteral("200"));
    c.chkFCValid->click();
    c.chkFCAbsolute->click();
    editor.tabEdit->setCurrentIndex(1);
    for (const auto& [start, end, description] :
         {std::tuple{"14:00", "", "Pay the bill"}, std::tuple{"9:30", "10:15", "Dentist"}}) {
        editor.txtStartTime->setText(QString::fromLatin1(start));
        editor.txtEndTime->setText(QString::fromLatin1(end));
        editor.txtAppDescription->setText(QString::fromLatin1(description));
        editor.cmdAddAppointment->click();
    }
    editor.tabEdit->setCurrentIndex(2);
    editor.txtNotes->setPlainText(QStringLiteral("Bring the forms\nPay at the desk"));
    editor.cmdOK->click();
}

// The colour in the middle of the lower half of 7 March's cell, below its texts.
QColor CellColour(MainWindowWorld& w) {
    const Calender& calender = w.main.Calender1();
    const QImage image = w.main.CalenderView().grab().toImage();
    const double rowHeight = (image.height() - calender.GridTop) / 5.0;
    const double columnWidth = image.width() / 7.0;
    for (int row = 1; row <= 5; ++row) {
        for (int column = 1; column <= 7; ++column) {
            if (calender.CellMap[row][column] == 7) {
                return image.pixelColor(
                    static_cast<int>((column - 0.5) * columnWidth),
                    static_cast<int>(calender.GridTop + (row - 0.1) * rowHeight));
            }
        }
    }
    return QColor();
}

void ExpectTheEditedDate(MainWindowWorld& w) {
    const DateEntry& entry = w.main.Calender1().Months[2].Dates[7];
    EXPECT_EQ(entry.Title.Trimmed(), kTitle);
    EXPECT_EQ(entry.BackColour, kBack);
    EXPECT_EQ(entry.TextColour, kFont);
    AppointmentMOD& appointments = w.store.appointments;
    appointments.LoadAppointments(MakeDateKey(3, 7));
    ASSERT_EQ(appointments.CountAppointments(), 2);
    EXPECT_EQ(appointments.AppointmentList[1],
              (Appointment{QStringLiteral("Pay the bill"), {14, 0}, {-1, -1}}));
    EXPECT_EQ(appointments.AppointmentList[2],
              (Appointment{QStringLiteral("Dentist"), {9, 30}, {10, 15}}));
    w.store.diary.LoadNote(MakeDateKey(3, 7));
    EXPECT_EQ(w.store.diary.NoteBuffer.Trimmed(), kNote);
    const QStringList schedule = w.ScheduleLines();
    EXPECT_TRUE(schedule.contains(QStringLiteral("Dentist"))) << schedule.join('|');
    EXPECT_TRUE(schedule.contains(QStringLiteral("Pay the bill"))) << schedule.join('|');
}

TEST(EditEndToEnd, AnEditedDateShowsInTheGridAndScheduleAndComesBackFromItsFile) {
    MainWindowWorld w;
    w.ClickDay(7);
    const QColor plainCell = CellColour(w);
    w.WhenEditorOpens([&](frmEdit& editor) { EditTheDate(editor, w.platform.ColourDialog); });
    w.main.Toolbar().Buttons[5]->trigger();
    EXPECT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Edit Done"));
    const QColor editedCell = CellColour(w);
    EXPECT_NE(editedCell, plainCell);
    ExpectTheEditedDate(w);

    const QString file = w.world.FilePath(QStringLiteral("plans.cal"));
    w.platform.FileDialog.Choose(file);
    w.main.Menu().mnuFileSaveAs->trigger();
    EXPECT_FALSE(w.store.module1.CalendarDirty);

    w.main.Menu().mnuFileNew->trigger();
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
    EXPECT_EQ(w.main.Calender1().Months[2].Dates[7], DateEntry{});
    EXPECT_FALSE(w.ScheduleLines().contains(QStringLiteral("Dentist")));

    w.platform.FileDialog.Choose(file);
    w.main.Menu().mnuFileOpen->trigger();
    EXPECT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Successful Load"));
    ExpectTheEditedDate(w);
    EXPECT_EQ(CellColour(w), editedCell);
    EXPECT_TRUE(w.platform.Messages.Shown.isEmpty());
}

}  // namespace
}  // namespace kelvane::testing
