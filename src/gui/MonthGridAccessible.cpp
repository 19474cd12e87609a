#include "gui/MonthGridAccessible.h"

#include "gui/SurfaceWidget.h"

namespace kelvane {

namespace {

// One weekday name over a column, or one day cell.
class MonthGridCell final : public QAccessibleInterface, public QAccessibleTableCellInterface {
  public:
    // A row of -1 is the row of weekday names.
    MonthGridCell(const MonthGridAccessible& table, int row, int column)
        : table_(table), row_(row), column_(column) {}

    bool IsHeader() const { return row_ < 0; }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableCellInterface && !IsHeader()) {
            return static_cast<QAccessibleTableCellInterface*>(this);
        }
        return nullptr;
    }
    bool isValid() const override { return table_.isValid() && table_.Description() != nullptr; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return table_.window(); }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return const_cast<MonthGridAccessible*>(&table_);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}
    QAccessible::Role role() const override {
        return IsHeader() ? QAccessible::ColumnHeader : QAccessible::Cell;
    }

    QString text(QAccessible::Text t) const override {
        const MonthGridDescription* description = table_.Description();
        if (description == nullptr) {
            return QString();
        }
        if (t == QAccessible::Name) {
            return IsHeader() ? description->ColumnHeader(column_)
                              : description->CellName(row_, column_);
        }
        if (t == QAccessible::Description && !IsHeader() &&
            description->CellIsToday(row_, column_)) {
            return QStringLiteral("today");
        }
        return QString();
    }

    QRect rect() const override {
        const MonthGridDescription* description = table_.Description();
        const SurfaceWidget* widget = table_.Widget();
        if (description == nullptr || widget == nullptr) {
            return QRect();
        }
        const QRectF area =
            IsHeader() ? description->HeaderArea(column_) : description->CellArea(row_, column_);
        const QRect local = area.toAlignedRect();
        return QRect(widget->mapToGlobal(local.topLeft()), local.size());
    }

    // Today is marked active, the selected date selected, and focused while
    // the grid has the keyboard.
    QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        const MonthGridDescription* description = table_.Description();
        if (IsHeader() || description == nullptr || !description->CellHasDay(row_, column_)) {
            return state;
        }
        state.selectable = true;
        state.focusable = true;
        state.active = description->CellIsToday(row_, column_);
        state.selected = description->CellIsSelected(row_, column_);
        const SurfaceWidget* widget = table_.Widget();
        state.focused = state.selected && widget != nullptr && widget->hasFocus();
        return state;
    }

    bool isSelected() const override {
        const MonthGridDescription* description = table_.Description();
        return description != nullptr && !IsHeader() && description->CellIsSelected(row_, column_);
    }
    QList<QAccessibleInterface*> columnHeaderCells() const override {
        return {table_.child(column_)};
    }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return column_; }
    int rowIndex() const override { return row_; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

  private:
    const MonthGridAccessible& table_;
    int row_;
    int column_;
};

}  // namespace

MonthGridAccessible::MonthGridAccessible(SurfaceWidget* widget)
    : QAccessibleWidget(widget, QAccessible::Table) {}

MonthGridAccessible::~MonthGridAccessible() {
    for (QAccessible::Id id : children_) {
        if (id != 0) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }
}

SurfaceWidget* MonthGridAccessible::Widget() const {
    return static_cast<SurfaceWidget*>(widget());
}

const MonthGridDescription* MonthGridAccessible::Description() const {
    return isValid() ? Widget()->Description() : nullptr;
}

void* MonthGridAccessible::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableInterface) {
        return static_cast<QAccessibleTableInterface*>(this);
    }
    return QAccessibleWidget::interface_cast(type);
}

// The grid is named after the month it shows, unless it was given a name.
QString MonthGridAccessible::text(QAccessible::Text t) const {
    const QString own = QAccessibleWidget::text(t);
    if (t == QAccessible::Name && own.isEmpty() && Description() != nullptr) {
        return Description()->MonthCaption();
    }
    return own;
}

QAccessibleInterface* MonthGridAccessible::child(int index) const {
    if (index < 0 || index >= childCount()) {
        return nullptr;
    }
    QAccessible::Id& id = children_[static_cast<std::size_t>(index)];
    if (id == 0) {
        const bool header = index < HeaderCount;
        const int cell = index - HeaderCount;
        auto* made = header ? new MonthGridCell(*this, -1, index)
                            : new MonthGridCell(*this, cell / 7, cell % 7);
        id = QAccessible::registerAccessibleInterface(made);
    }
    return QAccessible::accessibleInterface(id);
}

int MonthGridAccessible::indexOfChild(const QAccessibleInterface* child) const {
    for (int index = 0; index < childCount(); ++index) {
        const QAccessible::Id id = children_[static_cast<std::size_t>(index)];
        if (id != 0 && QAccessible::accessibleInterface(id) == child) {
            return index;
        }
    }
    return -1;
}

QAccessibleInterface* MonthGridAccessible::childAt(int x, int y) const {
    for (int index = 0; index < childCount(); ++index) {
        QAccessibleInterface* candidate = child(index);
        if (candidate != nullptr && candidate->rect().contains(x, y)) {
            return candidate;
        }
    }
    return nullptr;
}

QAccessibleInterface* MonthGridAccessible::focusChild() const {
    if (!isValid() || !widget()->hasFocus()) {
        return nullptr;
    }
    const QList<QAccessibleInterface*> selected = selectedCells();
    return selected.isEmpty() ? nullptr : selected.first();
}

QAccessibleInterface* MonthGridAccessible::cellAt(int row, int column) const {
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount()) {
        return nullptr;
    }
    return child(CellIndex(row, column));
}

int MonthGridAccessible::selectedCellCount() const {
    return static_cast<int>(selectedCells().size());
}

QList<QAccessibleInterface*> MonthGridAccessible::selectedCells() const {
    QList<QAccessibleInterface*> cells;
    const MonthGridDescription* description = Description();
    if (description == nullptr) {
        return cells;
    }
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            if (description->CellIsSelected(row, column)) {
                cells.append(cellAt(row, column));
            }
        }
    }
    return cells;
}

QString MonthGridAccessible::columnDescription(int column) const {
    const MonthGridDescription* description = Description();
    return description != nullptr ? description->ColumnHeader(column) : QString();
}

QAccessibleInterface* MonthGridAccessibleFactory(const QString&, QObject* object) {
    auto* widget = dynamic_cast<SurfaceWidget*>(object);
    if (widget != nullptr && widget->Description() != nullptr) {
        return new MonthGridAccessible(widget);
    }
    return nullptr;
}

}  // namespace kelvane
