#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include "gui/FakePlatform.h"
#include "store/Store.h"

namespace kelvane {
namespace {

// A store on a temporary directory with its files open.
struct OpenStore {
    OpenStore() : platform(directory.path()), store(platform.Services) {
        store.appointments.InitAppointmentStore();
        store.diary.InitDiaryStore();
    }
    ~OpenStore() {
        store.appointments.CloseAppointmentStore();
        store.diary.CloseDiaryStore();
    }

    QTemporaryDir directory;
    FakePlatform platform;
    Store store;
};

// Calls `visit` with the key of every day slot, in calendar order.
template <typename Visit>
void ForEachKey(const Store& store, Visit visit) {
    for (qint16 month = 1; month <= 12; ++month) {
        for (qint16 day = 1; day <= store.module1.DaysInMonth[month]; ++day) {
            visit(MakeDateKey(month, day));
        }
    }
}

void SaveWorkingCopies(Store& store, const QString& key) {
    store.appointments.SaveAppointments(key);
    store.diary.SaveNote(key);
}

void FillWorkingCopies(Store& store) {
    for (int i = 1; i <= 39; ++i) {
        Appointment& entry = store.appointments.AppointmentList[i];
        entry.Description = QString(50, QLatin1Char('a' + i % 26));
        entry.StartTime = {static_cast<qint16>(i % 24), static_cast<qint16>(i)};
        entry.EndTime = {-1, 0};
    }
    QString note;
    for (int line = 0; line < 16; ++line) {
        note += QString(48, QLatin1Char('n')) + QStringLiteral("\r\n");
    }
    store.diary.NoteBuffer = note;
}

// Every date of a year stored with 39 entries and an 800-character note.
void BM_SaveWholeYear(benchmark::State& state) {
    OpenStore open;
    FillWorkingCopies(open.store);
    for (auto _ : state) {
        ForEachKey(open.store, [&](const QString& key) { SaveWorkingCopies(open.store, key); });
    }
}
BENCHMARK(BM_SaveWholeYear)->Unit(benchmark::kMillisecond);

// Every date of such a year loaded back, as the calendar file writer does.
void BM_LoadWholeYear(benchmark::State& state) {
    OpenStore open;
    FillWorkingCopies(open.store);
    ForEachKey(open.store, [&](const QString& key) { SaveWorkingCopies(open.store, key); });
    for (auto _ : state) {
        ForEachKey(open.store, [&](const QString& key) {
            open.store.appointments.LoadAppointments(key);
            open.store.diary.LoadNote(key);
            benchmark::DoNotOptimize(open.store.appointments.CountAppointments());
        });
    }
}
BENCHMARK(BM_LoadWholeYear)->Unit(benchmark::kMillisecond);

void BM_ValOfATypedTime(benchmark::State& state) {
    const QString text = QStringLiteral(" 09:30");
    for (auto _ : state) {
        benchmark::DoNotOptimize(Val(text));
        benchmark::DoNotOptimize(IsNumeric(text.left(3)));
    }
}
BENCHMARK(BM_ValOfATypedTime);

}  // namespace
}  // namespace kelvane

BENCHMARK_MAIN();
