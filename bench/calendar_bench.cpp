
#include <benchmark/benchmark.h>

#include "calendar/Calender.h"
#include "calendar/TextFitting.h"
#include "gui/FakePlatform.h"
#include "gui/ImageSurface.h"
#include "store/Store.h"

namespace kelvane {
namespace {

// A title of 255 characters made of words of mixed lengths.
QString LongTitle(int seed) {
    static const char* const kWords[] = {"Meeting", "with", "the",   "quarterly", "review",
                                         "board",   "at",   "10",    "o'clock",   "bring",
                                         "slides",  "and",  "coffee"};
    QString title;
    for (int i = seed; title.size() < 255; ++i) {
        title += QString::fromLatin1(kWords[i % 13]) + QLatin1Char(' ');
    }
    return title.left(255);
}

// A month view of a given size whose shown month (March 2000, today the 15th)
// has a long title on every date and a few coloured dates.
struct FullMonth {
    FullMonth(int width, int height) : store(platform.Services), surface(Qt::lightGray, Qt::black) {
        platform.Clock.Set(2000, 3, 15, 9, 0);
        surface.Resize(width, height);
        calender = std::make_unique<Calender>(store.module1, store.calender, surface);
        for (int day = 1; day <= 31; ++day) {
            DateEntry& entry = calender->Months[2].Dates[static_cast<std::size_t>(day)];
            entry.Title = LongTitle(day);
            if (day % 5 == 0) {
                entry.BackColour = ColourChoice{0, 0, 60, false, true};
                entry.TextColour = ColourChoice{80, 0, 0, false, true};
            }
        }
        calender->SelectedDate = CalDate{2000, 20, 3};
    }

    FakePlatform platform;
    Store store;
    ImageSurface surface;
    std::unique_ptr<Calender> calender;
};

void RedrawMonth(benchmark::State& state) {
    FullMonth month(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    for (auto _ : state) {
        month.calender->Display();
        benchmark::DoNotOptimize(month.surface.Image().constBits());
    }
}
BENCHMARK(RedrawMonth)->Args({1920, 1080})->Args({640, 480})->Unit(benchmark::kMillisecond);

// The first redraw after a change of font, when no title has been measured or
// drawn yet.
void RedrawMonthInANewFont(benchmark::State& state) {
    FullMonth month(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    for (auto _ : state) {
        state.PauseTiming();
        month.surface.SetFontSize(9);  // forgets every width and drawn line
        state.ResumeTiming();
        month.calender->Display();
        benchmark::DoNotOptimize(month.surface.Image().constBits());
    }
}
BENCHMARK(RedrawMonthInANewFont)
    ->Args({1920, 1080})
    ->Args({640, 480})
    ->Unit(benchmark::kMillisecond);

// One cell-wide cut of a long title, the fast way and character by character.
template <QString (*Fit)(const DrawingSurface&, const QString&, double)>
void FitLongTitle(benchmark::State& state) {
    ImageSurface surface(Qt::white, Qt::black);
    surface.Resize(10, 10);
    const QString title = LongTitle(3);
    for (auto _ : state) {
        state.PauseTiming();
        surface.SetFontSize(9);  // forgets the widths measured so far
        state.ResumeTiming();
        benchmark::DoNotOptimize(Fit(surface, title, 274));
    }
}
BENCHMARK_TEMPLATE(FitLongTitle, FitText)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(FitLongTitle, FitTextByCharacters)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelvane
