#include "gui/MonthGridAnnouncer.h"

#include <QWidget>

#include "gui/MonthGridAccessible.h"

namespace kelvane {

MonthGridAnnouncer::MonthGridAnnouncer(QWidget& grid) : grid_(grid) {}

MonthGridAnnouncer::~MonthGridAnnouncer() {
    if (bridge_ != nullptr) {
        bridge_->RemoveObserver(*this);
    }
}

void MonthGridAnnouncer::SetDescription(const MonthGridDescription* description,
                                        AccessibilityBridge* bridge) {
    if (bridge != bridge_) {
        if (bridge_ != nullptr) {
            bridge_->RemoveObserver(*this);
        }
        bridge_ = bridge;
        if (bridge_ != nullptr) {
            bridge_->AddObserver(*this);
        }
    }
    description_ = description;
    RememberNames();
}

void MonthGridAnnouncer::ListeningChanged() {
    RememberNames();
}

bool MonthGridAnnouncer::IsListenedTo() const {
    return description_ != nullptr && bridge_ != nullptr && bridge_->Listening();
}

void MonthGridAnnouncer::Deliver(QAccessibleEvent& event) {
    bridge_->Send(event);
}

void MonthGridAnnouncer::Send(QAccessible::Event type, int child) {
    QAccessibleEvent event(&grid_, type);
    event.setChild(child);
    Deliver(event);
}

const QString& MonthGridAnnouncer::KnownName(int child) const {
    return names_[static_cast<std::size_t>(child - MonthGridAccessible::HeaderCount)];
}

QString MonthGridAnnouncer::CellName(int cell) const {
    return description_->CellName(cell / MonthGridDescription::Columns,
                                  cell % MonthGridDescription::Columns);
}

int MonthGridAnnouncer::SelectedChild() const {
    const std::optional<QPoint> cell = description_->SelectedCell();
    return cell ? MonthGridAccessible::CellIndex(cell->y(), cell->x()) : -1;
}

void MonthGridAnnouncer::RememberNames() {
    remembered_ = IsListenedTo();
    if (!remembered_) {
        return;
    }
    caption_ = description_->MonthCaption();
    for (int cell = 0; cell < CellCount; ++cell) {
        names_[static_cast<std::size_t>(cell)] = CellName(cell);
    }
    selectedChild_ = SelectedChild();
    selectedName_ = selectedChild_ < 0 ? QString() : KnownName(selectedChild_);
}

void MonthGridAnnouncer::DrawingFinished() {
    if (!IsListenedTo()) {
        remembered_ = false;
        return;
    }
    if (!remembered_) {
        RememberNames();
        return;
    }
    QAccessibleTableModelChangeEvent changed(&grid_, QAccessibleTableModelChangeEvent::DataChanged);
    changed.setFirstRow(0);
    changed.setLastRow(MonthGridDescription::Rows - 1);
    changed.setFirstColumn(0);
    changed.setLastColumn(MonthGridDescription::Columns - 1);
    Deliver(changed);
    AnnounceNames();
    AnnounceSelection();
}

void MonthGridAnnouncer::AnnounceNames() {
    const QString caption = description_->MonthCaption();
    if (caption != caption_) {
        caption_ = caption;
        Send(QAccessible::NameChanged, -1);
    }
    for (int cell = 0; cell < CellCount; ++cell) {
        QString name = CellName(cell);
        QString& known = names_[static_cast<std::size_t>(cell)];
        if (name != known) {
            known = std::move(name);
            Send(QAccessible::NameChanged, MonthGridAccessible::HeaderCount + cell);
        }
    }
}

// A selection that moved is taken off the old cell and put on the new one; a
// selected cell whose name changed is announced again, so that a reader on
// it reads the new name.
void MonthGridAnnouncer::AnnounceSelection() {
    const int child = SelectedChild();
    const QString name = child < 0 ? QString() : KnownName(child);
    if (child == selectedChild_ && name == selectedName_) {
        return;
    }
    if (selectedChild_ >= 0 && child != selectedChild_) {
        Send(QAccessible::SelectionRemove, selectedChild_);
    }
    selectedChild_ = child;
    selectedName_ = name;
    if (child < 0) {
        return;
    }
    Send(QAccessible::Selection, child);
    if (grid_.hasFocus()) {
        Send(QAccessible::Focus, child);
    }
}

void MonthGridAnnouncer::FocusTaken() {
    QMetaObject::invokeMethod(
        &grid_, [this] { AnnounceFocus(); }, Qt::QueuedConnection);
}

void MonthGridAnnouncer::AnnounceFocus() {
    if (!IsListenedTo() || !grid_.hasFocus()) {
        return;
    }
    const int child = SelectedChild();
    if (child >= 0) {
        Send(QAccessible::Focus, child);
    }
}

}  // namespace kelvane
