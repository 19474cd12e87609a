#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include "support/MainWindowWorld.h"

// The month grid from the keyboard alone: it takes the focus by Tab, moves
// the selection with the arrows, Home, End and the page keys, and runs Edit
// and Erase with Enter and Delete. Today is Saturday 7 March 2026.
namespace kelvane::testing {
namespace {

void Press(QWidget& widget, Qt::Key key, int times = 1) {
    for (int press = 0; press < times; ++press) {
        QTest::keyClick(&widget, key);
    }
}

// Shows the window, makes it the active one and tabs to the month grid.
void TabToGrid(MainWindowWorld& w) {
    w.ShowWindow();
    w.main.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&w.main));
    SurfaceWidget& grid = w.main.CalenderView();
    for (int press = 0; press < 20 && !grid.hasFocus(); ++press) {
        QWidget* focused = QApplication::focusWidget();
        QTest::keyClick(focused != nullptr ? focused : &w.main, Qt::Key_Tab);
    }
    ASSERT_TRUE(grid.hasFocus()) << "Tab never reached the month grid";
}

// Presses Tab in a dialog until the named control has the focus.
void TabTo(QWidget& dialog, const char* name) {
    for (int press = 0; press < 40; ++press) {
        QWidget* focused = dialog.focusWidget();
        if (focused != nullptr && focused->objectName() == QLatin1String(name)) {
            return;
        }
        QTest::keyClick(focused != nullptr ? focused : &dialog, Qt::Key_Tab);
    }
    FAIL() << "Tab never reached " << name;
}

QWidget& Focused(QWidget& dialog) {
    QWidget* focused = dialog.focusWidget();
    return focused != nullptr ? *focused : dialog;
}

qint16 CheckedMonth(const MainWindowWorld& w) {
    qint16 checked = 0;
    for (int month = 1; month <= 12; ++month) {
        if (w.main.Menu().Months[month]->isChecked()) {
            EXPECT_EQ(checked, 0) << "two months are checked";
            checked = static_cast<qint16>(month);
        }
    }
    return checked;
}

TEST(GridKeyboard, TabReachesTheGridAndAClickGivesItTheFocus) {
    MainWindowWorld w;
    TabToGrid(w);
    w.main.CalenderView().clearFocus();
    w.ClickDay(12);
    EXPECT_TRUE(w.main.CalenderView().hasFocus());
}

TEST(GridKeyboard, ArrowsMoveTheSelectionAndHighlightIt) {
    MainWindowWorld w;
    TabToGrid(w);
    SurfaceWidget& grid = w.main.CalenderView();
    Press(grid, Qt::Key_Right);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 8, 3}));
    EXPECT_EQ(w.HighlightedDay(), 8);
    Press(grid, Qt::Key_Down, 2);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 22, 3}));
    Press(grid, Qt::Key_Left);
    Press(grid, Qt::Key_Up);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 14, 3}));
    EXPECT_EQ(w.HighlightedDay(), 14);
}

TEST(GridKeyboard, CrossingIntoAnotherMonthShowsItAndMovesTheCheckMark) {
    MainWindowWorld w;
    TabToGrid(w);
    Press(w.main.CalenderView(), Qt::Key_Down, 4);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 4, 4}));
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 4);
    EXPECT_EQ(CheckedMonth(w), 4);
    EXPECT_EQ(w.HighlightedDay(), 4);
}

TEST(GridKeyboard, DecemberAndJanuaryWrapAsTheToolbarDoes) {
    MainWindowWorld w;
    TabToGrid(w);
    SurfaceWidget& grid = w.main.CalenderView();
    w.main.ShowMonth(12);
    Press(grid, Qt::Key_End);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 31, 12}));
    Press(grid, Qt::Key_Right);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 1, 1}));
    EXPECT_EQ(CheckedMonth(w), 1);
    Press(grid, Qt::Key_PageUp);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 1, 12}));
    EXPECT_EQ(CheckedMonth(w), 12);
}

TEST(GridKeyboard, HomeEndAndThePageKeys) {
    MainWindowWorld w;
    TabToGrid(w);
    SurfaceWidget& grid = w.main.CalenderView();
    Press(grid, Qt::Key_End);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 31, 3}));
    Press(grid, Qt::Key_PageDown);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 30, 4}));
    EXPECT_EQ(CheckedMonth(w), 4);
    Press(grid, Qt::Key_Home);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 1, 4}));
    EXPECT_EQ(w.HighlightedDay(), 1);
}

TEST(GridKeyboard, EnterEditsTheSelectedDate) {
    MainWindowWorld w;
    TabToGrid(w);
    Press(w.main.CalenderView(), Qt::Key_Right, 2);
    QString shown;
    w.WhenEditorOpens([&shown](frmEdit& editor) {
        shown = editor.findChild<QLabel*>(QStringLiteral("lblDate"))->text();
        editor.reject();
    });
    Press(w.main.CalenderView(), Qt::Key_Return);
    EXPECT_EQ(shown, QStringLiteral("9 / 3"));
    EXPECT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Edit Cancelled"));
}

