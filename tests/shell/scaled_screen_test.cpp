#include <QAccessible>
#include <QImageReader>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include "gui/FakeSettingsStore.h"
#include "support/MainWindowWorld.h"

// The main window on a screen scaled to 200 %. Today is Saturday 7 March 2026.
namespace kelvane::testing {
namespace {

// Qt reads the factor when the application starts, before any test runs.
const bool kScaledTo200Percent = qputenv("QT_SCALE_FACTOR", "2");

TEST(ScaledScreen, TheGridIsDrawnAtTwoDevicePixelsPerUnit) {
    MainWindowWorld w;
    w.ShowWindow();
    SurfaceWidget& grid = w.main.CalenderView();
    ASSERT_TRUE(kScaledTo200Percent);
    ASSERT_EQ(grid.devicePixelRatioF(), 2.0);
    const QImage& picture = grid.Surface().Image();
    EXPECT_EQ(picture.devicePixelRatio(), 2.0);
    EXPECT_EQ(picture.size(), grid.size() * 2);
    EXPECT_EQ(grid.Surface().ScaleWidth(), grid.width());
}

// Right of each column runs a one-unit highlight line and then a one-unit
// shadow line; on this screen each is two device pixels wide, with no blend
// of the two or of the background beside them.
TEST(ScaledScreen, AOneUnitLineIsTwoDevicePixelsWide) {
    MainWindowWorld w;
    w.ShowWindow();
    SurfaceWidget& grid = w.main.CalenderView();
    const Calender& calender = w.main.Calender1();
    const QImage& picture = grid.Surface().Image();
    const int separator = static_cast<int>(std::lround(2 * grid.width() / 7.0));
    const int y =
        static_cast<int>(2 * (calender.GridTop + 2.9 * (grid.height() - calender.GridTop) / 5));
    const QRgb base = picture.pixel(2 * separator - 6, y);
    const QRgb highlight = picture.pixel(2 * separator - 2, y);
    const QRgb shadow = picture.pixel(2 * separator, y);
    EXPECT_NE(highlight, base);
    EXPECT_NE(shadow, base);
    EXPECT_EQ(picture.pixel(2 * separator - 3, y), base);
    EXPECT_EQ(picture.pixel(2 * separator - 1, y), highlight);
    EXPECT_EQ(picture.pixel(2 * separator + 1, y), shadow);
    EXPECT_EQ(picture.pixel(2 * separator + 2, y), base);
}

TEST(ScaledScreen, KeysAndClicksSelectTheDatesUnderThem) {
    MainWindowWorld w;
    w.ClickDay(12);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 12, 3}));
    QTest::keyClick(&w.main.CalenderView(), Qt::Key_Down);
    EXPECT_EQ(w.SelectedDayAndMonth(), (CalDate{0, 19, 3}));
    QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(&w.main.CalenderView());
    const QRect cell = grid->tableInterface()->cellAt(2, 4)->rect();
    EXPECT_NEAR(cell.width(), w.main.CalenderView().width() / 7.0, 1.0);
}

TEST(ScaledScreen, SaveCalImageWritesThePictureAtItsSizeInUnits) {
    QTemporaryDir folder;
    MainWindowWorld w;
    w.ShowWindow();
    const QString path = folder.filePath(QStringLiteral("march.bmp"));
    w.platform.FileDialog.Choose(path);
    w.main.Menu().mnuFileSaveCalImage->trigger();
    QImageReader reader(path);
    EXPECT_EQ(reader.size(), w.main.CalenderView().size());
}

// The main window loaded, as start-up loads it, after a run that left its
// place and size in the settings, in twips; shown, so that its frame counts.
struct RestoredWindow {
    RestoredWindow(double left, double top, double width, double height) {
        for (const auto& [key, twips] :
             {std::pair{"MainLeft", left}, std::pair{"MainTop", top}, std::pair{"MainWidth", width},
              std::pair{"MainHeight", height}}) {
            world.platform.Settings.Values.insert(
                FakeSettingsStore::Key(QStringLiteral("Kelvane"), QStringLiteral("Settings"),
                                       QString::fromLatin1(key)),
                QString::number(twips));
        }
        world.platform.Clock.Set(2026, 3, 7, 8, 0);
        world.OpenStores();
        main = std::make_unique<frmMain>(world.store);
        main->Form_Load();
        main->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(main.get()));
    }
    ~RestoredWindow() { main->Form_Terminate(); }
    RestoredWindow(const RestoredWindow&) = delete;
    RestoredWindow& operator=(const RestoredWindow&) = delete;

    QRect Screen() const { return main->screen()->availableGeometry(); }

    TestWorld world;
    std::unique_ptr<frmMain> main;
};

// 96 logical dots to the inch: 1440 twips are 96 units, 15 twips one unit.
// The screen is 400 by 400 units here, just the designed width of the window.
TEST(ScaledScreen, ARestoredWindowReachingPastTheBottomIsMovedUpWithItsFrame) {
    RestoredWindow w(0, 200 * 15, 400 * 15, 340 * 15);
    const QRect frame = w.main->frameGeometry();
    ASSERT_GT(frame.height(), w.main->height());
    EXPECT_EQ(w.main->height(), 340);
    EXPECT_EQ(frame.bottom(), w.Screen().bottom());
    EXPECT_EQ(frame.left(), w.Screen().left());
}

TEST(ScaledScreen, ARestoredWindowLargerThanTheScreenIsCutToItFrameIncluded) {
    RestoredWindow w(136 * 15, 174 * 15, 800 * 15, 600 * 15);
    const QRect frame = w.main->frameGeometry();
    EXPECT_EQ(frame.topLeft(), w.Screen().topLeft());
    EXPECT_EQ(frame.bottom(), w.Screen().bottom());
    // The designed width is the least the window may have, here the screen's
    // whole width; only the frame's edge is left beyond it.
    EXPECT_EQ(w.main->width(), w.main->DesignWidth);
    EXPECT_EQ(w.main->DesignWidth, w.Screen().width());
}

// What is written at the end is where the window really was.
TEST(ScaledScreen, TheFittedGeometryIsWhatIsSavedOnQuit) {
    RestoredWindow w(0, 200 * 15, 400 * 15, 340 * 15);
    const QPoint at = w.main->pos();
    ASSERT_TRUE(w.main->close());
    const auto& saved = w.world.platform.Settings.Values;
    const auto setting = [&saved](const char* key) {
        return saved.value(FakeSettingsStore::Key(
            QStringLiteral("Kelvane"), QStringLiteral("Settings"), QString::fromLatin1(key)));
    };
    EXPECT_EQ(setting("MainTop"), QString::number(at.y() * 15));
    EXPECT_EQ(setting("MainHeight"), QStringLiteral("5100"));
}

}  // namespace
}  // namespace kelvane::testing
