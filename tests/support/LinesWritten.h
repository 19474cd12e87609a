#pragma once

#include <QBuffer>
#include <QByteArray>

#include "calfile/LineWriter.h"

namespace kelvane::testing {

// The bytes `write` puts out through a LineWriter, flushed.
template <typename Write>
QByteArray LinesWritten(Write write) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    LineWriter out(buffer);
    write(out);
    out.Flush();
    return buffer.data();
}

}  // namespace kelvane::testing
