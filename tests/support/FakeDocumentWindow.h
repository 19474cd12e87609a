#pragma once

#include <QString>
#include <QStringList>

#include "store/DocumentWindow.h"

namespace kelvane::testing {

// A main window that remembers what the document commands did to it.
class FakeDocumentWindow final : public DocumentWindow {
  public:
    void StartFileCommand() override { ++Starts; }
    void EndFileCommand() override { ++Ends; }
    void SetCaption(const QString& caption) override { Caption = caption; }
    void ShowStatus(const QString& text) override { Statuses << text; }
    void ShowRecentMenu(const RecentMenu& menu) override {
        Menu = menu;
        ++MenuRefreshes;
    }
    bool ToolsShown() const override { return Tools; }
    void ToggleTools() override {
        Tools = !Tools;
        ++ToolsToggles;
    }
    bool CalenderShown() const override { return Calender; }
    void ToggleCalender() override {
        Calender = !Calender;
        ++CalenderToggles;
    }
    void DocumentReplaced() override { ++Replacements; }

    QString Caption = QStringLiteral("Kelvane v1.0");
    QStringList Statuses;
    RecentMenu Menu;
    bool Tools = true;
    bool Calender = true;
    int Starts = 0;
    int Ends = 0;
    int MenuRefreshes = 0;
    int ToolsToggles = 0;
    int CalenderToggles = 0;
    int Replacements = 0;
};

}  // namespace kelvane::testing
