#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

#include "calendar/Calender.h"
#include "gui/FakePlatform.h"
#include "gui/ImageSurface.h"
#include "report/frmCommingUp.h"
#include "store/Store.h"

namespace kelvane {
namespace {

// A whole year with a title and 39 activities on every date, today 1 January
// 2000, and the coming-up report open on it for twelve months with schedules.
struct FullYear {
    FullYear()
        : platform(QDir::toNativeSeparators(directory.path())),
          store(platform.Services),
          surface(Qt::lightGray, Qt::black) {
        platform.Clock.Set(2000, 1, 1, 9, 0);
        surface.Resize(640, 480);
        calender = std::make_unique<Calender>(store.module1, store.calender, surface);
        store.module1.AttachMonthView(calender.get());
        store.appointments.InitAppointmentStore();
        store.diary.InitDiaryStore();
        FillDates();
        report = std::make_unique<frmCommingUp>(store, *calender);
        report->Kind = frmCommingUp::Months;
        report->Units = 12;
        report->chkDisplay->setChecked(true);
    }
    ~FullYear() {
        report.reset();
        store.module1.AttachMonthView(nullptr);
        store.appointments.CloseAppointmentStore();
        store.diary.CloseDiaryStore();
    }

    void FillDates() {
        for (qint16 month = 1; month <= 12; ++month) {
            for (qint16 day = 1; day <= store.module1.DaysInMonth[month]; ++day) {
                calender->SetDate(2000, month, day);
                store.calender.CurrentEntry.Title =
                    QStringLiteral("Date %1/%2").arg(day).arg(month);
                calender->UpdateSelectedDate(false);
                for (int slot = 1; slot <= 39; ++slot) {
                    const auto start = static_cast<qint16>(slot % 24);
                    store.appointments.AppointmentList[slot] =
                        Appointment{QStringLiteral("Activity number %1").arg(slot),
                                    {start, static_cast<qint16>(slot % 60)},
                                    {static_cast<qint16>((start + 1) % 24), 0}};
                }
                store.appointments.SaveAppointments(MakeDateKey(month, day));
            }
        }
    }

    QTemporaryDir directory;
    FakePlatform platform;
    Store store;
    ImageSurface surface;
    std::unique_ptr<Calender> calender;
    std::unique_ptr<frmCommingUp> report;
};

// Building the report over 366 dates of 39 activities each and showing it.
void ComingUpReportOverAYear(benchmark::State& state) {
    FullYear year;
    for (auto _ : state) {
        year.report->BuildReport();
        benchmark::DoNotOptimize(year.report->usrDocViewer1->GetLineCount());
    }
    state.counters["lines"] = year.report->usrDocViewer1->GetLineCount();
}
BENCHMARK(ComingUpReportOverAYear)->Unit(benchmark::kMillisecond);

// The same report each time after one without schedules, so that the box gets
// the whole year's text anew every round, not the text it already shows.
void ComingUpReportOverAYearAfterTitlesOnly(benchmark::State& state) {
    FullYear year;
    for (auto _ : state) {
        year.report->chkDisplay->setChecked(false);
        year.report->BuildReport();
        year.report->chkDisplay->setChecked(true);
        year.report->BuildReport();
        benchmark::DoNotOptimize(year.report->usrDocViewer1->GetLineCount());
    }
    state.counters["lines"] = year.report->usrDocViewer1->GetLineCount();
}
BENCHMARK(ComingUpReportOverAYearAfterTitlesOnly)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelvane
