#pragma once

#include <memory>

#include "calendar/Calender.h"
#include "support/RecordingSurface.h"
#include "support/TestWorld.h"

namespace kelvane::testing {

// A month view on a recording surface of 700 x 520 units, so a column is 100
// wide. The header ends at 20, the weekday row at 40 (GridTop) and each of the
// five rows is 96 high. Today is 15 March 2000 unless a test says otherwise.
struct CalenderWorld {
    static constexpr double Width = 700;
    static constexpr double Height = 520;
    static constexpr double ColumnWidth = 100;
    static constexpr double GridTop = 40;
    static constexpr double RowHeight = 96;

    explicit CalenderWorld(int year = 2000, int month = 3, int day = 15, double width = Width,
                           double height = Height)
        : surface(width, height) {
        world.platform.Clock.Set(year, month, day, 9, 0);
        calender = std::make_unique<Calender>(world.module1, world.calender, surface);
    }

    // Presses and releases the left button at a point.
    void ClickAt(double x, double y) {
        calender->Calender_MouseDown(CalenderEvents::MouseButton::Left, x, y);
        calender->Calender_Click();
    }
    // The middle of a cell.
    void ClickCell(int row, int column) {
        ClickAt((column - 0.5) * ColumnWidth, GridTop + (row - 0.5) * RowHeight);
    }
    // The texts printed in a cell, day number first.
    std::vector<QString> CellTexts(int row, int column) const {
        return surface.TextsWithin((column - 1) * ColumnWidth, GridTop + (row - 1) * RowHeight,
                                   column * ColumnWidth, GridTop + row * RowHeight);
    }

    TestWorld world;
    RecordingSurface surface;
    std::unique_ptr<Calender> calender;
};

}  // namespace kelvane::testing
