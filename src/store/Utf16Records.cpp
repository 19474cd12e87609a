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

QString DecodeRecordText(QByteArrayView bytes) {
    if (bytes.size() < 2) {
        return QString();
    }
    QString text(bytes.size() / 2, Qt::Uninitialized);
    qFromLittleEndian<quint16>(bytes.data(), text.size(), text.data());
    if (text.contains(QChar(0))) {
        text.replace(QChar(0), QLatin1Char(' '));
    }
    return text;
}

}  // namespace kelvane
