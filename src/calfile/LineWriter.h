#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <QStringView>

#include <initializer_list>

namespace kelvane {

// Writes the lines of a calendar file: UTF-8 text, every line ending in CR LF.
// Lines are collected and handed to the device in large pieces: by Flush, by
// Ok, when enough have gathered, and at the latest when the writer goes away.
class LineWriter {
  public:
    explicit LineWriter(QIODevice& device) : device_(device) {}
    LineWriter(const LineWriter&) = delete;
    LineWriter& operator=(const LineWriter&) = delete;
    ~LineWriter() { Flush(); }

    // A text line as it stands; a line break inside it would split the line,
    // so CR and LF characters are written as blanks.
    void WriteText(QStringView text);
    // A number line in the print form: " 3 ", "-3 ".
    void WriteNumber(qint64 value);
    // A value list of at most five numbers: "1,0,255".
    void WriteValueList(std::initializer_list<qint64> values);

    // Hands every line written so far to the device.
    void Flush();
    // Flushes; false once any write failed.
    bool Ok() {
        Flush();
        return ok_;
    }

  private:
    // Room for `length` more bytes after the pending ones; where they go.
    char* Room(qsizetype length);
    // Takes the bytes put in the room up to `end` as pending, and hands them
    // over when enough have gathered.
    void EndLine(const char* end);

    QIODevice& device_;
    // Complete lines not yet handed to the device are its first `pending_`
    // bytes; the rest is room for the lines to come.
    QByteArray buffer_;
    qsizetype pending_ = 0;
    bool ok_ = true;
};

}  // namespace kelvane
