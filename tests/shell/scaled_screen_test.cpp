#include <QAccessible>
#include <QImageReader>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace kelvane::testing
