#pragma once

#include <QString>

#include <functional>

#include "calfile/CalendarFile.h"
#include "calfile/LineWriter.h"
#include "store/MonthViewControl.h"
#include "store/Store.h"

// Moving a whole document between the open program and a calendar file: the
// month view, the current date entry and the two temporary stores on one side,
// the file's lines on the other.
namespace kelvane {

// Receives the progress texts for the first panel of the status bar.
using StatusSink = std::function<void(const QString&)>;

// Whether the main window shows its schedule panel and its month view; the file
// keeps both.
struct ViewFlags {
    bool ToolsShown = true;
    bool CalenderShown = true;
};

// Writes the open document. Every day slot is selected in the month view in
// turn and its schedule and note loaded, so afterwards 31 December is the
// selected date and fills the working copies. "Saving 8%" and so on follow each
// month. `openEdit`, when given, is written in place of its date as the stores
// hold it: a date being edited, as OK would keep it.
void WriteDocument(Store& store, MonthViewControl& monthView, const ViewFlags& flags,
                   LineWriter& out, const StatusSink& status,
                   const CalendarFileDate* openEdit = nullptr);

// Puts a calendar file's content into the open document: the year's layout,
// the font, the colour list, and each date with content through the month view
// and the stores. Dates the file leaves out keep what they held. "Loading8%"
// and so on follow each month.
void ApplyDocument(Store& store, MonthViewControl& monthView, const CalendarFileContent& content,
                   const StatusSink& status);

// "8%" after January .. "100%" after December.
QString MonthPercentage(qint16 month);

}  // namespace kelvane
