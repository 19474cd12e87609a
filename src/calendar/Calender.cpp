#include "calendar/Calender.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "calfile/ReplacingFile.h"
#include "calfile/YearRules.h"

namespace kelvane {

namespace {

bool IsWeekday(int number) {
    return number >= 1 && number <= 7;
}

bool IsDateSlot(int month, int day) {
    return month >= 1 && month <= 12 && day >= 0 && day < DateSlotsPerMonth;
}

qint16 RoundToInteger16(double value) {
    const double rounded = RoundHalfEven(value);
    return static_cast<qint16>(std::clamp<double>(rounded, std::numeric_limits<qint16>::min(),
                                                  std::numeric_limits<qint16>::max()));
}

}  // namespace

Calender::Calender(Module1& module1, CalenderMOD& shared, DrawingSurface& surface)
    : module1_(module1), shared_(shared), surface_(surface) {
    SelectedDate = CalDate{};
    const qint16 month = Today().Month;
    DisplayedMonth = (month >= 1 && month <= 12) ? month : qint16{1};
    CalenderOn = true;
    qint16 dd = 0;
    InitializeVariables(0, dd, true);
}

CalDate Calender::Today() const {
    CalDate today;
    module1_.GetToday(today);
    return today;
}

qint16 Calender::WhichDay(qint16 intM, qint16 intD) const {
    if (intM < 1 || intM > 12) {
        return -1;
    }
    const MonthInfo& month = MonthOf(intM);
    const int day = (intD < 1 || intD > month.Days) ? 1 : intD;
    return static_cast<qint16>((month.FirstDay + day - 2) % 7 + 1);
}

void Calender::GetDate(qint16& y, qint16& m, qint16& d) const {
    y = SelectedDate.Year;
    m = SelectedDate.Month;
    d = SelectedDate.Day;
}

void Calender::SetDate(qint16 y, qint16 m, qint16 d) {
    SelectedDate = CalDate{y, d, m};
    UpdateSelectedDate(true);
}

bool Calender::HighlightIsStale() const {
    const bool sameDate =
        SelectedDate.Month == HighlightedDate.Month && SelectedDate.Day == HighlightedDate.Day;
    return !sameDate &&
           (SelectedDate.Month == DisplayedMonth || HighlightedDate.Month == DisplayedMonth);
}

void Calender::RedrawIfHighlightStale() {
    if (HighlightIsStale()) {
        Display();
    }
}

void Calender::FirstDayandYear(qint16& yy, qint16& dd, bool way) {
    if (way) {
        yy = Today().Year;
        dd = Months[0].FirstDay;
    } else {
        InitializeVariables(yy, dd, false);
    }
}

void Calender::UpdateSelectedDate(bool blnGet) {
    if (blnGet) {
        if (SelectedDate.Day == 0 || SelectedDate.Month == 0) {
            const CalDate today = Today();
            SelectedDate.Day = today.Day;
            SelectedDate.Month = today.Month;
        }
        // A date no slot belongs to loads an empty entry, which a later store
        // refuses, so edits made for it can never land on another date.
        shared_.CurrentEntry = IsDateSlot(SelectedDate.Month, SelectedDate.Day)
                                   ? MonthOf(SelectedDate.Month).Dates[SelectedDate.Day]
                                   : DateEntry{};
        shared_.CurrentEntryDate = SelectedDate;
        RedrawIfHighlightStale();
        return;
    }
    const CalDate& entryDate = shared_.CurrentEntryDate;
    if (entryDate.Day != 0 && entryDate.Month >= 1) {
        if (!IsDateSlot(entryDate.Month, entryDate.Day)) {
            return;  // nowhere to keep it
        }
        MonthOf(entryDate.Month).Dates[entryDate.Day] = shared_.CurrentEntry;
        SelectedDate = entryDate;
    } else {
        const CalDate today = Today();
        if (!IsDateSlot(today.Month, today.Day)) {
            return;
        }
        MonthOf(today.Month).Dates[today.Day] = shared_.CurrentEntry;
    }
    if (DisplayedMonth == SelectedDate.Month) {
        Display();
    } else {
        RedrawIfHighlightStale();
    }
}

void Calender::GetFont(QString& strName, qint16& size) const {
    strName = surface_.FontName();
    size = RoundToInteger16(surface_.FontSize());
}

void Calender::SetFont(const QString& strName, qint16 size) {
    surface_.SetFontName(strName);
    if (size > 0) {
        surface_.SetFontSize(size);
    }
    surface_.SetFontBold(false);
    surface_.SetFontItalic(false);
    surface_.SetFontUnderline(false);
    Display();
}

bool Calender::CalenderSavePicture(const QString& strFileName, QString& error) const {
    QByteArray bitmap;
    return surface_.EncodePicture(bitmap, error) &&
           ReplaceFileContent(strFileName, bitmap, error,
                              module1_.Services().Directory.UserDataPath());
}

void Calender::DisplayMonth(qint16 m) {
    if (m >= 1 && m <= 12) {
        DisplayedMonth = m;
    }
    Display();
}

void Calender::SelectDateAndShowItsMonth(const CalDate& to) {
    if (!CalenderOn || !IsDateSlot(to.Month, to.Day) || to.Day < 1) {
        return;
    }
    SelectedDate.Day = to.Day;
    SelectedDate.Month = to.Month;
    DisplayedMonth = to.Month;
    Display();
}

QRectF Calender::CellArea(int row, int column) const {
    const double width = surface_.ScaleWidth() / 7;
    const double height = (surface_.ScaleHeight() - GridTop) / 5;
    if (GridTop <= 0 || width <= 0 || height <= 0) {
        return QRectF();
    }
    return QRectF((column - 1) * width, GridTop + (row - 1) * height, width, height);
}

QRectF Calender::WeekdayArea(int column) const {
    const double width = surface_.ScaleWidth() / 7;
    if (GridTop <= 0 || width <= 0) {
        return QRectF();
    }
    return QRectF((column - 1) * width, WeekdayTop, width, GridTop - WeekdayTop);
}

void Calender::InitializeVariables(qint16 yy, qint16& dd, bool clearDates) {
    const qint16 first = SetLeapYearAndFirstWeekday(yy);
    qint16 firstDay = first;
    if (IsWeekday(dd)) {
        firstDay = dd;
    } else {
        dd = first;
        if (!IsWeekday(first)) {
            dd = 1;
            firstDay = 1;
        }
    }
    LayOutMonths(firstDay);
    if (clearDates) {
        ClearDates();
    }
}

// Sets LeapYear and gives the weekday of 1 January, or 0 when yy is a leap
// indicator; a yy of 0 stands for today's year.
qint16 Calender::SetLeapYearAndFirstWeekday(qint16 yy) {
    if (yy != 0) {
        LeapYear = yy > 0 ? 1 : 0;
        return 0;
    }
    const int year = Today().Year;
    LeapYear = LeapYearRule(year);
    return FirstWeekdayOfCalendarYear(year);
}

void Calender::LayOutMonths(qint16 firstDay) {
    const YearMonthDays commonYear = MonthDaysOf(false);
    int first = firstDay;
    for (std::size_t i = 0; i < Months.size(); ++i) {
        MonthInfo& month = Months[i];
        month.Name = kelvane::MonthName(static_cast<int>(i) + 1);
        month.Days = commonYear[i];
        if (i == 1) {
            month.Days = static_cast<qint16>(month.Days + LeapYear);
        }
        month.FirstDay = static_cast<qint16>(first);
        first += month.Days;
        while (first > 7) {
            first -= 7;
        }
    }
}

void Calender::ClearDates() {
    for (MonthInfo& month : Months) {
        month.Dates.fill(DateEntry{});
    }
}

QString Calender::MonthName(qint16& m) const {
    m = std::clamp<qint16>(m, 1, 12);
    return MonthOf(m).Name.Trimmed();
}

void Calender::Calender_MouseDown(MouseButton button, double x, double y) {
    LastMouseX = RoundToInteger16(x);
    LastMouseY = RoundToInteger16(y);
    LastMouseButton = static_cast<qint16>(button);
}

void Calender::Calender_Click() {
    if (!CalenderOn || LastMouseY < GridTop) {
        return;
    }
    const double rowHeight = (surface_.ScaleHeight() - GridTop) / 5;
    const double columnWidth = surface_.ScaleWidth() / 7;
    if (rowHeight <= 0 || columnWidth <= 0) {
        return;
    }
    const double column = std::floor(LastMouseX / columnWidth) + 1;
    const double row = std::floor((LastMouseY - GridTop) / rowHeight) + 1;
    // The very bottom edge gives row 6 and the right edge column 8; neither holds a day.
    if (!CellTable::Contains(static_cast<long long>(row)) ||
        !CellRow::Contains(static_cast<long long>(column))) {
        return;
    }
    const qint16 day = CellMap[static_cast<int>(row)][static_cast<int>(column)];
    if (day < 1) {
        return;
    }
    SelectedDate.Day = day;
    SelectedDate.Month = DisplayedMonth;
    Display();
}

}  // namespace kelvane
