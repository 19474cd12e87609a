#pragma once

#include <QRectF>
#include <QString>

#include <array>

#include "calendar/MonthInfo.h"
#include "gui/CalenderEvents.h"
#include "gui/DrawingSurface.h"
#include "store/CalenderMOD.h"
#include "store/Module1.h"
#include "store/MonthViewControl.h"

namespace kelvane {

// The month view: it keeps the year's month table and every date's title and
// colours, draws one month as a grid of 7 columns by 5 rows on a surface, and
// turns a click on a day into the selected date. It raises no events; hosts
// read GetDate when they need the selection.
class Calender final : public MonthViewControl, public CalenderEvents {
  public:
    // Rows and columns of the grid, numbered from 1; column 8 is the sliver
    // right of the last column and never holds a day.
    using CellRow = OneBased<qint16, 8>;
    using CellTable = OneBased<CellRow, 5>;

    // Sets up today's year with every date cleared, showing today's month.
    // `shared` supplies the colour scheme and the current date entry.
    Calender(Module1& module1, CalenderMOD& shared, DrawingSurface& surface);
    Calender(const Calender&) = delete;
    Calender& operator=(const Calender&) = delete;

    // The weekday (1..7) of a day of a month of the current year; a day outside
    // the month counts as the 1st; -1 for a month outside 1..12.
    qint16 WhichDay(qint16 intM, qint16 intD) const override;
    qint16 GetDisplayMonth() const { return DisplayedMonth; }
    qint16 gLeapYear() const override { return LeapYear; }
    void GetDate(qint16& y, qint16& m, qint16& d) const override;
    // Selects a date and loads its entry into the current date entry. Redraws
    // only when the highlighted cell of the shown month would otherwise be wrong.
    void SetDate(qint16 y, qint16 m, qint16 d) override;
    // `way` false sets the year up from a leap indicator and a weekday of
    // 1 January; true gives today's year and the weekday of 1 January.
    void FirstDayandYear(qint16& yy, qint16& dd, bool way) override;
    // True loads the selected date's entry into the current date entry; false
    // stores the current date entry back and redraws when its month is shown.
    // Either way a selection that moved is shown at once.
    void UpdateSelectedDate(bool blnGet) override;
    void GetFont(QString& strName, qint16& size) const override;
    // A new font name, and size when above 0, in plain style; then a redraw.
    void SetFont(const QString& strName, qint16 size) override;
    // Writes the picture the last redraw left as a bitmap file, whole or not at
    // all; false with the reason in `error` when it cannot be written.
    bool CalenderSavePicture(const QString& strFileName, QString& error) const;
    void SetCalenderOn(bool bb) { CalenderOn = bb; }
    bool getCalenderOn(bool /*bb*/) const { return CalenderOn; }
    // Shows month m (ignored outside 1..12) and redraws.
    void DisplayMonth(qint16 m);
    // Selects a day of the year as a click on it would, showing its month;
    // the year is left as it is. Ignored while clicks select nothing.
    void SelectDateAndShowItsMonth(const CalDate& to);
    // A cell's area (rows 1..5, columns 1..7) as the last redraw laid the grid
    // out; empty before the first redraw.
    QRectF CellArea(int row, int column) const;
    // The area of a column's weekday name.
    QRectF WeekdayArea(int column) const;
    void Display() override;

    // Fills LeapYear and the month table. A yy of 0 works the year out from
    // today's date; any other yy is a leap indicator (above 0 leap), never a
    // year. A dd of 1..7 is the weekday of 1 January; otherwise dd receives the
    // weekday worked out, or 1 when there is none.
    void InitializeVariables(qint16 yy, qint16& dd, bool clearDates) override;

    void Calender_Resize() override { Display(); }
    void Calender_MouseDown(MouseButton button, double x, double y) override;
    void Calender_Click() override;

    // Index 0 is January.
    std::array<MonthInfo, 12> Months;
    qint16 LeapYear = 0;
    // Day 0 or Month 0: nothing selected.
    CalDate SelectedDate;
    // The selected date as the last redraw highlighted it.
    CalDate HighlightedDate;
    qint16 DisplayedMonth = 1;
    // True while clicks select dates.
    bool CalenderOn = true;
    // Top of the first date row and the day drawn in each cell, as the last
    // redraw left them.
    qint32 GridTop = 0;
    CellTable CellMap;
    // Top of the weekday names, as the last redraw left it.
    double WeekdayTop = 0;
    qint16 LastMouseX = 0;
    qint16 LastMouseY = 0;
    qint16 LastMouseButton = 0;

  private:
    struct Grid;

    // Holds nest; the last release redraws when a redraw was asked for
    // meanwhile or the selection moved away from the highlighted cell. Taken
    // through RedrawsHeld only.
    void HoldRedraws(bool hold) override;

    MonthInfo& MonthOf(qint16 month) { return Months[static_cast<std::size_t>(month - 1)]; }
    const MonthInfo& MonthOf(qint16 month) const {
        return Months[static_cast<std::size_t>(month - 1)];
    }
    CalDate Today() const;
    qint16 SetLeapYearAndFirstWeekday(qint16 yy);
    void LayOutMonths(qint16 firstDay);
    void ClearDates();
    // The trimmed name of month m, after clamping m into 1..12.
    QString MonthName(qint16& m) const;

    void DrawHeader(const Grid& grid);
    void DrawWeekdays(Grid& grid);
    void DrawRows(Grid& grid);
    void DrawDay(const Grid& grid, qint16 day, int row, int col, const CalDate& today);
    ColourValue CellColour(ColourValue base, const DateEntry& entry, qint16 day,
                           const CalDate& today) const;
    void DrawTitle(const Grid& grid, QString title, int row, int col);
    void PrintAt(const QString& text, double x, double y);

    void Redraw();
    // True when the shown month highlights another date than the selected one.
    bool HighlightIsStale() const;
    // Redraws (or asks for a redraw when held) when the highlight is stale.
    void RedrawIfHighlightStale();

    Module1& module1_;
    CalenderMOD& shared_;
    DrawingSurface& surface_;
    int redrawHolds_ = 0;
    bool redrawPending_ = false;
};

}  // namespace kelvane
