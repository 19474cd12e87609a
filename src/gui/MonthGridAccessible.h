#pragma once

#include <QAccessibleWidget>

#include <array>

#include "gui/MonthGridDescription.h"

namespace kelvane {

class SurfaceWidget;

// The month grid as a screen reader sees it: a table whose first seven
// children are the weekday names and whose next 35 are the day cells, row by
// row. Everything is read from the grid's description when asked.
class MonthGridAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    static constexpr int HeaderCount = MonthGridDescription::Columns;
    static constexpr int CellCount = MonthGridDescription::Rows * MonthGridDescription::Columns;

    explicit MonthGridAccessible(SurfaceWidget* widget);
    ~MonthGridAccessible() override;

    const MonthGridDescription* Description() const;
    SurfaceWidget* Widget() const;
    // The child index of a cell; rows and columns count from 0.
    static int CellIndex(int row, int column) { return HeaderCount + row * 7 + column; }

    void* interface_cast(QAccessible::InterfaceType type) override;
    QString text(QAccessible::Text t) const override;
    int childCount() const override { return HeaderCount + CellCount; }
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int) const override { return QString(); }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return 0; }
    int columnCount() const override { return MonthGridDescription::Columns; }
    int rowCount() const override { return MonthGridDescription::Rows; }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override { return {}; }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

  private:
    // Made when first asked for, kept until the table goes.
    mutable std::array<QAccessible::Id, HeaderCount + CellCount> children_{};
};

// Gives the month grid's widget its table interface once it has a description.
QAccessibleInterface* MonthGridAccessibleFactory(const QString& className, QObject* object);

}  // namespace kelvane
