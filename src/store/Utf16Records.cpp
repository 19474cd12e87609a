#include "store/Utf16Records.h"

#include <QtEndian>

namespace kelvane {

void EncodeRecordTextTo(QStringView text, char* out) {
    if (!text.isEmpty()) {  // an empty view may have no data at all
        qToLittleEndian<quint16>(text.utf16(), text.size(), out);
    }
}

QByteArray EncodeRecordText(QStringView text) {
    QByteArray bytes(RecordTextBytes(static_cast<int>(text.size())), Qt::Uninitialized);
    EncodeRecordTextTo(text, bytes.data());
    return bytes;
}

// One pass, with no branch on the text, so that it is vectorised.
void DecodeRecordTextTo(QByteArrayView bytes, char16_t* out) {
    const qsizetype units = bytes.size() / 2;
    const char* const in = bytes.data();
    for (qsizetype i = 0; i < units; ++i) {
        const char16_t unit = qFromLittleEndian<quint16>(in + 2 * i);
        out[i] = unit == u'\0' ? u' ' : unit;
    }
}

QString DecodeRecordText(QByteArrayView bytes) {
    if (bytes.size() < 2) {
        return QString();
    }
    QString text(bytes.size() / 2, Qt::Uninitialized);
    DecodeRecordTextTo(bytes, reinterpret_cast<char16_t*>(text.data()));
    return text;
}

}  // namespace kelvane
