// The month view's redraw: a header band with the month's name, a row of
// weekday names, five rows of seven day cells with raised separators, and in
// each cell the day number and as much of the title as fits.
#include "calendar/Calender.h"
#include "calendar/TextFitting.h"

namespace kelvane {

namespace {

using LineEnd = DrawingSurface::LineEnd;

constexpr int kRows = 5;
constexpr int kColumns = 7;
constexpr int kHeaderStrips = 21;

}  // namespace

// Colours and measures shared by the steps of one redraw.
struct Calender::Grid {
    ColourValue base = 0;
    ColourValue shadow = 0;
    ColourValue highlight = 0;
    double width = 0;
    double height = 0;
    double columnWidth = 0;
    double rowHeight = 0;
    double headTop = 0;
};

void Calender::Display() {
    if (redrawHolds_ > 0) {
        redrawPending_ = true;
        return;
    }
    Redraw();
}

void Calender::HoldRedraws(bool hold) {
    if (hold) {
        ++redrawHolds_;
        return;
    }
    Q_ASSERT(redrawHolds_ > 0);
    if (redrawHolds_ == 0 || --redrawHolds_ > 0) {
        return;
    }
    if (redrawPending_ || HighlightIsStale()) {
        redrawPending_ = false;
        Redraw();
    }
}

void Calender::Redraw() {
    // A surface without area shows nothing; its first resize redraws.
    if (surface_.ScaleWidth() <= 0 || surface_.ScaleHeight() <= 0) {
        return;
    }
    HighlightedDate = SelectedDate;
    surface_.Clear();
    surface_.SetFontBold(true);
    surface_.SetTextColour(surface_.WindowTextColour());

    Grid grid;
    grid.base = surface_.ColourAt(0, 0);
    grid.shadow = ShiftColour(grid.base, -50, -50, -50);
    grid.highlight = ShiftColour(grid.base, 50, 50, 50);
    grid.width = surface_.ScaleWidth();
    grid.height = surface_.ScaleHeight();
    grid.columnWidth = grid.width / kColumns;

    DrawHeader(grid);
    surface_.SetFontBold(false);
    DrawWeekdays(grid);
    DrawRows(grid);

    const CalDate today = Today();
    const MonthInfo& month = MonthOf(DisplayedMonth);
    int col = month.FirstDay;
    int row = 1;
    for (qint16 day = 1; day <= month.Days; ++day) {
        DrawDay(grid, day, row, col, today);
        if (++col == 8) {
            col = 1;
            // Days past the fifth row go into the empty leading cells of the first.
            row = row == kRows ? 1 : row + 1;
        }
    }
    surface_.DrawingDone();
}

// The gradient band behind the month's name, then the name centred on it.
void Calender::DrawHeader(const Grid& grid) {
    const QString name = MonthName(DisplayedMonth);  // also brings the month into 1..12
    const double strip = grid.width / 20;
    const double textHeight = surface_.TextHeight(name);
    const ColourListItem& band = shared_.ColourList[0];
    if (band.Enabled) {
        const ColourValue head =
            ShiftColour(band.Absolute ? 0 : grid.base, band.Red, band.Green, band.Blue);
        for (int i = 0; i < kHeaderStrips; ++i) {
            const int shade = 3 * (i - 10);
            surface_.FillBox(i * strip, 0, i * strip + strip, 2 * textHeight,
                             ShiftColour(head, shade, shade, shade));
        }
    }
    surface_.SetCurrentY(0);
    surface_.SetCurrentX(CentreOffset(surface_, grid.width, name));
    surface_.Print(name, LineEnd::NewLine);
}

// The weekday names over the columns, with a raised separator down the whole
// height right of each column. Leaves the top of the labels in grid.headTop.
void Calender::DrawWeekdays(Grid& grid) {
    grid.headTop = surface_.CurrentY();
    WeekdayTop = grid.headTop;
    const double cw = grid.columnWidth;
    for (qint16 n = 1; n <= kColumns; ++n) {
        const QString label = FitText(surface_, WeekdayName(n), RoundHalfEven(cw));
        surface_.SetCurrentX((n - 1) * cw + CentreOffset(surface_, cw, label));
        surface_.SetCurrentY(grid.headTop);
        surface_.Print(label, LineEnd::StayOnLine);
        const double x = RoundHalfEven(n * cw);
        surface_.FillBox(x - 1, grid.headTop, x, grid.height, grid.highlight);
        surface_.DrawLine(x, grid.headTop, x, grid.height, grid.shadow);
    }
}

// The line under the weekday names and a raised line under each row. Sets
// GridTop and grid.rowHeight, and empties the cell map for the days about to be
// drawn.
void Calender::DrawRows(Grid& grid) {
    surface_.SetCurrentY(grid.headTop);
    surface_.Print(QString(), LineEnd::NewLine);
    grid.rowHeight = (grid.height - surface_.CurrentY()) / kRows;
    GridTop = static_cast<qint32>(RoundHalfEven(surface_.CurrentY()));

    surface_.DrawLine(0, GridTop, grid.width, GridTop, grid.shadow);
    for (int r = 1; r <= kRows; ++r) {
        const double y = r * grid.rowHeight + GridTop;
        surface_.FillBox(0, y - 1, grid.width, y, grid.highlight);
        surface_.DrawLine(0, y, grid.width, y, grid.shadow);
        CellMap[r].Fill(0);
    }
}

void Calender::DrawDay(const Grid& grid, qint16 day, int row, int col, const CalDate& today) {
    CellMap[row][col] = day;
    DateEntry& entry = MonthOf(DisplayedMonth).Dates[day];
    QString title = entry.Title.Trimmed();
    entry.Title = title;  // the slot keeps the trimmed title

    const ColourValue cell = CellColour(grid.base, entry, day, today);
    const double cw = grid.columnWidth;
    const double rh = grid.rowHeight;
    const double top = (row - 1) * rh + GridTop;
    if (cell != grid.base) {
        surface_.FillBox((col - 1) * cw + 1, top + 1, col * cw - 2, row * rh + GridTop - 2, cell);
    }
    if (DisplayedMonth == today.Month && day == today.Day && title.isEmpty()) {
        title = QStringLiteral("Today");
    }

    const QString number = FitText(surface_, QString::number(day), cw);
    if (surface_.TextHeight(number) <= rh) {
        if (entry.TextColour.Enabled) {
            surface_.SetTextColour(ResolveColour(cell, entry.TextColour));
        }
        PrintAt(number, (col - 1) * cw + CentreOffset(surface_, cw, number), top);
        DrawTitle(grid, title, row, col);
    }
    if (entry.TextColour.Enabled) {
        surface_.SetTextColour(surface_.WindowTextColour());
    }
}

// The cell starts from the grid's base colour; the date's back colour, then
// today's and the selection's colours are laid over it in turn. The year is not
// compared.
ColourValue Calender::CellColour(ColourValue base, const DateEntry& entry, qint16 day,
                                 const CalDate& today) const {
    ColourValue cell = base;
    if (entry.BackColour.Enabled) {
        cell = ResolveColour(cell, entry.BackColour);
    }
    if (DisplayedMonth == today.Month && day == today.Day) {
        cell = ResolveColour(cell, ChoiceOf(shared_.ColourList[1]));
    }
    if (DisplayedMonth == SelectedDate.Month && day == SelectedDate.Day) {
        cell = ResolveColour(cell, ChoiceOf(shared_.ColourList[2]));
    }
    return cell;
}

// The title under the day number, one line per text height while lines fit:
// lines with more to follow break after a blank where they can, the last line
// is cut wherever the cell ends.
void Calender::DrawTitle(const Grid& grid, QString title, int row, int col) {
    const double cw = grid.columnWidth;
    const double rh = grid.rowHeight;
    const double lineHeight = surface_.TextHeight(title);
    int k = 1;
    while (!title.isEmpty() && (k + 1) * lineHeight < rh) {
        const bool moreLinesFollow = (k + 2) * lineHeight < rh;
        QString line;
        if (moreLinesFollow && TextFits(surface_, title, cw)) {
            line = title;
        } else {
            line = FitText(surface_, title, cw);
            if (line.isEmpty()) {
                break;  // not even one character fits the cell
            }
            if (moreLinesFollow) {
                line = CutAtLastBlank(line);
            }
        }
        title.remove(0, line.size());
        if (Trim(line).isEmpty()) {
            continue;
        }
        PrintAt(line, (col - 1) * cw + CentreOffset(surface_, cw, line),
                (row - 1) * rh + GridTop + k * lineHeight);
        ++k;
    }
}

void Calender::PrintAt(const QString& text, double x, double y) {
    surface_.SetCurrentX(x);
    surface_.SetCurrentY(y);
    surface_.Print(text, LineEnd::StayOnLine);
}

}  // namespace kelvane