TEST(GridKeyboard, DeleteErasesTheSelectedDateAfterItsQuestion) {
    MainWindowWorld w;
    w.main.Calender1().Months[2].Dates[10].Title = QStringLiteral("Dentist");
    TabToGrid(w);
    SurfaceWidget& grid = w.main.CalenderView();
    Press(grid, Qt::Key_Down);
    Press(grid, Qt::Key_Right, 3);
    ASSERT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 17, 3}));
    Press(grid, Qt::Key_Left, 7);
    ASSERT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 10, 3}));
    w.platform.Messages.Answer(MessageAnswer::No);
    Press(grid, Qt::Key_Delete);
    EXPECT_EQ(w.ShownTexts(), QStringList{QStringLiteral("Delete Date?")});
    EXPECT_EQ(w.main.Calender1().Months[2].Dates[10].Title.Trimmed(), QStringLiteral("Dentist"));
    w.platform.Messages.Answer(MessageAnswer::Yes);
    Press(grid, Qt::Key_Delete);
    EXPECT_EQ(w.main.Calender1().Months[2].Dates[10].Title.Trimmed(), QString());
    EXPECT_TRUE(w.store.module1.CalendarDirty);
}

// The commands act on the selected date; a date the grid does not show is
// shown, highlighted, and the same press acts on it.
TEST(GridKeyboard, EnterAndDeleteShowASelectedDateOfAnotherMonthAndActOnIt) {
    MainWindowWorld w;
    w.main.Calender1().Months[2].Dates[7].Title = QStringLiteral("Dentist");
    TabToGrid(w);
    SurfaceWidget& grid = w.main.CalenderView();
    w.main.ShowMonth(5);
    QString edited;
    qint16 highlightedWhileEditing = 0;
    w.WhenEditorOpens([&](frmEdit& editor) {
        edited = editor.lblDate->text();
        highlightedWhileEditing = HighlightedDayOf(w.main);
        editor.reject();
    });
    Press(grid, Qt::Key_Return);
    EXPECT_EQ(edited, QStringLiteral("7 / 3"));
    EXPECT_EQ(highlightedWhileEditing, 7);
    EXPECT_EQ(CheckedMonth(w), 3);

    w.main.ShowMonth(4);
    qint16 highlightedWhileAsked = 0;
    w.platform.Messages.WhileShown = [&](const MessageBoxRequest&) {
        highlightedWhileAsked = HighlightedDayOf(w.main);
    };
    w.platform.Messages.Answer(MessageAnswer::Yes);
    Press(grid, Qt::Key_Delete);
    w.platform.Messages.WhileShown = nullptr;
    EXPECT_EQ(w.ShownTexts(), QStringList{QStringLiteral("Delete Date?")});
    EXPECT_EQ(highlightedWhileAsked, 7);
    EXPECT_EQ(w.main.Calender1().GetDisplayMonth(), 3);
    EXPECT_EQ(CheckedMonth(w), 3);
    EXPECT_EQ(w.main.Calender1().Months[2].Dates[7].Title.Trimmed(), QString());
    EXPECT_EQ(w.HighlightedDay(), 7);
}

TEST(GridKeyboard, ShortcutsWithControlAreLeftToTheMenus) {
    MainWindowWorld w;
    TabToGrid(w);
    QTest::keyClick(&w.main.CalenderView(), Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 7, 3}));
}

TEST(GridKeyboard, TheFocusFrameIsNeverDrawnIntoThePicture) {
    MainWindowWorld w;
    TabToGrid(w);
    SurfaceWidget& grid = w.main.CalenderView();
    const QImage picture = grid.Surface().Image().copy();
    const QImage focused = grid.grab().toImage();
    grid.clearFocus();
    ASSERT_FALSE(grid.hasFocus());
    const QImage unfocused = grid.grab().toImage();
    EXPECT_EQ(grid.Surface().Image(), picture);
    EXPECT_NE(focused, unfocused);
}

// From the grid to a finished edit with no mouse: Tab to the grid, down into
// April, Enter, a title and an activity typed in, OK pressed with Space.
TEST(GridKeyboard, AKeyboardOnlySessionEditsADateInTheNextMonth) {
    MainWindowWorld w;
    TabToGrid(w);
    SurfaceWidget& grid = w.main.CalenderView();
    Press(grid, Qt::Key_Down, 4);
    ASSERT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 4, 4}));
    w.WhenEditorOpens([](frmEdit& editor) {
        TabTo(editor, "txtTitle");
        QTest::keyClicks(&Focused(editor), QStringLiteral("Garden party"));
        TabTo(editor, "tabEdit");
        Press(Focused(editor), Qt::Key_Right);
        TabTo(editor, "txtStartTime");
        QTest::keyClicks(&Focused(editor), QStringLiteral("15:00"));
        TabTo(editor, "txtAppDescription");
        QTest::keyClicks(&Focused(editor), QStringLiteral("Set up tables"));
        TabTo(editor, "cmdAddAppointment");
        Press(Focused(editor), Qt::Key_Space);
        TabTo(editor, "cmdOK");
        Press(Focused(editor), Qt::Key_Space);
    });
    Press(grid, Qt::Key_Return);

    EXPECT_EQ(w.main.sbStatusBar().Message(), QStringLiteral("Edit Done"));
    EXPECT_EQ(w.main.Calender1().Months[3].Dates[4].Title.Trimmed(),
              QStringLiteral("Garden party"));
    w.store.appointments.LoadAppointments(MakeDateKey(4, 4));
    EXPECT_EQ(w.store.appointments.AppointmentList[1].Description.Trimmed(),
              QStringLiteral("Set up tables"));
    EXPECT_EQ(w.store.appointments.AppointmentList[1].StartTime, (ClockTime{15, 0}));
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 4, 4}));
    EXPECT_EQ(w.HighlightedDay(), 4);
    EXPECT_EQ(CheckedMonth(w), 4);
    EXPECT_TRUE(w.store.module1.CalendarDirty);
}

}  // namespace
}  // namespace kelvane::testing
