#include <gtest/gtest.h>

#include <QSet>

#include "calfile/Cp1252.h"

namespace kelvane {
namespace {

TEST(Cp1252, DecodesTheWindowsCharacters) {
    EXPECT_EQ(DecodeCp1252("\x80\x85\x99"), QStringLiteral("\u20ac\u2026\u2122"));
    EXPECT_EQ(DecodeCp1252("\x93quoted\x94"), QStringLiteral("\u201cquoted\u201d"));
    EXPECT_EQ(DecodeCp1252("\xe9t\xe9"), QStringLiteral("\u00e9t\u00e9"));
}

TEST(Cp1252, AsciiStaysAsItIs) {
    EXPECT_EQ(DecodeCp1252("Plain text 123"), QStringLiteral("Plain text 123"));
    EXPECT_EQ(DecodeCp1252(""), QString());
}

TEST(Cp1252, EveryByteHasACharacterOfItsOwn) {
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte) {
        all.append(static_cast<char>(byte));
    }
    const QString text = DecodeCp1252(all);
    ASSERT_EQ(text.size(), 256);
    QSet<QChar> distinct(text.begin(), text.end());
    EXPECT_EQ(distinct.size(), 256);
    // The five bytes without a character keep their own code.
    for (const int unassigned : {0x81, 0x8d, 0x8f, 0x90, 0x9d}) {
        EXPECT_EQ(text[unassigned].unicode(), unassigned);
    }
}

}  // namespace
}  // namespace kelvane
