#include "store/Utf16Records.h"

#include <QtEndian>

#include <algorithm>

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

void DecodeRecordTextTo(QByteArrayView bytes, char16_t* out) {
    const qsizetype units = bytes.size() / 2;
    if (units > 0) {
        qFromLittleEndian<quint16>(bytes.data(), units, out);
        std::replace(out, out + units, u'\0', u' ');
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
