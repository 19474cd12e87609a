#include <QFile>

#include <gtest/gtest.h>

#include "gui/FakePlatform.h"
#include "shell/Application.h"
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

}  // namespace
}  // namespace kelvane
