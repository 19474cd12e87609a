#pragma once

#include <QString>

#include "calfile/Conversions.h"
#include "calfile/Flags.h"
#include "calfile/Records.h"
#include "calfile/YearRules.h"
#include "gui/Platform.h"
#include "store/FileNumbers.h"
#include "store/MonthViewQueries.h"

namespace kelvane {

// The red (bits 0-7), green (8-15) and blue (16-23) channels of a colour.
void SplitColour(ColourValue colour, qint16& red, qint16& green, qint16& blue);
// The date of a month-day-year text ("03-07-2000"): Month from the first two
// characters, Day from the two at position 4, Year from the last four; text
// that is not a number gives 0.
CalDate DateFromText(const QString& monthDayYear);
// The program-wide state of a running Kelvane and the small utilities around
// it: the clock as last read, today's date, the unsaved-changes flag, the month
// tables, the program directory and the numbers of open files.
class Module1 {
  public:
    explicit Module1(const Platform& platform);
    Module1(const Module1&) = delete;
    Module1& operator=(const Module1&) = delete;

    // The hour and minute of the system time as ReadClock last saw it.
    qint16 CurrentHour = 0;
    qint16 CurrentMinute = 0;

    // The last system date text and the date made from it, for GetToday.
    struct TodayCacheEntry {
        QString Text;
        CalDate Date;
    } TodayCache;

    // True while the document has changes that are not saved.
    bool CalendarDirty = false;
    // True when the date editor was last closed with OK.
    bool EditAccepted = false;

    // Day slots of each month: 31, 29, 31, ... (February always has 29).
    MonthLengths DaysInMonth;
    // Real month lengths of the year the month view lays out.
    MonthLengths YearMonthLengths;

    FileNumbers Files;

    // Fills DaysInMonth; the constructor already did so.
    void FillDaysInMonth();
    // Fills YearMonthLengths from the month view's leap flag.
    void FillYearMonthLengths();

    // Reads the hour and minute of the system time into CurrentHour and CurrentMinute.
    void ReadClock();
    // The program directory with exactly one trailing separator.
    QString AppDirectory() const;
    // Today's date from the system date text, re-read only when that text changes.
    void GetToday(CalDate& today);

    // The month view's answers; without a month view: 0, no date and "No Day".
    void AttachMonthView(const MonthViewQueries* monthView) { monthView_ = monthView; }
    qint16 CalendarIsLeapYear() const;
    void GetSelectedDate(CalDate& selected) const;
    QString DayNameOf(qint16 month, qint16 day) const;

    const Platform& Services() const { return platform_; }

  private:
    Platform platform_;
    const MonthViewQueries* monthView_ = nullptr;
};

}  // namespace kelvane
