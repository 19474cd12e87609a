#pragma once

#include <QStringList>

#include <functional>
#include <memory>

#include "editor/frmEdit.h"
#include "shell/frmMain.h"
#include "support/TestWorld.h"

namespace kelvane::testing {

// The day of the shown month whose cell a main window's grid draws highlighted
// as the selected date, read from the grid's pixels; 0 when none is. The
// window must be shown.
qint16 HighlightedDayOf(frmMain& main);

// The main window over a fresh program, loaded as start-up loads it. The
// clock is set first: 7 March 2026 (a Saturday), 08:00, unless a test passes
// another time to the constructor.
struct MainWindowWorld {
    explicit MainWindowWorld(int year = 2026, int month = 3, int day = 7, int hour = 8,
                             int minute = 0);
    ~MainWindowWorld();

    // Puts an activity into a date's schedule as the editor would; an end
    // hour of -1 leaves the end out. Call BuildTodaysSchedule to see it.
    void AddActivity(qint16 month, qint16 day, const QString& description, qint16 startHour,
                     qint16 startMinute, qint16 endHour = -1, qint16 endMinute = 0);
    // Moves the clock to a time of today and lets the timer tick once.
    void TickAt(int hour, int minute, int second = 0);
    // Moves the clock to a date and time and lets the timer tick once.
    void MoveClockTo(int year, int month, int day, int hour, int minute, int second);
    // Lets the timer tick once a minute, at 5 seconds past, from the clock's
    // next minute up to and including hour:minute of today.
    void WalkTo(int hour, int minute);
    // Runs what the window has posted to its event loop, such as the work put
    // off while the watch was held, without waiting for anything else.
    void RunPostedWork();
    // The schedule panel's lines, trimmed as they are shown.
    QStringList ScheduleLines() const;
    // The texts of the message boxes shown so far.
    QStringList ShownTexts() const;
    // Shows the window and clicks a day of the displayed month in the grid.
    void ClickDay(qint16 day);
    // Runs `act` on the date editor once a command has opened it.
    void WhenEditorOpens(std::function<void(frmEdit&)> act);
    // Shows the window and waits until the grid is drawn on the screen.
    void ShowWindow();
    // The day of the shown month whose cell the grid draws highlighted as the
    // selected date, read from the grid's pixels; 0 when none is.
    qint16 HighlightedDay();
    // The day and month the commands act on: the month view's selected date.
    CalDate SelectedDayAndMonth() const;

    TestWorld world;
    FakePlatform& platform = world.platform;
    Store& store = world.store;
    std::unique_ptr<frmMain> window;
    frmMain& main;
    ActivityWatch& watch;
};

}  // namespace kelvane::testing
