#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

// Windows-1252, the single-byte code page of the temporary record files and of
// calendar files written on older Windows machines.
namespace kelvane {

// One byte per character; characters the code page lacks become '?'.
QByteArray EncodeCp1252(const QString& text);
// One character per byte. The five bytes without a character map to the C1
// control of the same number, so every byte round-trips.
QString DecodeCp1252(QByteArrayView bytes);

}  // namespace kelvane
