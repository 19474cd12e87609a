#include <QBuffer>

#include <gtest/gtest.h>

#include "calfile/LineWriter.h"
#include "support/LinesWritten.h"

namespace kelvane {
namespace {

using testing::LinesWritten;

// A device that takes only so many bytes, like a disk that fills up.
class FullDevice final : public QBuffer {
  public:
    explicit FullDevice(qint64 room) : room_(room) {}

  protected:
    qint64 writeData(const char* data, qint64 length) override {
        if (length > room_) {
            return -1;
        }
        room_ -= length;
        return QBuffer::writeData(data, length);
    }

  private:
    qint64 room_;
};

TEST(LineWriter, WritesTheThreeLineFormsWithCrLf) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    LineWriter out(buffer);
    out.WriteText(QStringLiteral("Marrowby Kelvane 2000 File"));
    out.WriteNumber(2026);
    out.WriteNumber(-1);
    out.WriteValueList({1, 0, 255, 128, 0});
    EXPECT_TRUE(out.Ok());
    EXPECT_EQ(buffer.data(), QByteArray("Marrowby Kelvane 2000 File\r\n 2026 \r\n-1 \r\n"
                                        "1,0,255,128,0\r\n"));
}

TEST(LineWriter, WritesNumbersWithTheirBlanksAndListsWithout) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    LineWriter out(buffer);
    out.WriteNumber(0);
    out.WriteNumber(-12);
    out.WriteValueList({-25, -5, 20});
    out.WriteValueList({});
    out.Flush();
    EXPECT_EQ(buffer.data(), QByteArray(" 0 \r\n-12 \r\n-25,-5,20\r\n\r\n"));
}

TEST(LineWriter, WritesEveryNumberInItsDecimalDigits) {
    const QList<qint64> values = {-1000,
                                  -101,
                                  -100,
                                  -99,
                                  -10,
                                  -9,
                                  -1,
                                  0,
                                  1,
                                  9,
                                  10,
                                  11,
                                  42,
                                  99,
                                  100,
                                  101,
                                  999,
                                  1000,
                                  65535,
                                  -9223372036854775807LL,
                                  9223372036854775807LL};
    for (const qint64 value : values) {
        const QByteArray digits = QByteArray::number(value);
        const QByteArray blank = value >= 0 ? " " : "";
        EXPECT_EQ(LinesWritten([value](LineWriter& out) { out.WriteNumber(value); }),
                  blank + digits + " \r\n");
        EXPECT_EQ(LinesWritten([value](LineWriter& out) {
                      out.WriteValueList({value, value});
                  }),
                  digits + "," + digits + "\r\n");
    }
}

// Lines longer than the writer's usual room, between short ones.
TEST(LineWriter, WritesLinesLongerThanItsBuffer) {
    const QString longLine(200000, QLatin1Char('y'));
    QByteArray expected;
    const QByteArray written = LinesWritten([&](LineWriter& out) {
        for (int i = 0; i < 3; ++i) {
            out.WriteNumber(i);
            out.WriteText(longLine);
        }
    });
    for (int i = 0; i < 3; ++i) {
        expected += " " + QByteArray::number(i) + " \r\n" + longLine.toLatin1() + "\r\n";
    }
    EXPECT_EQ(written, expected);
}

TEST(LineWriter, WritesUtf8) {
    EXPECT_EQ(
        LinesWritten([](LineWriter& out) { out.WriteText(QStringLiteral("Caf\u00e9 \u20ac")); }),
        QByteArray("Caf\xc3\xa9 \xe2\x82\xac\r\n"));
}

TEST(LineWriter, LineBreaksInsideATextBecomeBlanks) {
    EXPECT_EQ(LinesWritten([](LineWriter& out) { out.WriteText(QStringLiteral("a\r\nb\nc")); }),
              QByteArray("a  b c\r\n"));
}

TEST(LineWriter, HandsItsLinesOverWhenItGoesAway) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        LineWriter out(buffer);
        out.WriteNumber(1);
        EXPECT_TRUE(buffer.data().isEmpty());
    }
    EXPECT_EQ(buffer.data(), QByteArray(" 1 \r\n"));
}

TEST(LineWriter, HandsLargeAmountsOverWithoutBeingAsked) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    LineWriter out(buffer);
    for (int i = 0; i < 10000; ++i) {
        out.WriteText(QStringLiteral("a line of some length"));
    }
    EXPECT_GE(buffer.data().size(), 64 * 1024);
}

TEST(LineWriter, RemembersAFailedWrite) {
    FullDevice device(8);
    device.open(QIODevice::WriteOnly);
    LineWriter out(device);
    out.WriteText(QStringLiteral("fits"));
    EXPECT_TRUE(out.Ok());
    out.WriteText(QStringLiteral("does not fit"));
    EXPECT_FALSE(out.Ok());
    out.WriteText(QStringLiteral("x"));
    EXPECT_FALSE(out.Ok());
}

}  // namespace
}  // namespace kelvane
