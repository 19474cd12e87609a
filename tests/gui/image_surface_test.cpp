#include <QBuffer>
#include <QFontMetricsF>
#include <QImageReader>

#include <gtest/gtest.h>

#include "gui/ImageSurface.h"

namespace kelvane {
namespace {

constexpr qint32 kGrey = 100 + 100 * 256 + 100 * 65536;
constexpr qint32 kRed = 255;
constexpr qint32 kBlue = 255 * 65536;

class ImageSurfaceTest : public ::testing::Test {
  protected:
    ImageSurfaceTest() : surface(QColor(100, 100, 100), QColor(1, 2, 3)) {
        surface.Resize(200, 100);
    }

    qint32 At(int x, int y) const { return surface.ColourAt(x, y); }

    ImageSurface surface;
};

TEST_F(ImageSurfaceTest, StartsBlankInTheBackgroundColour) {
    EXPECT_EQ(surface.ScaleWidth(), 200);
    EXPECT_EQ(surface.ScaleHeight(), 100);
    EXPECT_EQ(At(0, 0), kGrey);
    EXPECT_EQ(At(199, 99), kGrey);
}

TEST_F(ImageSurfaceTest, AFilledBoxIncludesBothCorners) {
    surface.FillBox(10, 20, 12, 22, kRed);
    EXPECT_EQ(At(10, 20), kRed);
    EXPECT_EQ(At(12, 22), kRed);
    EXPECT_EQ(At(13, 22), kGrey);
    EXPECT_EQ(At(9, 20), kGrey);
    surface.FillBox(30, 30, 29, 29, kBlue);  // corners in either order
    EXPECT_EQ(At(29, 29), kBlue);
}

TEST_F(ImageSurfaceTest, LinesAreOnePixelWide) {
    surface.DrawLine(50, 0, 50, 100, kRed);
    EXPECT_EQ(At(50, 40), kRed);
    EXPECT_EQ(At(49, 40), kGrey);
    EXPECT_EQ(At(51, 40), kGrey);
    surface.DrawLine(0, 60, 200, 60, kBlue);
    EXPECT_EQ(At(10, 60), kBlue);
    EXPECT_EQ(At(10, 61), kGrey);
}

TEST_F(ImageSurfaceTest, ClearPaintsOverEverythingAndResetsThePoint) {
    surface.FillBox(0, 0, 199, 99, kRed);
    surface.SetCurrentX(40);
    surface.SetCurrentY(30);
    surface.Clear();
    EXPECT_EQ(At(100, 50), kGrey);
    EXPECT_EQ(surface.CurrentX(), 0);
    EXPECT_EQ(surface.CurrentY(), 0);
}

TEST_F(ImageSurfaceTest, OutsideThePictureIsBackground) {
    EXPECT_EQ(At(-1, 0), kGrey);
    EXPECT_EQ(At(500, 500), kGrey);
}

TEST_F(ImageSurfaceTest, PrintMovesTheCurrentPoint) {
    const QString text = QStringLiteral("Hello");
    surface.SetCurrentX(5);
    surface.SetCurrentY(7);
    surface.Print(text, DrawingSurface::LineEnd::StayOnLine);
    EXPECT_DOUBLE_EQ(surface.CurrentX(), 5 + surface.TextWidth(text));
    EXPECT_EQ(surface.CurrentY(), 7);
    surface.Print(text, DrawingSurface::LineEnd::NewLine);
    EXPECT_EQ(surface.CurrentX(), 0);
    EXPECT_DOUBLE_EQ(surface.CurrentY(), 7 + surface.TextHeight(text));
}

TEST_F(ImageSurfaceTest, PrintedTextUsesTheTextColourBelowTheCurrentPoint) {
    surface.SetFontSize(20);
    surface.SetTextColour(kRed);
    surface.SetCurrentY(10);
    surface.Print(QStringLiteral("WWW"), DrawingSurface::LineEnd::NewLine);
    const QImage& image = surface.Image();
    int red = 0;
    int above = 0;
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 200; ++x) {
            if (image.pixelColor(x, y) == QColor(255, 0, 0)) {
                ++red;
                above += y < 10 ? 1 : 0;
            }
        }
    }
    EXPECT_GT(red, 20);
    EXPECT_EQ(above, 0);
}

