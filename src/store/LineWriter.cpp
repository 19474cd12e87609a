#include "store/LineWriter.h"

#include "store/Conversions.h"

namespace kelvane {

void LineWriter::WriteLine(const QString& line) {
    QByteArray bytes = line.toUtf8();
    bytes += "\r\n";
    if (ok_ && device_.write(bytes) != bytes.size()) {
        ok_ = false;
    }
}

void LineWriter::WriteText(const QString& text) {
    QString line = text;
    line.replace(QLatin1Char('\r'), QLatin1Char(' '));
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    WriteLine(line);
}

void LineWriter::WriteNumber(qint64 value) {
    WriteLine(PrintNumber(value));
}

void LineWriter::WriteValueList(std::initializer_list<qint64> values) {
    WriteLine(kelvane::WriteValueList(values));
}

}  // namespace kelvane
