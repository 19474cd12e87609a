#pragma once

#include <QPoint>
#include <QRectF>
#include <QString>

#include <optional>

namespace kelvane {

// What a screen reader is told about the month grid: a table of 7 columns by
// 5 rows under a row of weekday names. Rows and columns count from 0 here.
class MonthGridDescription {
  public:
    static constexpr int Rows = 5;
    static constexpr int Columns = 7;

    virtual ~MonthGridDescription() = default;

    // The month shown, such as "July".
    virtual QString MonthCaption() const = 0;
    // The weekday name over a column.
    virtual QString ColumnHeader(int column) const = 0;
    // What a cell reads, such as "Tuesday 17 July, Stand-up day, 2 activities,
    // a note"; empty for a cell without a day.
    virtual QString CellName(int row, int column) const = 0;
    virtual bool CellHasDay(int row, int column) const = 0;
    virtual bool CellIsToday(int row, int column) const = 0;
    virtual bool CellIsSelected(int row, int column) const = 0;
    // The cell's area in the widget's own units; empty before the first drawing.
    virtual QRectF CellArea(int row, int column) const = 0;
    // The area of the weekday names over a column.
    virtual QRectF HeaderArea(int column) const = 0;

    // The selected day's cell, x the column and y the row; none when the
    // selected day is not in the month shown.
    std::optional<QPoint> SelectedCell() const {
        for (int row = 0; row < Rows; ++row) {
            for (int column = 0; column < Columns; ++column) {
                if (CellIsSelected(row, column)) {
                    return QPoint(column, row);
                }
            }
        }
        return std::nullopt;
    }
};

}  // namespace kelvane
