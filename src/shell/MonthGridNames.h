#pragma once

#include "calendar/Calender.h"
#include "gui/MonthGridDescription.h"
#include "store/Store.h"

namespace kelvane {

// Reads the main window's month grid out for screen readers: each day cell
// by its weekday, day, month, title, number of activities and note, as the
// grid and the stores hold them now.
class MonthGridNames final : public MonthGridDescription {
  public:
    MonthGridNames(const Calender& calender, Store& store) : calender_(calender), store_(store) {}

    QString MonthCaption() const override;
    QString ColumnHeader(int column) const override;
    QString CellName(int row, int column) const override;
    bool CellHasDay(int row, int column) const override { return DayIn(row, column) > 0; }
    bool CellIsToday(int row, int column) const override;
    bool CellIsSelected(int row, int column) const override;
    QRectF CellArea(int row, int column) const override;
    QRectF HeaderArea(int column) const override;

  private:
    // The day drawn in a cell (rows and columns from 0), 0 for none.
    qint16 DayIn(int row, int column) const;
    QString MonthName() const;

    const Calender& calender_;
    Store& store_;
};

}  // namespace kelvane
