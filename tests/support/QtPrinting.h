#pragma once

#include <QString>

#include <ostream>

// Lets test failures and messages show Qt texts as readable UTF-8.
inline std::ostream& operator<<(std::ostream& out, const QString& text) {
    return out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << text;
}