TEST_F(ImageSurfaceTest, FontChangesChangeTheMeasures) {
    const QString text = QStringLiteral("Measure me");
    surface.SetFontSize(9);
    const double small = surface.TextWidth(text);
    surface.SetFontSize(18);
    EXPECT_GT(surface.TextWidth(text), small * 1.5);
    surface.SetFontBold(true);
    surface.SetFontItalic(true);
    surface.SetFontUnderline(true);
    surface.SetFontName(QStringLiteral("Courier"));
    EXPECT_EQ(surface.FontName(), QStringLiteral("Courier"));
    EXPECT_EQ(surface.FontSize(), 18);
    surface.SetFontSize(0);  // not a size
    EXPECT_EQ(surface.FontSize(), 18);
}

// Arabic letters join, marks sit on their letters and emoji sequences become
// one picture only when the text is shaped; it is measured as it is drawn.
TEST_F(ImageSurfaceTest, MeasuresTextThatNeedsShapingShaped) {
    const QFont font(QStringLiteral("Arial"), 9);
    const QFontMetricsF shaped(font, &surface.Image());
    for (const QString& text : {QStringLiteral("\u0645\u0631\u062d\u0628\u0627 \u0628\u0643\u0645"),
                                QStringLiteral("Cafe\u0301 \u05e9\u05dc\u05d5\u05dd")}) {
        EXPECT_DOUBLE_EQ(surface.TextWidth(text), shaped.horizontalAdvance(text))
            << text.toStdString();
    }
}

TEST_F(ImageSurfaceTest, TheWindowTextColourIsTheOneGiven) {
    EXPECT_EQ(surface.WindowTextColour(), 1 + 2 * 256 + 3 * 65536);
}

