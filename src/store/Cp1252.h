#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

// Windows-1252, the single-byte code page of the temporary record files and of
// calendar files written on older Windows machines.
namespace kelvane {

// One byte per character; characters the code page lacks become '?'.
QByteArray EncodeCp1252(const QString& text);
// The same into `out`, which has room for text.size() bytes.
void EncodeCp1252To(QStringView text, char* out);
// One character per byte. The five bytes without a character map to the C1
// control of the same number, so every byte round-trips.
QString DecodeCp1252(QByteArrayView bytes);

}  // namespace kelvane
