#include <QFile>
#include <QMenu>
#include <QMenuBar>

#include <gtest/gtest.h>

#include "gui/FakePlatform.h"
#include "shell/Application.h"
#include "shell/InterimWindow.h"
#include "support/TestWorld.h"

namespace kelvane {
namespace {

TEST(Application, StartOpensBothTemporaryStoresAndFinishDeletesThem) {
    testing::TestWorld world;
    Application application(world.platform.Services);
    application.Start();
    const QString directory = application.Document().module1.AppDirectory();
    EXPECT_TRUE(QFile::exists(directory + QStringLiteral("~tempAppoint.tmp")));
    EXPECT_TRUE(QFile::exists(directory + QStringLiteral("~tmpDiaryCal")));
    EXPECT_FALSE(application.Document().module1.CalendarDirty);
    EXPECT_TRUE(world.platform.Messages.Shown.isEmpty());

    application.Finish();
    EXPECT_FALSE(QFile::exists(directory + QStringLiteral("~tempAppoint.tmp")));
    EXPECT_FALSE(QFile::exists(directory + QStringLiteral("~tmpDiaryCal")));
}

TEST(Application, AnUnwritableDirectoryShowsBothStoreMessagesInOrder) {
    testing::TestWorld world(QStringLiteral("/nonexistent-kelvane-dir"));
    Application application(world.platform.Services);
    application.Start();
    const auto& shown = world.platform.Messages.Shown;
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0].Text, QStringLiteral("Could not open a 'temporary' file.\r"
                                            "Make sure there is enough space on 'drive'"));
    EXPECT_EQ(shown[1].Text, QStringLiteral("Could not open diary temporary file"));
    application.Finish();
    EXPECT_EQ(shown.size(), 2);
}

TEST(InterimWindow, ShowsTheRecentFilesInItsFileMenu) {
    testing::TestWorld world;
    world.OpenStores();
    {
        QFile list(world.FilePath(QStringLiteral("~tmpFileList")));
        ASSERT_TRUE(list.open(QIODevice::WriteOnly));
        list.write("/data/plans.cal\r\n\r\n\r\n\r\n");
    }
    InterimWindow window(world.store);
    const QList<QAction*> items = window.menuBar()->actions().first()->menu()->actions();
    QStringList visible;
    for (const QAction* item : items) {
        if (item->isVisible() && !item->isSeparator()) {
            visible << item->text();
        }
    }
    EXPECT_EQ(visible, (QStringList{"&New", "&Open...", "Save &As...", "1)plans.cal", "E&xit"}));
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Kelvane v1.0"));
}

}  // namespace
}  // namespace kelvane
