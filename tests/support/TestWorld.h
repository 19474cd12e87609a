#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include "gui/FakePlatform.h"
#include "store/Store.h"
#include "support/QtPrinting.h"

namespace kelvane::testing {

// A fresh program for one test: a temporary program directory, a scripted
// outside world pointed at it, and the document store (files not yet open).
struct TestWorld {
    TestWorld();
    explicit TestWorld(const QString& programDirectory);

    // Opens both temporary stores, as start-up does.
    void OpenStores();
    // Stores an activity in slot `slot` of a date's schedule, as the editor
    // would; the stores must be open.
    void PutActivity(qint16 month, qint16 day, int slot, const QString& description,
                     ClockTime start, ClockTime end = {-1, -1});
    QString FilePath(const QString& name) const;
    QByteArray ReadFile(const QString& name) const;

    QTemporaryDir directory;
    FakePlatform platform;
    Store store;
    Module1& module1 = store.module1;
    CalenderMOD& calender = store.calender;
    AppointmentMOD& appointments = store.appointments;
    DiaryMOD& diary = store.diary;
};

}  // namespace kelvane::testing
