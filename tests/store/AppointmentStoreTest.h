#pragma once

#include <gtest/gtest.h>

#include <QFileInfo>

#include "support/TestWorld.h"

namespace kelvane::testing {

inline const QString kAppointmentFileName = QStringLiteral("~tempAppoint.tmp");
inline constexpr qint64 kAppointmentRecordBytes = 108;
inline constexpr qint64 kAppointmentBlockBytes = 40 * kAppointmentRecordBytes;

inline Appointment Entry(const QString& description, ClockTime start, ClockTime end = {-1, 0}) {
    Appointment appointment;
    appointment.Description = description;
    appointment.StartTime = start;
    appointment.EndTime = end;
    return appointment;
}

// The schedules' temporary store, opened in a world of its own.
class AppointmentStoreTest : public ::testing::Test {
  protected:
    void SetUp() override { world.OpenStores(); }

    qint64 FileSize() const { return QFileInfo(world.FilePath(kAppointmentFileName)).size(); }

    TestWorld world;
    AppointmentMOD& store = world.appointments;
};

}  // namespace kelvane::testing
