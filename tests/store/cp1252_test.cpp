#include <gtest/gtest.h>

#include "store/Cp1252.h"

namespace kelvane {
namespace {

TEST(Cp1252, EncodesOneBytePerCharacter) {
    EXPECT_EQ(EncodeCp1252(QStringLiteral("Caf\u00e9 \u20ac5")), QByteArray("Caf\xe9 \x80"
                                                                            "5"));
    EXPECT_EQ(EncodeCp1252(QStringLiteral("\u201cquoted\u201d")), QByteArray("\x93quoted\x94"));
}

TEST(Cp1252, CharactersItLacksBecomeQuestionMarks) {
    EXPECT_EQ(EncodeCp1252(QStringLiteral("\u4e2d\u6587")), QByteArray("??"));
}

TEST(Cp1252, EveryByteRoundTrips) {
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte) {
        all.append(static_cast<char>(byte));
    }
    const QString text = DecodeCp1252(all);
    EXPECT_EQ(text.size(), 256);
    EXPECT_EQ(EncodeCp1252(text), all);
}

TEST(Cp1252, DecodesTheWindowsCharacters) {
    EXPECT_EQ(DecodeCp1252("\x80\x85\x99"), QStringLiteral("\u20ac\u2026\u2122"));
    EXPECT_EQ(DecodeCp1252("\xe9t\xe9"), QStringLiteral("\u00e9t\u00e9"));
}

}  // namespace
}  // namespace kelvane
