#include <QDir>
#include <QFile>

#include "support/TestWorld.h"

namespace kelvane::testing {

TestWorld::TestWorld() : TestWorld(QString()) {}

TestWorld::TestWorld(const QString& programDirectory)
    : platform(programDirectory.isEmpty() ? QDir::toNativeSeparators(directory.path())
                                          : programDirectory),
      store(platform.Services) {}

void TestWorld::OpenStores() {
    store.appointments.InitAppointmentStore();
    store.diary.InitDiaryStore();
}

void TestWorld::PutActivity(qint16 month, qint16 day, int slot, const QString& description,
                            ClockTime start, ClockTime end) {
    const QString key = MakeDateKey(month, day);
    appointments.LoadAppointments(key);
    appointments.AppointmentList[slot] = Appointment{description, start, end};
    appointments.SaveAppointments(key);
}

QString TestWorld::FilePath(const QString& name) const {
    return store.module1.AppDirectory() + name;
}

QByteArray TestWorld::ReadFile(const QString& name) const {
    QFile file(FilePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace kelvane::testing
