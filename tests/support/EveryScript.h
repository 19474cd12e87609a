#pragma once

#include <QByteArray>
#include <QString>

namespace kelvane::testing {

// Text in many scripts: Polish, Chinese, Greek, Russian, an emoji (two code
// units), combining accents, Hebrew and Arabic (written right to left); 39
// code units, so it fits a description.
inline const QString kEveryScript = QStringLiteral(
    "\u0141\u00f3d\u017a \u5317\u4eac \u03a9\u03bc\u03ad\u03b3\u03b1 "
    "\u041f\u0440\u0438\u0432\u0435\u0442 \U0001F389 e\u0301a\u0308 "
    "\u05e9\u05dc\u05d5\u05dd \u0645\u0631\u062d\u0628\u0627");

// The same scripts as a note of three lines, with CR LF line breaks.
inline const QString kEveryScriptNote = QStringLiteral(
    "\u0141\u00f3d\u017a \u5317\u4eac\r\n\u03a9\u03bc\u03ad\u03b3\u03b1 "
    "\u041f\u0440\u0438\u0432\u0435\u0442 \U0001F389\r\ne\u0301a\u0308 "
    "\u05e9\u05dc\u05d5\u05dd \u0645\u0631\u062d\u0628\u0627");

// A text as the temporary files hold it, built here byte by byte: each UTF-16
// code unit, low byte first.
inline QByteArray Utf16Le(const QString& text) {
    QByteArray bytes;
    for (const QChar unit : text) {
        bytes.append(static_cast<char>(unit.unicode() & 0xFF));
        bytes.append(static_cast<char>(unit.unicode() >> 8));
    }
    return bytes;
}

}  // namespace kelvane::testing
