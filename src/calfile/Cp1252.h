#pragma once

#include <QByteArrayView>
#include <QString>

// Windows-1252, the single-byte code page of calendar files written on older
// Windows machines.
namespace kelvane {

// One character per byte. The five bytes without a character map to the C1
// control of the same number, so every byte stands for a character of its own.
QString DecodeCp1252(QByteArrayView bytes);

}  // namespace kelvane
