#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "calendar/Calender.h"
#include "gui/ImageSurface.h"
#include "support/TestWorld.h"

namespace kelvane {
namespace {

// A month view drawn for a screen at twice the usual density: 700 x 520 units
// on a picture of 1400 x 1040 device pixels, with a mid-grey background. The
// separator right of column n is a one-unit line in the shadow colour at
// x = n * 100, with a one-unit line in the highlight colour left of it.
class HighDensityTest : public ::testing::Test {
  protected:
    static constexpr int kBase = 100;

    HighDensityTest() : surface(QColor(kBase, kBase, kBase), Qt::black) {
        world.platform.Clock.Set(2000, 3, 15, 9, 0);
        surface.Resize(700, 520, 2.0);
        calender = std::make_unique<Calender>(world.module1, world.calender, surface);
        calender->Display();
    }

    // A device pixel half way down the third row, clear of every text.
    QColor PixelAt(int deviceX) const {
        const int y = static_cast<int>(2 * (calender->GridTop + 2.9 * RowHeight()));
        return surface.Image().pixelColor(deviceX, y);
    }
    double RowHeight() const { return (520 - calender->GridTop) / 5.0; }

    testing::TestWorld world;
    ImageSurface surface;
    std::unique_ptr<Calender> calender;
};

TEST_F(HighDensityTest, ThePictureHasTwoDevicePixelsPerUnit) {
    EXPECT_EQ(surface.Image().size(), QSize(1400, 1040));
    EXPECT_EQ(surface.Image().devicePixelRatio(), 2.0);
    EXPECT_EQ(surface.ScaleWidth(), 700);
    EXPECT_EQ(surface.ScaleHeight(), 520);
}

TEST_F(HighDensityTest, AOneUnitLineIsTwoDevicePixelsWithNoBlurredNeighbours) {
    const QColor base(kBase, kBase, kBase);
    const QColor shadow(kBase - 50, kBase - 50, kBase - 50);
    const QColor highlight(kBase + 50, kBase + 50, kBase + 50);
    // Column 2's separator: highlight at unit 199, shadow at unit 200.
    EXPECT_EQ(PixelAt(397), base);
    EXPECT_EQ(PixelAt(398), highlight);
    EXPECT_EQ(PixelAt(399), highlight);
    EXPECT_EQ(PixelAt(400), shadow);
    EXPECT_EQ(PixelAt(401), shadow);
    EXPECT_EQ(PixelAt(402), base);
}

TEST_F(HighDensityTest, TheLayoutInUnitsIsTheSameAsOnAnUnscaledScreen) {
    ImageSurface plain(QColor(kBase, kBase, kBase), Qt::black);
    plain.Resize(700, 520);
    testing::TestWorld other;
    other.platform.Clock.Set(2000, 3, 15, 9, 0);
    Calender unscaled(other.module1, other.calender, plain);
    unscaled.Display();
    EXPECT_EQ(calender->GridTop, unscaled.GridTop);
    for (int row = 1; row <= 5; ++row) {
        for (int column = 1; column <= 8; ++column) {
            EXPECT_EQ(calender->CellMap[row][column], unscaled.CellMap[row][column]);
        }
    }
}

TEST_F(HighDensityTest, TodaysCellIsFilledToTheSameColour) {
    const int x = 2 * (4 * 100 - 5);
    const int y = static_cast<int>(2 * (calender->GridTop + 3 * RowHeight() - 5));
    EXPECT_EQ(surface.Image().pixelColor(x, y), QColor(kBase + 100, kBase, kBase));
    EXPECT_EQ(surface.ColourAt(4 * 100 - 5, calender->GridTop + 3 * RowHeight() - 5),
              kBase + 100 + kBase * 256 + kBase * 65536);
}

// The month drawn at a ratio, with a title that wraps, and saved.
QByteArray SavedAt(double ratio) {
    testing::TestWorld world;
    world.platform.Clock.Set(2000, 3, 15, 9, 0);
    ImageSurface surface(QColor(100, 100, 100), Qt::black);
    surface.Resize(701, 523, ratio);
    Calender calender(world.module1, world.calender, surface);
    calender.Months[2].Dates[17].Title = QStringLiteral("Stand-up day with the whole team");
    calender.Display();
    QTemporaryDir directory;
    const QString fileName = directory.filePath(QStringLiteral("month.bmp"));
    QString error;
    EXPECT_TRUE(calender.CalenderSavePicture(fileName, error)) << error.toStdString();
    QFile file(fileName);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

class SavedPictureTest : public ::testing::TestWithParam<double> {};

TEST_P(SavedPictureTest, IsTheUnscaledScreensPictureByteForByte) {
    const QByteArray unscaled = SavedAt(1.0);
    ASSERT_FALSE(unscaled.isEmpty());
    const QByteArray scaled = SavedAt(GetParam());
    EXPECT_TRUE(scaled == unscaled);
    const QImage picture = QImage::fromData(scaled);
    EXPECT_EQ(picture.size(), QSize(701, 523));
}

INSTANTIATE_TEST_SUITE_P(EveryCommonScale, SavedPictureTest, ::testing::Values(1.25, 1.5, 2.0));

}  // namespace
}  // namespace kelvane
