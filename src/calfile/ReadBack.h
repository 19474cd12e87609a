#pragma once

#include <QByteArray>
#include <QString>

namespace kelvane {

// Reads the whole of `fileName` into `bytes`; false when it cannot be opened
// or read.
bool ReadWholeFile(const QString& fileName, QByteArray& bytes);

// Whether `fileName` holds exactly `expected`, byte for byte and no more;
// false when it cannot be opened or read to its end.
bool FileHolds(const QString& fileName, const QByteArray& expected);

}  // namespace kelvane
