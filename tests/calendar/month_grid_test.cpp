#include <gtest/gtest.h>

#include "support/CalenderWorld.h"

namespace kelvane {
namespace {

using testing::CalenderWorld;
using testing::RecordingSurface;

// Lays the year out so that January starts on the given weekday.
void StartJanuaryOn(Calender& calender, qint16 weekday, qint16 leap) {
    qint16 yy = leap;
    qint16 dd = weekday;
    calender.FirstDayandYear(yy, dd, false);
}

std::vector<qint16> Row(const Calender& calender, int row) {
    std::vector<qint16> days;
    for (int column = 1; column <= 8; ++column) {
        days.push_back(calender.CellMap[row][column]);
    }
    return days;
}

TEST(MonthGrid, AThirtyOneDayMonthFromSaturdayWrapsItsLastDaysIntoRowOne) {
    CalenderWorld world;
    StartJanuaryOn(*world.calender, 7, 1);
    world.calender->DisplayMonth(1);
    const Calender& calender = *world.calender;
    EXPECT_EQ(Row(calender, 1), (std::vector<qint16>{30, 31, 0, 0, 0, 0, 1, 0}));
    EXPECT_EQ(Row(calender, 2), (std::vector<qint16>{2, 3, 4, 5, 6, 7, 8, 0}));
    EXPECT_EQ(Row(calender, 5), (std::vector<qint16>{23, 24, 25, 26, 27, 28, 29, 0}));
}

TEST(MonthGrid, FebruaryFromSundayInACommonYearFillsFourRows) {
    CalenderWorld world;
    StartJanuaryOn(*world.calender, 5, -1);  // 31 days later February starts on Sunday
    ASSERT_EQ(world.calender->Months[1].FirstDay, 1);
    world.calender->DisplayMonth(2);
    const Calender& calender = *world.calender;
    EXPECT_EQ(Row(calender, 1), (std::vector<qint16>{1, 2, 3, 4, 5, 6, 7, 0}));
    EXPECT_EQ(Row(calender, 4), (std::vector<qint16>{22, 23, 24, 25, 26, 27, 28, 0}));
    EXPECT_EQ(Row(calender, 5), (std::vector<qint16>(8, 0)));
}

TEST(MonthGrid, WeekdayNamesAreCutToTheColumn) {
    CalenderWorld world(2000, 3, 15, 560, 520);  // columns of 80: eight characters
    world.calender->Display();
    const std::vector<QString> weekdays = world.surface.TextsWithin(0, 20, 560, 40);
    EXPECT_EQ(weekdays, (std::vector<QString>{"Sunday", "Monday", "Tuesday", "Wednesda", "Thursday",
                                              "Friday", "Saturday"}));
}

TEST(MonthGrid, TheRedrawSetsTheGridTopUnderTheWeekdayNames) {
    CalenderWorld world;
    world.calender->Display();
    EXPECT_EQ(world.calender->GridTop, 40);
    const std::vector<QString> weekdays = world.surface.TextsWithin(0, 20, 700, 40);
    EXPECT_EQ(weekdays, (std::vector<QString>{"Sunday", "Monday", "Tuesday", "Wednesday",
                                              "Thursday", "Friday", "Saturday"}));
}

TEST(MonthGrid, TheMonthNameIsCentredAndBold) {
    CalenderWorld world;
    world.calender->Display();
    const RecordingSurface::Printed& title = world.surface.prints.front();
    EXPECT_EQ(title.text, QStringLiteral("March"));
    EXPECT_EQ(title.x, 325);
    EXPECT_EQ(title.y, 0);
    EXPECT_TRUE(title.bold);
    EXPECT_FALSE(world.surface.prints.back().bold);
}

TEST(MonthGrid, TheHeaderBandHasTwentyOneStripsFromDarkToLight) {
    CalenderWorld world;
    world.calender->Display();
    const ColourValue head = ShiftColour(RecordingSurface::Background, -25, -5, 20);
    ASSERT_GE(world.surface.boxes.size(), 21u);
    for (int i = 0; i < 21; ++i) {
        const auto& box = world.surface.boxes[static_cast<std::size_t>(i)];
        const int shade = 3 * (i - 10);
        EXPECT_EQ(box.colour, ShiftColour(head, shade, shade, shade)) << i;
        EXPECT_EQ(box.x1, i * 35.0);
        EXPECT_EQ(box.x2, i * 35.0 + 35);
        EXPECT_EQ(box.y2, 40);
    }
}

TEST(MonthGrid, ADisabledBackColourEntryLeavesTheHeaderUnpainted) {
    CalenderWorld world;
    world.world.calender.ColourList[0].Enabled = false;
    world.calender->Display();
    for (const auto& box : world.surface.boxes) {
        EXPECT_GT(box.y2, 40);  // only the separators
    }
}

TEST(MonthGrid, TodayWithoutATitleShowsToday) {
    CalenderWorld world;  // 15 March 2000, a Wednesday: row 3, column 4
    world.calender->Display();
    EXPECT_EQ(world.CellTexts(3, 4), (std::vector<QString>{"15", "Today"}));
}

TEST(MonthGrid, TodayWithATitleShowsTheTitle) {
    CalenderWorld world;
    world.calender->Months[2].Dates[15].Title = QStringLiteral("  Ides  ");
    world.calender->Display();
    EXPECT_EQ(world.CellTexts(3, 4), (std::vector<QString>{"15", "Ides"}));
}

TEST(MonthGrid, TheRedrawKeepsTheTrimmedTitleInTheSlot) {
    CalenderWorld world;
    world.calender->Months[2].Dates[20].Title = QStringLiteral(" Meeting");
    world.calender->Display();
    EXPECT_EQ(world.calender->Months[2].Dates[20].Title, QStringLiteral("Meeting"));
}

TEST(MonthGrid, TheTodayLabelIsNeverStoredInTheSlot) {
    CalenderWorld world;
    world.calender->Display();
    EXPECT_EQ(world.calender->Months[2].Dates[15].Title, QString());
}

TEST(MonthGrid, TodayIsOnlyMarkedInItsOwnMonth) {
    CalenderWorld world;
    world.calender->DisplayMonth(4);
    for (const auto& printed : world.surface.prints) {
        EXPECT_NE(printed.text, QStringLiteral("Today"));
    }
}

TEST(MonthGrid, ALongTitleWrapsAtBlanksThenIsCutOnTheLastLine) {
    CalenderWorld world;
    world.calender->Months[2].Dates[1].Title = QStringLiteral("alpha beta gamma delta epsilon");
    world.calender->Display();  // 1 March 2000 is a Wednesday: row 1, column 4
    EXPECT_EQ(world.CellTexts(1, 4), (std::vector<QString>{"1", "alpha ", "beta ", "gamma delt"}));
}

TEST(MonthGrid, TitleLinesBreakOnlyBetweenGraphemes) {
    // Cells of ten code units: the tenth unit is a letter whose accent, or the
    // first unit of a ZWJ sequence, would be the eleventh.
    const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
    CalenderWorld world;
    world.calender->Months[2].Dates[1].Title = QStringLiteral("abcdefghie\u0301xyz");
    world.calender->Months[2].Dates[2].Title = QStringLiteral("abcdef") + family + "gh";
    world.calender->Display();  // 1 and 2 March 2000: row 1, columns 4 and 5
    EXPECT_EQ(world.CellTexts(1, 4),
              (std::vector<QString>{"1", "abcdefghi", QStringLiteral("e\u0301xyz")}));
    EXPECT_EQ(world.CellTexts(1, 5), (std::vector<QString>{"2", "abcdef", family + "gh"}));
}

TEST(MonthGrid, ATitleThatFitsIsPrintedWholeAndCentred) {
    CalenderWorld world;
    world.calender->Months[2].Dates[1].Title = QStringLiteral("Party");
    world.calender->Display();
    const auto found = std::find_if(world.surface.prints.begin(), world.surface.prints.end(),
                                    [](const auto& p) { return p.text == "Party"; });
    ASSERT_NE(found, world.surface.prints.end());
    EXPECT_EQ(found->x, 300 + 25);
    EXPECT_EQ(found->y, 40 + 20);
}

TEST(MonthGrid, BlankStretchesOfATitleAreSkippedWithoutUsingALine) {
    CalenderWorld world;
    world.calender->Months[2].Dates[1].Title = QStringLiteral("abcdefghij          klm");
    world.calender->Display();
    EXPECT_EQ(world.CellTexts(1, 4), (std::vector<QString>{"1", "abcdefghij", "klm"}));
}

TEST(MonthGrid, ACellTooNarrowForOneCharacterEndsTheTitle) {
    CalenderWorld world(2000, 3, 15, 35, 520);  // columns of 5 units, characters of 10
    world.calender->Months[2].Dates[1].Title = QStringLiteral("never shown");
    world.calender->Display();
    for (const auto& printed : world.surface.prints) {
        EXPECT_NE(printed.text, QStringLiteral("never shown"));
    }
}

TEST(MonthGrid, RowsTooLowForOneLineShowNoText) {
    CalenderWorld world(2000, 3, 15, 700, 100);  // rows of 12 units, lines of 20
    world.calender->Display();
    // The month name, the weekdays and the empty line under them.
    EXPECT_EQ(world.surface.prints.size(), 9u);
}

TEST(MonthGrid, AZeroSizedControlRedrawsWithoutHarm) {
    CalenderWorld world(2000, 3, 15, 0, 0);
    world.calender->Display();
    world.ClickAt(0, 0);
    EXPECT_EQ(world.calender->SelectedDate, CalDate{});
}

TEST(MonthGrid, APlainCellIsNotFilled) {
    CalenderWorld world;
    world.calender->Display();
    // Fills below the header: the separators, today's cell and nothing else.
    int cells = 0;
    for (const auto& box : world.surface.boxes) {
        if (box.y1 > 40 && box.x2 - box.x1 < 700 && box.x2 - box.x1 > 1) {
            ++cells;
            EXPECT_EQ(box.colour, ShiftColour(RecordingSurface::Background, 100, 0, 0));
        }
    }
    EXPECT_EQ(cells, 1);
}

TEST(MonthGrid, TodayAndSelectedShiftsAccumulate) {
    CalenderWorld world;
    world.ClickCell(1, 1);  // no redraw yet: nothing to hit
    world.calender->Display();
    world.ClickCell(3, 4);
    const ColourValue both = ShiftColour(RecordingSurface::Background, 100, 100, 0);
    const auto found = std::find_if(world.surface.boxes.begin(), world.surface.boxes.end(),
                                    [&](const auto& box) { return box.colour == both; });
    ASSERT_NE(found, world.surface.boxes.end());
    EXPECT_EQ(found->x1, 301);
    EXPECT_EQ(found->y1, 40 + 2 * 96 + 1);
    EXPECT_EQ(found->x2, 398);
    EXPECT_EQ(found->y2, 40 + 3 * 96 - 2);
}

TEST(MonthGrid, ATextColourIsResolvedOnTheCellAndThenReset) {
    CalenderWorld world;
    DateEntry& entry = world.calender->Months[2].Dates[2];
    entry.Title = QStringLiteral("red");
    entry.BackColour = ColourChoice{0, 0, 10, false, true};
    entry.TextColour = ColourChoice{50, 0, 0, false, true};
    world.calender->Display();
    const ColourValue cell = ShiftColour(RecordingSurface::Background, 0, 0, 10);
    const ColourValue text = ShiftColour(cell, 50, 0, 0);
    for (const auto& printed : world.surface.prints) {
        const bool inCell = printed.text == "2" || printed.text == "red";
        EXPECT_EQ(printed.colour, inCell ? text : RecordingSurface::WindowText) << printed.text;
    }
}

TEST(Clicks, SelectTheDayUnderThePressInTheShownMonth) {
    CalenderWorld world;
    world.calender->SelectedDate.Year = 1999;
    world.calender->Display();
    world.ClickCell(2, 5);  // 9 March 2000
    EXPECT_EQ(world.calender->SelectedDate, (CalDate{1999, 9, 3}));
    EXPECT_EQ(world.surface.clears, 2);  // the click redrew
}

TEST(Clicks, OnALeadingCellTheHeaderRowSixOrColumnEightSelectNothing) {
    CalenderWorld world;
    world.calender->Display();
    world.ClickCell(1, 1);                             // before 1 March
    world.ClickAt(150, 10);                            // the month name
    world.ClickAt(150, 39);                            // the weekday names
    world.ClickAt(350, CalenderWorld::Height);         // the very bottom edge
    world.ClickAt(CalenderWorld::Width, 300);          // the very right edge
    world.ClickAt(-5, 300);                            // left of the grid
    world.ClickAt(CalenderWorld::Width + 300, 300);    // far right
    world.ClickAt(350, CalenderWorld::Height + 1000);  // far below
    EXPECT_EQ(world.calender->SelectedDate, CalDate{});
    EXPECT_EQ(world.surface.clears, 1);
}

TEST(Clicks, DoNothingWhileTheCalenderIsOff) {
    CalenderWorld world;
    world.calender->Display();
    world.calender->SetCalenderOn(false);
    EXPECT_FALSE(world.calender->getCalenderOn(true));
    world.ClickCell(2, 5);
    EXPECT_EQ(world.calender->SelectedDate, CalDate{});
    world.calender->SetCalenderOn(true);
    EXPECT_TRUE(world.calender->getCalenderOn(false));
}

TEST(Clicks, BeforeAnyRedrawSelectNothing) {
    CalenderWorld world;
    world.ClickCell(2, 5);
    EXPECT_EQ(world.calender->SelectedDate, CalDate{});
}

TEST(Clicks, TheLastPressIsRemembered) {
    CalenderWorld world;
    world.calender->Calender_MouseDown(CalenderEvents::MouseButton::Right, 12.5, 13.5);
    EXPECT_EQ(world.calender->LastMouseX, 12);
    EXPECT_EQ(world.calender->LastMouseY, 14);
    EXPECT_EQ(world.calender->LastMouseButton, 2);
    world.calender->Calender_MouseDown(CalenderEvents::MouseButton::Left, 1e9, -1e9);
    EXPECT_EQ(world.calender->LastMouseX, 32767);
    EXPECT_EQ(world.calender->LastMouseY, -32768);
}

TEST(DisplayMonth, IgnoresAMonthOutsideTheYearButRedraws) {
    CalenderWorld world;
    world.calender->DisplayMonth(13);
    EXPECT_EQ(world.calender->GetDisplayMonth(), 3);
    world.calender->DisplayMonth(0);
    EXPECT_EQ(world.calender->GetDisplayMonth(), 3);
    EXPECT_EQ(world.surface.clears, 2);
    world.calender->DisplayMonth(12);
    EXPECT_EQ(world.calender->GetDisplayMonth(), 12);
}

TEST(TwoMonthViews, ShareOnlyTheColourListTheyAreGiven) {
    CalenderWorld world;
    RecordingSurface otherSurface(700, 520);
    Calender other(world.world.module1, world.world.calender, otherSurface);
    world.calender->Months[2].Dates[1].Title = QStringLiteral("mine");
    world.calender->DisplayMonth(5);
    other.Display();
    EXPECT_EQ(other.Months[2].Dates[1].Title.Trimmed(), QString());
    EXPECT_EQ(other.GetDisplayMonth(), 3);
    world.world.calender.ColourList[1] = MakeColourListItem("Current Date", 0, 0, 77, false, true);
    other.Display();
    const ColourValue today = ShiftColour(RecordingSurface::Background, 0, 0, 77);
    EXPECT_TRUE(std::any_of(otherSurface.boxes.begin(), otherSurface.boxes.end(),
                            [&](const auto& box) { return box.colour == today; }));
}

}  // namespace
}  // namespace kelvane
