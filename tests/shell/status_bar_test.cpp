#include <QAccessible>
#include <QLocale>
#include <QSet>
#include <QTime>

#include <gtest/gtest.h>

#include "gui/FakeSystemClock.h"
#include "shell/MainStatusBar.h"

// What a screen reader is told of the status bar's clock.
namespace kelvane {
namespace {

// The name a screen reader is given for a widget. Qt sends a NameChanged
// event whenever it changes: a label without a name of its own sends one for
// each new text, and setting a new name sends one. (The offscreen platform
// has no accessibility bridge, so Qt sends no events here to count.)
QString HeardName(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}

// Two minutes of the bar's one-second ticks, from 09:30:00.
struct TwoMinutesOfTicks {
    static FakeSystemClock HalfPastNine() {
        FakeSystemClock clock;
        clock.Set(2026, 3, 7, 9, 30, 0);
        return clock;
    }

    void Run() {
        for (int second = 0; second < 120; ++second) {
            clock.Now = clock.Now.addSecs(1);
            bar.ShowDateAndTime();
            shownTimes.insert(bar.Panel(4)->text());
            const QString name = HeardName(*bar.Panel(4));
            if (name != lastName) {
                ++nameChanges;
                lastName = name;
            }
        }
    }

    FakeSystemClock clock = HalfPastNine();
    MainStatusBar bar{clock};
    QSet<QString> shownTimes;
    QString lastName = HeardName(*bar.Panel(4));
    int nameChanges = 0;
};

TEST(StatusBarClock, ItsNameChangesOnlyWhenTheMinuteTurns) {
    TwoMinutesOfTicks ticks;
    ticks.Run();
    EXPECT_EQ(ticks.nameChanges, 2);
}

TEST(StatusBarClock, TheClockIsNamedByItsHoursAndMinutes) {
    TwoMinutesOfTicks ticks;
    ticks.Run();
    const QString name = ticks.bar.Panel(4)->accessibleName();
    EXPECT_TRUE(name.contains(QStringLiteral("9"))) << name.toStdString();
    EXPECT_TRUE(name.contains(QStringLiteral("32"))) << name.toStdString();
    EXPECT_FALSE(name.contains(QStringLiteral("32:00"))) << name.toStdString();
}

TEST(StatusBarClock, TheShownTimeIsTheUsersShortFormAsBefore) {
    TwoMinutesOfTicks ticks;
    ticks.Run();
    EXPECT_EQ(ticks.bar.Panel(4)->text(),
              QLocale::system().toString(QTime(9, 32, 0), QLocale::ShortFormat));
    // In a locale whose short form shows seconds, every tick shows a new time.
    const bool showsSeconds = QLocale::system().timeFormat(QLocale::ShortFormat).contains('s');
    EXPECT_EQ(ticks.shownTimes.size(), showsSeconds ? 120 : 3);
}

}  // namespace
}  // namespace kelvane
