#pragma once

#include <QAccessible>
#include <QString>

#include <array>
#include <functional>

#include "gui/MonthGridDescription.h"

class QWidget;

namespace kelvane {

// Tells screen readers what changed in the month grid after each drawing: the
// month's and the cells' new names, the selection that moved (off the old
// cell, onto the new one) and the focus on the selected cell. Readers keep the
// names they have read, so every change has to be sent; what was sent last is
// remembered from the moment a reader listens.
class MonthGridAnnouncer final : public QAccessible::ActivationObserver {
  public:
    using Listener = std::function<void(QAccessibleEvent& event)>;

    explicit MonthGridAnnouncer(QWidget& grid);
    ~MonthGridAnnouncer() override;
    MonthGridAnnouncer(const MonthGridAnnouncer&) = delete;
    MonthGridAnnouncer& operator=(const MonthGridAnnouncer&) = delete;

    void SetDescription(const MonthGridDescription* description);
    // Events go to `listener` instead of the screen reader bridge once given.
    void SetListener(Listener listener);

    void DrawingFinished();
    // The grid took the keyboard. Qt announces the table's own focus once the
    // focus-in event is over, so the selected cell's follows from the event
    // loop: the last focus a reader hears is the day's.
    void FocusTaken();

    void accessibilityActiveChanged(bool active) override;

  private:
    static constexpr int CellCount = MonthGridDescription::Rows * MonthGridDescription::Columns;

    bool IsListenedTo() const;
    void Deliver(QAccessibleEvent& event);
    void Send(QAccessible::Event type, int child);
    // The cell's name as last announced; `child` counts the headers too.
    const QString& KnownName(int child) const;
    // What a reader may have read so far, taken as the reader starts to listen.
    void RememberNames();
    void AnnounceNames();
    void AnnounceSelection();
    void AnnounceFocus();
    int SelectedChild() const;
    QString CellName(int cell) const;

    QWidget& grid_;
    const MonthGridDescription* description_ = nullptr;
    Listener listener_;
    bool remembered_ = false;
    QString caption_;
    std::array<QString, CellCount> names_;
    int selectedChild_ = -1;
    QString selectedName_;
};

}  // namespace kelvane
