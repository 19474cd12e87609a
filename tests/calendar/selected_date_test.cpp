#include <gtest/gtest.h>

#include "support/CalenderWorld.h"

namespace kelvane {
namespace {

using testing::CalenderWorld;

DateEntry Entry(const QString& title) {
    DateEntry entry;
    entry.Title = title;
    entry.Text2 = QStringLiteral("second text");
    entry.TextColour = ColourChoice{1, 2, 3, false, true};
    entry.BackColour = ColourChoice{4, 5, 6, true, true};
    return entry;
}

TEST(Creation, SelectsNothingShowsTodaysMonthAndTakesClicks) {
    CalenderWorld world(2026, 11, 22);
    EXPECT_EQ(world.calender->SelectedDate, CalDate{});
    EXPECT_EQ(world.calender->DisplayedMonth, 11);
    EXPECT_TRUE(world.calender->CalenderOn);
    EXPECT_EQ(world.surface.clears, 0);
}

TEST(SetDate, SelectsTheDateAndLoadsItsEntryWithoutRedrawing) {
    CalenderWorld world;
    world.calender->Months[6].Dates[4] = Entry(QStringLiteral("Fourth"));
    world.calender->SetDate(2000, 7, 4);
    EXPECT_EQ(world.calender->SelectedDate, (CalDate{2000, 4, 7}));
    EXPECT_EQ(world.world.calender.CurrentEntry, Entry(QStringLiteral("Fourth")));
    EXPECT_EQ(world.world.calender.CurrentEntryDate, (CalDate{2000, 4, 7}));
    EXPECT_EQ(world.surface.clears, 0);
    qint16 y = 0, m = 0, d = 0;
    world.calender->GetDate(y, m, d);
    EXPECT_EQ(y, 2000);
    EXPECT_EQ(m, 7);
    EXPECT_EQ(d, 4);
}

TEST(UpdateSelectedDate, WithNothingSelectedLoadsToday) {
    CalenderWorld world;  // today is 15 March
    world.calender->Months[2].Dates[15] = Entry(QStringLiteral("Ides"));
    world.calender->UpdateSelectedDate(true);
    EXPECT_EQ(world.calender->SelectedDate, (CalDate{0, 15, 3}));
    EXPECT_EQ(world.world.calender.CurrentEntryDate, (CalDate{0, 15, 3}));
    EXPECT_EQ(world.world.calender.CurrentEntry.Title.Trimmed(), QStringLiteral("Ides"));
}

TEST(UpdateSelectedDate, StoresTheCurrentEntryAtItsDateAndSelectsIt) {
    CalenderWorld world;
    world.world.calender.CurrentEntry = Entry(QStringLiteral("Stored"));
    world.world.calender.CurrentEntryDate = CalDate{2000, 29, 2};
    world.calender->UpdateSelectedDate(false);
    EXPECT_EQ(world.calender->Months[1].Dates[29], Entry(QStringLiteral("Stored")));
    EXPECT_EQ(world.calender->SelectedDate, (CalDate{2000, 29, 2}));
    EXPECT_EQ(world.surface.clears, 0);  // February is not shown
}

TEST(UpdateSelectedDate, RedrawsWhenTheStoredDateIsInTheShownMonth) {
    CalenderWorld world;
    world.world.calender.CurrentEntry = Entry(QStringLiteral("Shown"));
    world.world.calender.CurrentEntryDate = CalDate{2000, 3, 3};
    world.calender->UpdateSelectedDate(false);
    EXPECT_EQ(world.surface.clears, 1);
}

TEST(UpdateSelectedDate, WithoutADateStoresAtTodayAndKeepsTheSelection) {
    CalenderWorld world;
    world.calender->SelectedDate = CalDate{2000, 5, 6};
    world.world.calender.CurrentEntry = Entry(QStringLiteral("Today's"));
    world.world.calender.CurrentEntryDate = CalDate{2000, 0, 4};
    world.calender->UpdateSelectedDate(false);
    EXPECT_EQ(world.calender->Months[2].Dates[15], Entry(QStringLiteral("Today's")));
    EXPECT_EQ(world.calender->SelectedDate, (CalDate{2000, 5, 6}));
}

TEST(UpdateSelectedDate, KeepsTheTitleOfFebruary29InACommonYear) {
    CalenderWorld world(2001, 1, 1);
    world.world.calender.CurrentEntry = Entry(QStringLiteral("Leap day"));
    world.world.calender.CurrentEntryDate = CalDate{2000, 29, 2};
    world.calender->UpdateSelectedDate(false);
    world.calender->SetDate(2000, 2, 29);
    EXPECT_EQ(world.world.calender.CurrentEntry.Title.Trimmed(), QStringLiteral("Leap day"));
}

TEST(UpdateSelectedDate, ADateWithoutASlotLoadsAnEmptyEntryThatIsNeverStored) {
    CalenderWorld world;
    world.calender->Months[4].Dates[5] = Entry(QStringLiteral("May the 5th"));
    world.world.calender.CurrentEntry = Entry(QStringLiteral("May the 5th"));
    world.world.calender.CurrentEntryDate = CalDate{2000, 5, 5};
    world.calender->SetDate(2000, 13, 40);
    EXPECT_EQ(world.world.calender.CurrentEntry, DateEntry{});
    EXPECT_EQ(world.world.calender.CurrentEntryDate, (CalDate{2000, 40, 13}));

    world.world.calender.CurrentEntry = Entry(QStringLiteral("Edited"));
    world.calender->UpdateSelectedDate(false);
    EXPECT_EQ(world.calender->Months[4].Dates[5], Entry(QStringLiteral("May the 5th")));
    world.calender->Months[4].Dates[5] = DateEntry{};

    world.world.calender.CurrentEntryDate = CalDate{2000, 36, 1};
    world.calender->UpdateSelectedDate(false);
    world.world.calender.CurrentEntryDate = CalDate{2000, -2, 1};
    world.calender->UpdateSelectedDate(false);
    world.world.calender.CurrentEntryDate = CalDate{2000, 1, 13};
    world.calender->UpdateSelectedDate(false);
    for (const MonthInfo& month : world.calender->Months) {
        for (const DateEntry& date : month.Dates) {
            EXPECT_EQ(date, DateEntry{});
        }
    }
}

TEST(Fonts, GetFontGivesTheNameAndTheRoundedSize) {
    CalenderWorld world;
    world.surface.SetFontName(QStringLiteral("Courier"));
    world.surface.SetFontSize(10.5);
    QString name;
    qint16 size = 0;
    world.calender->GetFont(name, size);
    EXPECT_EQ(name, QStringLiteral("Courier"));
    EXPECT_EQ(size, 10);
    world.surface.SetFontSize(11.5);
    world.calender->GetFont(name, size);
    EXPECT_EQ(size, 12);
}

TEST(Fonts, SetFontMakesThePlainFontAndRedraws) {
    CalenderWorld world;
    world.surface.SetFontItalic(true);
    world.surface.SetFontUnderline(true);
    world.calender->SetFont(QStringLiteral("Times"), 14);
    EXPECT_EQ(world.surface.FontName(), QStringLiteral("Times"));
    EXPECT_EQ(world.surface.FontSize(), 14);
    EXPECT_FALSE(world.surface.Bold());
    EXPECT_FALSE(world.surface.Italic());
    EXPECT_FALSE(world.surface.Underline());
    EXPECT_EQ(world.surface.clears, 1);
}

TEST(Fonts, SetFontWithSizeZeroChangesTheNameOnly) {
    CalenderWorld world;
    world.calender->SetFont(QStringLiteral("Arial"), 12);
    world.calender->SetFont(QStringLiteral("Verdana"), 0);
    EXPECT_EQ(world.surface.FontName(), QStringLiteral("Verdana"));
    EXPECT_EQ(world.surface.FontSize(), 12);
    world.calender->SetFont(QStringLiteral("Verdana"), -4);
    EXPECT_EQ(world.surface.FontSize(), 12);
}

TEST(CalenderSavePicture, PassesTheSurfacesFailureOn) {
    CalenderWorld world;
    QString error;
    EXPECT_FALSE(world.calender->CalenderSavePicture(QStringLiteral("x.bmp"), error));
    EXPECT_EQ(error, QStringLiteral("nothing to save"));
}

}  // namespace
}  // namespace kelvane
