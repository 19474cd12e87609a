#pragma once

#include <QIODevice>
#include <QString>

#include <initializer_list>

namespace kelvane {

// Writes the lines of a calendar file: UTF-8 text, every line ending in CR LF.
class LineWriter {
  public:
    explicit LineWriter(QIODevice& device) : device_(device) {}

    // A text line as it stands; a line break inside it would split the line,
    // so CR and LF characters are written as blanks.
    void WriteText(const QString& text);
    // A number line in the print form: " 3 ", "-3 ".
    void WriteNumber(qint64 value);
    // A value list: "1,0,255".
    void WriteValueList(std::initializer_list<qint64> values);

    // False once any write failed.
    bool Ok() const { return ok_; }

  private:
    void WriteLine(const QString& line);

    QIODevice& device_;
    bool ok_ = true;
};

}  // namespace kelvane
