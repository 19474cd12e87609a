#pragma once

#include <QAccessible>
#include <QString>

#include <vector>

#include "gui/MonthGridAccessible.h"
#include "gui/SurfaceWidget.h"
#include "support/MainWindowWorld.h"

namespace kelvane::testing {

// The child index of a day cell; rows and columns from 0.
constexpr auto CellIndex = MonthGridAccessible::CellIndex;

inline QAccessibleInterface* Grid(MainWindowWorld& w) {
    return QAccessible::queryAccessibleInterface(&w.main.CalenderView());
}

struct HeardEvent {
    QAccessible::Event type;
    int child;
    QAccessibleInterface* target;
    // What the event's object read when the event came.
    QString name;
};

// Listens to the accessibility events of the main window's grid as a screen
// reader bridge would.
struct ScreenReader {
    explicit ScreenReader(MainWindowWorld& w)
        : grid_(w.main.CalenderView()), bridge_(w.platform.Accessibility) {
        bridge_.Listen([this](QAccessibleEvent& event) {
            QAccessibleInterface* target = event.accessibleInterface();
            events.push_back({event.type(), event.child(), target,
                              target != nullptr ? target->text(QAccessible::Name) : QString()});
        });
    }
    ~ScreenReader() { bridge_.Listen(nullptr); }
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

    // Whether an event of the type was sent for the child, and Qt finds that
    // child's interface from the event as a screen reader bridge would.
    bool Heard(QAccessible::Event type, int child) const { return Count(type, child) > 0; }

    int Count(QAccessible::Event type, int child) const {
        QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(&grid_);
        const QAccessibleInterface* expected = child < 0 ? grid : grid->child(child);
        int count = 0;
        for (const HeardEvent& event : events) {
            if (event.type == type && event.child == child && event.target == expected) {
                ++count;
            }
        }
        return count;
    }

    int Count(QAccessible::Event type) const {
        int count = 0;
        for (const HeardEvent& event : events) {
            count += event.type == type ? 1 : 0;
        }
        return count;
    }

    // The last event of the type; a type of none when there was none.
    HeardEvent Last(QAccessible::Event type) const {
        for (auto event = events.rbegin(); event != events.rend(); ++event) {
            if (event->type == type) {
                return *event;
            }
        }
        return {QAccessible::InvalidEvent, -1, nullptr, QString()};
    }

    std::vector<HeardEvent> events;

  private:
    SurfaceWidget& grid_;
    FakeAccessibilityBridge& bridge_;
};

}  // namespace kelvane::testing
