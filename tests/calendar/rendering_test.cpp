#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

#include "calendar/Calender.h"
#include "calfile/Conversions.h"
#include "gui/ImageSurface.h"
#include "support/TestWorld.h"

namespace kelvane {
namespace {

// A month view drawn on a real picture of 700 x 520 pixels with a mid-grey
// background, so colour shifts both ways stay inside 0..255. Today is
// Wednesday 15 March 2000: row 3, column 4.
class RenderingTest : public ::testing::Test {
  protected:
    static constexpr int kWidth = 700;
    static constexpr int kHeight = 520;
    static constexpr int kBase = 100;

    RenderingTest() : surface(QColor(kBase, kBase, kBase), Qt::black) {
        world.platform.Clock.Set(2000, 3, 15, 9, 0);
        surface.Resize(kWidth, kHeight);
        calender = std::make_unique<Calender>(world.module1, world.calender, surface);
        calender->Display();
    }

    double RowHeight() const { return (kHeight - calender->GridTop) / 5.0; }

    // A pixel near the lower right corner of a cell, clear of its texts.
    QColor CellPixel(int row, int column) const {
        const int x = column * 100 - 5;
        const int y = static_cast<int>(calender->GridTop + row * RowHeight()) - 5;
        return surface.Image().pixelColor(x, y);
    }

    void Click(int row, int column) {
        const double y = calender->GridTop + (row - 0.5) * RowHeight();
        calender->Calender_MouseDown(CalenderEvents::MouseButton::Left, column * 100 - 50, y);
        calender->Calender_Click();
    }

