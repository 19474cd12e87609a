#include "shell/ToolCommands.h"

#include "colourfill/frmColourFill.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmOptions.h"
#include "dialogs/frmTip.h"
#include "report/frmCommingUp.h"
#include "shell/WatchHold.h"

namespace kelvane {

ToolCommands::ToolCommands(Store& store, Calender& calender1, ActivityWatch& watch, QWidget& owner)
    : store_(store), calender1_(calender1), watch_(watch), owner_(owner) {}

// The report only reads dates: the grid and its selection stay as they were.
void ToolCommands::ShowCommingUp() {
    const SilentWatchHold quiet(watch_);
    frmCommingUp dialog(store_, calender1_, &owner_);
    dialog.exec();
}

void ToolCommands::ShowColourFill() {
    const SilentWatchHold quiet(watch_);
    bool filled = false;
    {
        frmColourFill dialog(store_, calender1_, &owner_);
        dialog.exec();
        filled = dialog.Filled();
    }
    if (filled) {
        store_.module1.CalendarDirty = true;
    }
    calender1_.Display();
}

void ToolCommands::ShowOptions() {
    const SilentWatchHold quiet(watch_);
    const ColourListTable coloursBefore = store_.calender.ColourList;
    QString fontBefore;
    qint16 sizeBefore = 0;
    calender1_.GetFont(fontBefore, sizeBefore);
    {
        frmOptions dialog(store_, calender1_, &owner_);
        dialog.exec();
    }
    QString fontAfter;
    qint16 sizeAfter = 0;
    calender1_.GetFont(fontAfter, sizeAfter);
    if (store_.calender.ColourList != coloursBefore || fontAfter != fontBefore ||
        sizeAfter != sizeBefore) {
        store_.module1.CalendarDirty = true;
    }
    calender1_.Display();
}

void ToolCommands::ShowTips() {
    const SilentWatchHold quiet(watch_);
    frmTip dialog(store_.module1.Services().Random, &owner_);
    dialog.exec();
}

void ToolCommands::ShowAbout() {
    const SilentWatchHold quiet(watch_);
    frmAbout dialog(&owner_);
    dialog.exec();
}

}  // namespace kelvane
