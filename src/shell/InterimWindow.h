#pragma once

#include <QAction>
#include <QMainWindow>

#include <array>
#include <memory>

#include "calendar/Calender.h"
#include "gui/SurfaceWidget.h"
#include "store/DocumentCommands.h"
#include "store/DocumentWindow.h"
#include "store/Store.h"

namespace kelvane {

// Stands in for the main window until it is built: the month view with a File
// menu that creates, opens and saves calendar files.
class InterimWindow final : public QMainWindow, public DocumentWindow {
  public:
    explicit InterimWindow(Store& store);
    ~InterimWindow() override;

    DocumentCommands& Commands() { return *commands_; }

    void StartFileCommand() override {}
    void EndFileCommand() override {}
    void SetCaption(const QString& caption) override { setWindowTitle(caption); }
    void ShowStatus(const QString& text) override;
    void ShowRecentMenu(const RecentMenu& menu) override;
    bool ToolsShown() const override { return toolsShown_; }
    void ToggleTools() override { toolsShown_ = !toolsShown_; }
    bool CalenderShown() const override { return calenderShown_; }
    void ToggleCalender() override {
        calenderShown_ = !calenderShown_;
        view_->setVisible(calenderShown_);
    }
    void DocumentReplaced() override {}

  private:
    void BuildFileMenu();

    Store& store_;
    SurfaceWidget* view_;
    std::unique_ptr<Calender> calender1_;
    std::unique_ptr<DocumentCommands> commands_;
    std::array<QAction*, RecentFileCount> recentItems_{};
    QAction* recentSeparator_ = nullptr;
    bool toolsShown_ = true;
    bool calenderShown_ = true;
};

}  // namespace kelvane