TEST_F(ImageSurfaceTest, ANoSizeSurfaceDrawsNothingAndStillMeasures) {
    surface.Resize(0, 0);
    surface.Clear();
    surface.FillBox(0, 0, 10, 10, kRed);
    surface.DrawLine(0, 0, 10, 10, kRed);
    surface.Print(QStringLiteral("x"), DrawingSurface::LineEnd::NewLine);
    EXPECT_EQ(surface.ScaleWidth(), 0);
    EXPECT_GT(surface.TextWidth(QStringLiteral("x")), 0);
    EXPECT_GT(surface.TextHeight(QStringLiteral("x")), 0);
    EXPECT_EQ(At(0, 0), kGrey);
    QByteArray bitmap;
    QString error;
    EXPECT_FALSE(surface.EncodePicture(bitmap, error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_TRUE(bitmap.isEmpty());
}

TEST_F(ImageSurfaceTest, TellsWhenThePictureStartsToChange) {
    int changes = 0;
    surface.OnChanged([&] { ++changes; });
    surface.Clear();
    surface.FillBox(0, 0, 1, 1, kRed);
    surface.FillBox(0, 0, 1, 1, kRed);
    EXPECT_GE(changes, 1);
    EXPECT_LE(changes, 2);
}

TEST_F(ImageSurfaceTest, MakesABitmap) {
    surface.FillBox(0, 0, 0, 0, kBlue);
    QByteArray bitmap;
    QString error;
    ASSERT_TRUE(surface.EncodePicture(bitmap, error));
    QBuffer buffer(&bitmap);
    QImageReader reader(&buffer);
    EXPECT_EQ(reader.format(), QByteArray("bmp"));
    const QImage image = reader.read();
    EXPECT_EQ(image.size(), QSize(200, 100));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(0, 0, 255));
}

// How many pixels of the picture differ from the background.
int MarkedPixels(const ImageSurface& surface) {
    int marked = 0;
    for (int y = 0; y < 100; y += 2) {
        for (int x = 0; x < 200; x += 2) {
            marked += surface.ColourAt(x, y) != kGrey ? 1 : 0;
        }
    }
    return marked;
}

TEST_F(ImageSurfaceTest, TextLargerThanThePictureIsDrawnClipped) {
    surface.SetFontSize(400);
    surface.SetCurrentX(0);
    surface.SetCurrentY(-100);
    surface.Print(QStringLiteral("WWW"), DrawingSurface::LineEnd::NewLine);
    EXPECT_GT(MarkedPixels(surface), 100);
    surface.SetFontSize(32767);
    surface.Clear();
    surface.Print(QStringLiteral("Monthname"), DrawingSurface::LineEnd::NewLine);
    EXPECT_GT(surface.TextHeight(QStringLiteral("X")), 10000);
}

TEST_F(ImageSurfaceTest, AtRatioTwoAOneUnitLineIsTwoDevicePixelsWide) {
    surface.Resize(200, 100, 2.0);
    ASSERT_EQ(surface.Image().size(), QSize(400, 200));
    surface.DrawLine(10, 5, 10, 50, kRed);
    surface.DrawLine(20, 30, 60, 30, kBlue);
    const QImage& image = surface.Image();
    const QColor grey(100, 100, 100);
    EXPECT_EQ(image.pixelColor(19, 40), grey);
    EXPECT_EQ(image.pixelColor(20, 40), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(21, 40), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(22, 40), grey);
    EXPECT_EQ(image.pixelColor(80, 59), grey);
    EXPECT_EQ(image.pixelColor(80, 60), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(80, 61), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(80, 62), grey);
}

TEST_F(ImageSurfaceTest, AtRatioTwoSizesAndPointsStayInUnits) {
    surface.Resize(200, 100, 2.0);
    EXPECT_EQ(surface.ScaleWidth(), 200);
    EXPECT_EQ(surface.ScaleHeight(), 100);
    EXPECT_EQ(surface.PixelRatio(), 2.0);
    surface.FillBox(10, 20, 12, 22, kRed);
    EXPECT_EQ(At(10, 20), kRed);
    EXPECT_EQ(At(12, 22), kRed);
    EXPECT_EQ(At(13, 22), kGrey);
    EXPECT_EQ(At(199, 99), kGrey);
}

TEST_F(ImageSurfaceTest, AtRatioTwoTextIsMeasuredAsAtRatioOne) {
    const double width = surface.TextWidth(QStringLiteral("Stand-up"));
    const double height = surface.TextHeight(QStringLiteral("Stand-up"));
    surface.Resize(200, 100, 2.0);
    EXPECT_EQ(surface.TextWidth(QStringLiteral("Stand-up")), width);
    EXPECT_EQ(surface.TextHeight(QStringLiteral("Stand-up")), height);
}

// Letters drawn at one pixel per unit and doubled are blocks of four equal
// pixels; letters drawn at the density are not.
TEST_F(ImageSurfaceTest, AtRatioTwoTextIsDrawnAtTheDensityNotDoubled) {
    surface.SetTextColour(kRed);
    surface.Print(QStringLiteral("Wide text"), DrawingSurface::LineEnd::NewLine);
    const QImage doubled = surface.Image().scaled(400, 200);
    surface.Resize(200, 100, 2.0);
    surface.SetTextColour(kRed);
    surface.Print(QStringLiteral("Wide text"), DrawingSurface::LineEnd::NewLine);
    const QImage& sharp = surface.Image();
    int differing = 0;
    bool anyRed = false;
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 200; ++x) {
            differing += sharp.pixel(x, y) != doubled.pixel(x, y) ? 1 : 0;
            anyRed = anyRed || sharp.pixelColor(x, y).red() > 200;
        }
    }
    EXPECT_TRUE(anyRed);
    EXPECT_GT(differing, 50);
}

TEST_F(ImageSurfaceTest, AtAFractionalRatioColoursAreReadAsAtRatioOne) {
    surface.Resize(200, 100, 1.25);
    surface.DrawLine(7, 0, 7, 99, kRed);
    EXPECT_EQ(At(6, 50), kGrey);
    EXPECT_EQ(At(7, 50), kRed);
    EXPECT_EQ(At(8, 50), kGrey);
}

TEST_F(ImageSurfaceTest, AtRatioTwoTheSavedPictureHasTheSizeInUnits) {
    surface.Resize(200, 100, 2.0);
    surface.FillBox(0, 0, 99, 99, kRed);
    QByteArray bitmap;
    QString error;
    ASSERT_TRUE(surface.EncodePicture(bitmap, error)) << error.toStdString();
    const QImage saved = QImage::fromData(bitmap, "BMP");
    EXPECT_EQ(saved.size(), QSize(200, 100));
    EXPECT_EQ(saved.pixelColor(50, 50), QColor(Qt::red));
    EXPECT_EQ(saved.pixelColor(150, 50), QColor(100, 100, 100));
}

TEST_F(ImageSurfaceTest, TellsWhenADrawingIsDone) {
    int done = 0;
    surface.OnFinished([&done] { ++done; });
    surface.DrawingDone();
    EXPECT_EQ(done, 1);
}

}  // namespace
}  // namespace kelvane
