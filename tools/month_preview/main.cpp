// Shows the month view with sample dates, for looking at the grid by eye:
// today's date, a selected date, coloured dates and titles that wrap.
#include <QApplication>

#include "calendar/Calender.h"
#include "gui/QtPlatform.h"
#include "gui/SurfaceWidget.h"
#include "store/Store.h"

namespace {

using namespace kelvane;

void FillSampleDates(Calender& calender, const CalDate& today) {
    auto& dates = calender.Months[static_cast<std::size_t>(today.Month - 1)].Dates;
    dates[3].Title = QStringLiteral("Dentist");
    dates[5].Title = QStringLiteral(
        "Quarterly review with the whole board, bring the slides "
        "and the printed figures for every region");
    dates[5].BackColour = ColourChoice{0, 0, 60, false, true};
    dates[9].Title = QStringLiteral("Fixed colours");
    dates[9].BackColour = ColourChoice{250, 230, 140, true, true};
    dates[9].TextColour = ColourChoice{120, 0, 0, true, true};
    dates[12].Title = QStringLiteral("Grandma's ninetieth birthday party");
    dates[12].TextColour = ColourChoice{0, -60, -60, false, true};
    dates[20].Title = QStringLiteral("Holiday");
    dates[20].BackColour = ColourChoice{-40, 20, -40, false, true};
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QtPlatform platform;
    Store store(platform.Services);

    SurfaceWidget view;
    Calender calender(store.module1, store.calender, view.Surface());
    view.SetEvents(&calender);
    CalDate today;
    store.module1.GetToday(today);
    FillSampleDates(calender, today);
    calender.SelectedDate =
        CalDate{today.Year, static_cast<qint16>(today.Day == 16 ? 17 : 16), today.Month};
    view.setWindowTitle(QStringLiteral("Month view preview"));
    view.resize(900, 640);
    view.show();
    const int exitCode = QApplication::exec();
    view.SetEvents(nullptr);
    return exitCode;
}
