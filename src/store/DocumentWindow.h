#pragma once

#include <QString>

#include "store/RecentFiles.h"

namespace kelvane {

// What the document commands need of the main window around them.
class DocumentWindow {
  public:
    virtual ~DocumentWindow() = default;

    // Called first and last by every file command.
    virtual void StartFileCommand() = 0;
    virtual void EndFileCommand() = 0;

    virtual void SetCaption(const QString& caption) = 0;
    // The first panel of the status bar.
    virtual void ShowStatus(const QString& text) = 0;
    virtual void ShowRecentMenu(const RecentMenu& menu) = 0;

    // The check marks of View, Schedule and View, Calender, and their
    // commands, which toggle them.
    virtual bool ToolsShown() const = 0;
    virtual void ToggleTools() = 0;
    virtual bool CalenderShown() const = 0;
    virtual void ToggleCalender() = 0;

    // The document has been replaced by a new or a loaded one; whatever the
    // window shows of it is brought up to date.
    virtual void DocumentReplaced() = 0;
};

}  // namespace kelvane
