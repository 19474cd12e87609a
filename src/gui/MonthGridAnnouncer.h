#pragma once

#include <QAccessible>
#include <QString>

#include <array>

#include "gui/AccessibilityBridge.h"
#include "gui/MonthGridDescription.h"

class QWidget;

namespace kelvane {

// Tells screen readers what changed in the month grid after each drawing: the
// month's and the cells' new names, the selection that moved (off the old
// cell, onto the new one) and the focus on the selected cell. Readers keep the
// names they have read, so every change has to be sent; what was sent last is
// remembered from the moment a reader listens.
class MonthGridAnnouncer final : private AccessibilityBridge::Observer {
  public:
    explicit MonthGridAnnouncer(QWidget& grid);
    ~MonthGridAnnouncer();
    MonthGridAnnouncer(const MonthGridAnnouncer&) = delete;
    MonthGridAnnouncer& operator=(const MonthGridAnnouncer&) = delete;

    // What to announce and through which bridge; nothing is announced while
    // there is no description. Both must outlive the announcer or be unset.
    void SetDescription(const MonthGridDescription* description, AccessibilityBridge* bridge);

    void DrawingFinished();
    // The grid took the keyboard. Qt announces the table's own focus once the
    // focus-in event is over, so the selected cell's follows from the event
    // loop: the last focus a reader hears is the day's.
    void FocusTaken();

  private:
    static constexpr int CellCount = MonthGridDescription::Rows * MonthGridDescription::Columns;

    // A reader started or stopped listening: what it may have read so far is
    // taken afresh.
    void ListeningChanged() override;
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
    AccessibilityBridge* bridge_ = nullptr;
    bool remembered_ = false;
    QString caption_;
    std::array<QString, CellCount> names_;
    int selectedChild_ = -1;
    QString selectedName_;
};

}  // namespace kelvane
