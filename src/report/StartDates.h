#pragma once

#include <QListWidget>

#include "store/Module1.h"

namespace kelvane {

// The dates a span can start from: today, and the month view's selected date
// when its text differs from today's. Both are read once, when a dialog opens.
struct StartDates {
    CalDate Today;
    CalDate Selected;

    static StartDates Read(Module1& module1);

    // Puts "Today: " and today's date into `list`, then "Selected:" and the
    // selected date when that reads differently.
    void Fill(QListWidget* list) const;
    // Sets `start` to the date of the list's current line: today for the
    // first, the selected date for any other. False, with `start` left as it
    // was, while no line is current.
    bool TakeChosen(const QListWidget* list, CalDate& start) const;
};

}  // namespace kelvane