    testing::TestWorld world;
    ImageSurface surface;
    std::unique_ptr<Calender> calender;
};

TEST_F(RenderingTest, TodaysCellIsTheBaseWithAHundredMoreRed) {
    EXPECT_EQ(CellPixel(3, 4), QColor(kBase + 100, kBase, kBase));
}

TEST_F(RenderingTest, TheSelectedCellHasAHundredMoreGreen) {
    Click(2, 5);
    EXPECT_EQ(CellPixel(2, 5), QColor(kBase, kBase + 100, kBase));
    EXPECT_EQ(CellPixel(3, 4), QColor(kBase + 100, kBase, kBase));
}

TEST_F(RenderingTest, TodaySelectedHasAHundredMoreOfBoth) {
    Click(3, 4);
    EXPECT_EQ(CellPixel(3, 4), QColor(kBase + 100, kBase + 100, kBase));
}

TEST_F(RenderingTest, AnAbsoluteBackColourIsExactlyThatColour) {
    calender->Months[2].Dates[9].BackColour = ColourChoice{10, 20, 30, true, true};
    calender->Display();
    EXPECT_EQ(CellPixel(2, 5), QColor(10, 20, 30));
}

TEST_F(RenderingTest, CellsWithDisabledColoursAreNotFilled) {
    calender->Months[2].Dates[9].BackColour = ColourChoice{10, 20, 30, true, false};
    calender->Display();
    EXPECT_EQ(CellPixel(2, 5), QColor(kBase, kBase, kBase));
    EXPECT_EQ(CellPixel(1, 1), QColor(kBase, kBase, kBase));  // a leading cell
}

TEST_F(RenderingTest, TheHeaderStripsRunFromDarkToLight) {
    // The band's colour is the base shifted by (-25, -5, 20); the first strip is
    // 30 darker, the last one inside the picture 27 lighter.
    const QImage& image = surface.Image();
    EXPECT_EQ(image.pixelColor(2, 2), QColor(kBase - 25 - 30, kBase - 5 - 30, kBase + 20 - 30));
    EXPECT_EQ(image.pixelColor(kWidth - 3, 2),
              QColor(kBase - 25 + 27, kBase - 5 + 27, kBase + 20 + 27));
}

TEST_F(RenderingTest, SeparatorsAreRaised) {
    const QImage& image = surface.Image();
    const int y = calender->GridTop + 10;
    EXPECT_EQ(image.pixelColor(99, y), QColor(kBase + 50, kBase + 50, kBase + 50));
    EXPECT_EQ(image.pixelColor(100, y), QColor(kBase - 50, kBase - 50, kBase - 50));
}

TEST_F(RenderingTest, TextIsDrawnInTheCells) {
    const QImage& image = surface.Image();
    // Somewhere in the day number of 1 March there is dark ink.
    bool ink = false;
    for (int x = 330; x < 370 && !ink; ++x) {
        for (int y = calender->GridTop + 1; y < calender->GridTop + 16 && !ink; ++y) {
            ink = image.pixelColor(x, y).lightness() < 60;
        }
    }
    EXPECT_TRUE(ink);
}

TEST_F(RenderingTest, SavePictureWritesABitmapOfTheControlsSize) {
    QTemporaryDir directory;
    const QString fileName = directory.filePath(QStringLiteral("month.bmp"));
    QString error;
    ASSERT_TRUE(calender->CalenderSavePicture(fileName, error)) << error.toStdString();
    QImageReader reader(fileName);
    EXPECT_EQ(reader.format(), QByteArray("bmp"));
    const QImage saved = reader.read();
    EXPECT_EQ(saved.size(), QSize(kWidth, kHeight));
    EXPECT_EQ(saved.pixelColor(2, 2), surface.Image().pixelColor(2, 2));
}

TEST_F(RenderingTest, SavePictureToAnUnwritablePlaceFailsAndLeavesNoFile) {
    QTemporaryDir directory;
    const QString fileName = directory.filePath(QStringLiteral("missing/month.bmp"));
    QString error;
    EXPECT_FALSE(calender->CalenderSavePicture(fileName, error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_FALSE(QFile::exists(fileName));
}

TEST_F(RenderingTest, AFailedSaveLeavesAnOldPictureWhole) {
    QTemporaryDir directory;
    const QString fileName = directory.filePath(QStringLiteral("month.bmp"));
    QString error;
    ASSERT_TRUE(calender->CalenderSavePicture(fileName, error));
    const QByteArray before = [&] {
        QFile file(fileName);
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }();
    surface.Resize(0, 0);
    calender->Display();
    EXPECT_FALSE(calender->CalenderSavePicture(fileName, error));
    QFile file(fileName);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
}

// The pixels of a cell's first title line beside the same text drawn whole by
// QPainter, centred as the grid centres it: how many differ by more than a
// shade of anti-aliasing.
int PixelsUnlikeTheWholeText(const QImage& drawn, const QString& text, double cellLeft,
                             double lineTop) {
    const QFont font(QStringLiteral("Arial"), 9);  // the surface's own font
    QImage expected = drawn.copy();
    const QFontMetricsF metrics(font, &expected);
    const double width = metrics.horizontalAdvance(text);
    const int x = static_cast<int>(std::floor(cellLeft + RoundHalfEven(50 - width / 2) + 0.5));
    const int y = static_cast<int>(std::floor(lineTop + 0.5));
    const QRect line(static_cast<int>(cellLeft) + 2, y, 96, static_cast<int>(metrics.height()));
    {
        QPainter painter(&expected);
        painter.fillRect(line, drawn.pixelColor(line.topLeft()));
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(QPointF(x, y + metrics.ascent()), text);
    }
    int unlike = 0;
    for (int py = line.top(); py <= line.bottom(); ++py) {
        for (int px = line.left(); px <= line.right(); ++px) {
            const QColor a = drawn.pixelColor(px, py);
            const QColor b = expected.pixelColor(px, py);
            constexpr int kShade = 24;
            unlike += std::abs(a.red() - b.red()) > kShade ||
                      std::abs(a.green() - b.green()) > kShade ||
                      std::abs(a.blue() - b.blue()) > kShade;
        }
    }
    return unlike;
}

TEST_F(RenderingTest, AnArabicTitleIsDrawnWithItsLettersJoined) {
    const QString arabic = QStringLiteral("\u0645\u0631\u062d\u0628\u0627");
    calender->Months[2].Dates[9].Title = arabic;  // 9 March: row 2, column 5
    calender->Display();
    const double lineTop = calender->GridTop + RowHeight() + surface.TextHeight(arabic);
    EXPECT_EQ(PixelsUnlikeTheWholeText(surface.Image(), arabic, 400, lineTop), 0);
}

TEST_F(RenderingTest, AZeroSizedSurfaceRedrawsWithoutError) {
    surface.Resize(0, 0);
    calender->Display();
    calender->DisplayMonth(2);
    calender->Calender_MouseDown(CalenderEvents::MouseButton::Left, 0, 0);
    calender->Calender_Click();
    EXPECT_TRUE(surface.Image().isNull());
    EXPECT_EQ(surface.ColourAt(5, 5), 100 + 100 * 256 + 100 * 65536);
}

}  // namespace
}  // namespace kelvane
