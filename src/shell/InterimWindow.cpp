#include "shell/InterimWindow.h"

#include <QApplication>
#include <QMenuBar>
#include <QStatusBar>

namespace kelvane {

InterimWindow::InterimWindow(Store& store) : store_(store), view_(new SurfaceWidget(this)) {
    setWindowTitle(QStringLiteral("Kelvane v1.0"));
    calender1_ = std::make_unique<Calender>(store_.module1, store_.calender, view_->Surface());
    view_->SetEvents(calender1_.get());
    store_.module1.AttachMonthView(calender1_.get());
    commands_ = std::make_unique<DocumentCommands>(store_, *calender1_, *this);
    setCentralWidget(view_);
    BuildFileMenu();
    ShowStatus(QStringLiteral("I am ready!"));
    commands_->LoadRecentList();
}

InterimWindow::~InterimWindow() {
    view_->SetEvents(nullptr);
    store_.module1.AttachMonthView(nullptr);
}

void InterimWindow::BuildFileMenu() {
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->addAction(QStringLiteral("&New"), QKeySequence(Qt::CTRL | Qt::Key_N),
                    [this] { commands_->FileNew(); });
    file->addAction(QStringLiteral("&Open..."), QKeySequence(Qt::CTRL | Qt::Key_O),
                    [this] { commands_->FileOpen(); });
    file->addSeparator();
    file->addAction(QStringLiteral("Save &As..."), QKeySequence(Qt::CTRL | Qt::Key_S),
                    [this] { commands_->FileSaveAs(); });
    file->addSeparator();
    for (int index = 1; index <= RecentFileCount; ++index) {
        QAction* item = file->addAction(QString(), [this, index] { commands_->FileRecent(index); });
        item->setVisible(false);
        recentItems_[static_cast<std::size_t>(index - 1)] = item;
    }
    recentSeparator_ = file->addSeparator();
    recentSeparator_->setVisible(false);
    file->addAction(QStringLiteral("E&xit"), [this] { close(); });
}

void InterimWindow::ShowStatus(const QString& text) {
    statusBar()->showMessage(text);
}

void InterimWindow::ShowRecentMenu(const RecentMenu& menu) {
    for (int index = 1; index <= RecentFileCount; ++index) {
        QAction* item = recentItems_[static_cast<std::size_t>(index - 1)];
        item->setText(menu.Items[index].Caption);
        item->setVisible(menu.Items[index].Visible);
    }
    recentSeparator_->setVisible(menu.SeparatorVisible);
}

}  // namespace kelvane
