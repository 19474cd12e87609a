#include <gtest/gtest.h>

#include "store/Utf16Records.h"
#include "support/EveryScript.h"

namespace kelvane {
namespace {

using testing::kEveryScript;

TEST(RecordText, TakesTwoBytesPerCharacter) {
    EXPECT_EQ(RecordTextBytes(50), 100);
    EXPECT_EQ(RecordTextBytes(80), 160);
    EXPECT_EQ(RecordTextBytes(800), 1600);
}

TEST(RecordText, WritesEachCodeUnitLowByteFirst) {
    // A, L with stroke, the Chinese "north", then the emoji's two surrogates.
    EXPECT_EQ(EncodeRecordText(QStringLiteral("A\u0141\u5317\U0001F389")),
              QByteArray("\x41\x00\x41\x01\x17\x53\x3c\xd8\x89\xdf", 10));
    EXPECT_EQ(EncodeRecordText(QString()), QByteArray());
}

TEST(RecordText, EncodesIntoTheGivenPlace) {
    QByteArray bytes(6, 'x');
    EncodeRecordTextTo(QStringLiteral("ab"), bytes.data() + 1);
    EXPECT_EQ(bytes, QByteArray("xa\x00"
                                "b\x00x",
                                6));
}

TEST(RecordText, TextInEveryScriptRoundTrips) {
    const QByteArray bytes = EncodeRecordText(kEveryScript);
    EXPECT_EQ(bytes.size(), 2 * kEveryScript.size());
    EXPECT_EQ(DecodeRecordText(bytes), kEveryScript);
}

TEST(RecordText, EveryCodeUnitButNulRoundTrips) {
    QString all;
    for (char16_t unit = 1; unit != 0; ++unit) {
        all.append(QChar(unit));
    }
    EXPECT_EQ(DecodeRecordText(EncodeRecordText(all)), all);
}

TEST(RecordText, NulsReadAsBlanks) {
    EXPECT_EQ(DecodeRecordText(QByteArray(6, '\0')), QStringLiteral("   "));
    EXPECT_EQ(DecodeRecordText(QByteArray("a\x00\x00\x00", 4)), QStringLiteral("a "));
    // A NUL byte beside another is part of a character, not a blank.
    EXPECT_EQ(DecodeRecordText(QByteArray("\x00\x01", 2)), QStringLiteral("\u0100"));
}

TEST(RecordText, AnOddLastByteIsIgnored) {
    EXPECT_EQ(DecodeRecordText(QByteArray("a\x00z", 3)), QStringLiteral("a"));
}

}  // namespace
}  // namespace kelvane
