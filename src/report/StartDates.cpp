#include "report/StartDates.h"

#include "store/CalenderMOD.h"

namespace kelvane {

StartDates StartDates::Read(Module1& module1) {
    StartDates dates;
    module1.GetToday(dates.Today);
    module1.GetSelectedDate(dates.Selected);
    return dates;
}

void StartDates::Fill(QListWidget* list) const {
    list->clear();
    const QString today = FormatCalDate(Today);
    list->addItem(QStringLiteral("Today: ") + today);
    const QString selected = FormatCalDate(Selected);
    if (selected != today) {
        list->addItem(QStringLiteral("Selected:") + selected);
    }
}

bool StartDates::TakeChosen(const QListWidget* list, CalDate& start) const {
    const int row = list->currentRow();
    if (row < 0) {
        return false;
    }
    start = row == 0 ? Today : Selected;
    return true;
}

}  // namespace kelvane
