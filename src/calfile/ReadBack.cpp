#include "calfile/ReadBack.h"

#include <QFile>

#include <cstring>

namespace kelvane {

namespace {

// The file is read back in pieces of this size, into the same small buffer:
// no memory the size of the file is taken for it.
constexpr qint64 kPieceSize = 64 * 1024;

}  // namespace

bool ReadWholeFile(const QString& fileName, QByteArray& bytes) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    bytes = file.readAll();
    return file.error() == QFileDevice::NoError;
}

bool FileHolds(const QString& fileName, const QByteArray& expected) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return false;
    }
    QByteArray piece(kPieceSize, Qt::Uninitialized);
    qint64 compared = 0;
    for (;;) {
        const qint64 read = file.read(piece.data(), kPieceSize);
        if (read <= 0) {
            return read == 0 && compared == expected.size();
        }
        if (read > expected.size() - compared ||
            std::memcmp(piece.constData(), expected.constData() + compared, read) != 0) {
            return false;
        }
        compared += read;
    }
}

}  // namespace kelvane
