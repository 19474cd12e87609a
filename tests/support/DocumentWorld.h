#pragma once

#include <QString>

#include "store/DocumentCommands.h"
#include "support/CalenderWorld.h"
#include "support/FakeDocumentWindow.h"

namespace kelvane::testing {

// A whole open document for one test: the stores open, the main month view
// attached, a fake main window and the File menu's commands. Today is
// 15 March 2000 unless a test says otherwise.
struct DocumentWorld {
    explicit DocumentWorld(int year = 2000, int month = 3, int day = 15,
                           FileNameRules rules = NativeFileNameRules())
        : view(year, month, day), commands(view.world.store, *view.calender, window, rules) {
        view.world.OpenStores();
        view.world.module1.AttachMonthView(view.calender.get());
    }
    ~DocumentWorld() { view.world.module1.AttachMonthView(nullptr); }

    // Gives a date a title, a schedule of `entries` and a note, as the editor would.
    void EditDate(qint16 month, qint16 day, const QString& title, int entries = 0,
                  const QString& note = QString());

    // A path inside the test's own directory.
    QString PathOf(const QString& name) const { return view.world.FilePath(name); }

    CalenderWorld view;
    TestWorld& world = view.world;
    Store& store = view.world.store;
    Calender& calender = *view.calender;
    FakeDocumentWindow window;
    DocumentCommands commands;
};

}  // namespace kelvane::testing
