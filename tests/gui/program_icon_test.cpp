#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <QSet>

#include <gtest/gtest.h>

#include <string>

#include "gui/ProgramIcon.h"

namespace kelvane {
namespace {

// The checked-in icon theme tree, packaging/icons/hicolor.
const QString kIconFolder = QStringLiteral(KELVANE_ICON_FOLDER);

QString CheckedInIcon(int size) {
    return QDir(kIconFolder).filePath(QStringLiteral("%1x%1/apps/kelvane.png").arg(size));
}

// The PNG keeps straight (not premultiplied) colour, so both pictures are
// compared in that form.
QImage Straight(const QImage& image) {
    return image.convertToFormat(QImage::Format_ARGB32);
}

class CheckedInIconTest : public ::testing::TestWithParam<int> {};

TEST_P(CheckedInIconTest, IsTheProgramsPicturePixelForPixel) {
    const int size = GetParam();
    const QImage checkedIn(CheckedInIcon(size));
    ASSERT_FALSE(checkedIn.isNull()) << CheckedInIcon(size).toStdString();
    const QImage drawn = Straight(ProgramPicture(size).toImage());
    const QImage stored = Straight(checkedIn);
    ASSERT_EQ(stored.size(), drawn.size());
    int differing = 0;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            if (stored.pixel(x, y) != drawn.pixel(x, y)) {
                ++differing;
            }
        }
    }
    EXPECT_EQ(differing, 0) << "the picture has changed: run kelvane-icon-export "
                               "packaging/icons/hicolor (see tools/README.md)";
}

INSTANTIATE_TEST_SUITE_P(EverySize, CheckedInIconTest, ::testing::ValuesIn(kProgramIconSizes),
                         [](const ::testing::TestParamInfo<int>& size) {
                             return std::to_string(size.param);
                         });

TEST(CheckedInIcons, AreOnlyThoseOfTheProgramsSizes) {
    QSet<QString> expected;
    for (const int size : kProgramIconSizes) {
        expected.insert(QDir::cleanPath(CheckedInIcon(size)));
    }
    QSet<QString> found;
    QDirIterator files(kIconFolder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        found.insert(QDir::cleanPath(files.next()));
    }
    EXPECT_EQ(found, expected);
}

}  // namespace
}  // namespace kelvane
