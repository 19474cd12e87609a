#include "store/Module1.h"

#include <QDir>

namespace kelvane {

namespace {

bool EndsWithSeparator(const QString& path) {
    if (path.endsWith(QDir::separator())) {
        return true;
    }
#ifdef Q_OS_WIN
    return path.endsWith(QLatin1Char('/'));
#else
    return false;
#endif
}

}  // namespace

void SplitColour(ColourValue colour, qint16& red, qint16& green, qint16& blue) {
    red = static_cast<qint16>(colour & 0xFF);
    green = static_cast<qint16>((colour >> 8) & 0xFF);
    blue = static_cast<qint16>((colour >> 16) & 0xFF);
}

CalDate DateFromText(const QString& monthDayYear) {
    CalDate date;
    date.Year = Val16(monthDayYear.right(4));
    date.Day = Val16(monthDayYear.mid(3, 2));
    date.Month = Val16(monthDayYear.left(2));
    return date;
}

Module1::Module1(const Platform& platform) : platform_(platform) {
    FillDaysInMonth();
    FillYearMonthLengths();
}

void Module1::FillDaysInMonth() {
    for (int month = 1; month <= 12; ++month) {
        DaysInMonth[month] = SlotsPerMonth[static_cast<std::size_t>(month - 1)];
    }
}

void Module1::FillYearMonthLengths() {
    YearMonthLengths = DaysInMonth;
    YearMonthLengths[2] = static_cast<qint16>(28 + CalendarIsLeapYear());
}

void Module1::ReadClock() {
    const QString time = platform_.Clock.TimeText();
    CurrentHour = Val16(time.left(2));
    CurrentMinute = Val16(time.mid(3, 2));
}

QString Module1::AppDirectory() const {
    QString directory = platform_.Directory.Path();
    if (!EndsWithSeparator(directory)) {
        directory += QDir::separator();
    }
    return directory;
}

void Module1::GetToday(CalDate& today) {
    const QString text = platform_.Clock.DateText();
    if (text != TodayCache.Text) {
        TodayCache.Text = text;
        TodayCache.Date = DateFromText(text);
    }
    today = TodayCache.Date;
}

qint16 Module1::CalendarIsLeapYear() const {
    return monthView_ ? monthView_->gLeapYear() : 0;
}

void Module1::GetSelectedDate(CalDate& selected) const {
    selected = CalDate{};
    if (monthView_) {
        monthView_->GetDate(selected.Year, selected.Month, selected.Day);
    }
}

QString Module1::DayNameOf(qint16 month, qint16 day) const {
    return WeekdayName(monthView_ ? monthView_->WhichDay(month, day) : qint16{-1});
}

}  // namespace kelvane
