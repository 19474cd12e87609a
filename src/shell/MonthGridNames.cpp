#include "shell/MonthGridNames.h"

#include "store/DateInWords.h"

namespace kelvane {

namespace {

bool InGrid(int row, int column) {
    return row >= 0 && row < MonthGridDescription::Rows && column >= 0 &&
           column < MonthGridDescription::Columns;
}

}  // namespace

qint16 MonthGridNames::DayIn(int row, int column) const {
    if (!InGrid(row, column)) {
        return 0;
    }
    return calender_.CellMap[row + 1][column + 1];
}

QString MonthGridNames::MonthName() const {
    const qint16 month = calender_.GetDisplayMonth();
    return calender_.Months[static_cast<std::size_t>(month - 1)].Name.Trimmed();
}

QString MonthGridNames::MonthCaption() const {
    return MonthName();
}

QString MonthGridNames::ColumnHeader(int column) const {
    return WeekdayName(static_cast<qint16>(column + 1));
}

QString MonthGridNames::CellName(int row, int column) const {
    const qint16 day = DayIn(row, column);
    if (day <= 0) {
        return QString();
    }
    const qint16 month = calender_.GetDisplayMonth();
    QStringList parts{DateInWords(calender_, month, day)};
    const QString title =
        calender_.Months[static_cast<std::size_t>(month - 1)].Dates[day].Title.Trimmed();
    if (!title.isEmpty()) {
        parts.append(title);
    }
    const QString key = MakeDateKey(month, day);
    const qint16 activities = store_.appointments.CountStoredAppointments(key);
    if (activities == 1) {
        parts.append(QStringLiteral("1 activity"));
    } else if (activities > 1) {
        parts.append(QStringLiteral("%1 activities").arg(activities));
    }
    if (store_.diary.HasStoredNote(key)) {
        parts.append(QStringLiteral("a note"));
    }
    return parts.join(QStringLiteral(", "));
}

// The year is not compared, as the grid does not compare it when it marks today.
bool MonthGridNames::CellIsToday(int row, int column) const {
    const qint16 day = DayIn(row, column);
    if (day <= 0) {
        return false;
    }
    CalDate today;
    store_.module1.GetToday(today);
    return today.Month == calender_.GetDisplayMonth() && today.Day == day;
}

bool MonthGridNames::CellIsSelected(int row, int column) const {
    const qint16 day = DayIn(row, column);
    return day > 0 && calender_.SelectedDate.Month == calender_.GetDisplayMonth() &&
           calender_.SelectedDate.Day == day;
}

QRectF MonthGridNames::CellArea(int row, int column) const {
    return InGrid(row, column) ? calender_.CellArea(row + 1, column + 1) : QRectF();
}

QRectF MonthGridNames::HeaderArea(int column) const {
    return InGrid(0, column) ? calender_.WeekdayArea(column + 1) : QRectF();
}

}  // namespace kelvane
