#include "calfile/Cp1252.h"

#include <array>

namespace kelvane {

namespace {

// Characters of the bytes 0x80..0x9F; the undefined ones keep their own code.
constexpr std::array<char16_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

QString DecodeCp1252(QByteArrayView bytes) {
    unsigned char all = 0;
    for (const char byte : bytes) {
        all |= static_cast<unsigned char>(byte);
    }
    if (all < 0x80) {
        return QString::fromLatin1(bytes);
    }
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* out = text.data();
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        const char16_t c = (byte >= 0x80 && byte < 0xA0) ? kHighControls[byte - 0x80] : byte;
        out[i] = QChar(c);
    }
    return text;
}

}  // namespace kelvane
