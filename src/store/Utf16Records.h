#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

// The text fields of the temporary record files: each character as one UTF-16
// code unit in two bytes, little-endian, so that text in every script comes
// back as it went in, whatever machine wrote it.
namespace kelvane {

// Bytes a text field of `characters` characters takes in a record.
constexpr int RecordTextBytes(int characters) {
    return 2 * characters;
}

// Writes the text's code units into `out`, which has room for
// RecordTextBytes(text.size()) bytes.
void EncodeRecordTextTo(QStringView text, char* out);
QByteArray EncodeRecordText(QStringView text);
// One character per two bytes (an odd last byte is ignored). NUL code units
// only come from a region of the file never written; they read as blanks.
QString DecodeRecordText(QByteArrayView bytes);
// The same into `out`, which has room for bytes.size() / 2 code units.
void DecodeRecordTextTo(QByteArrayView bytes, char16_t* out);

}  // namespace kelvane
