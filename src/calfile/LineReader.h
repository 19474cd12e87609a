#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <span>

namespace kelvane {

// Reads a calendar file line by line. Lines end with CR LF or LF; each line is
// UTF-8, or Windows-1252 when its bytes are not valid UTF-8. The first failure
// is remembered with the number of the line it happened on; after it every read fails.
class LineReader {
  public:
    explicit LineReader(QByteArray content);

    // The next line without its line end; false at the end of the file.
    bool ReadLine(QString& line);
    // A number line: one number with blanks around it, rounded to an integer
    // and limited to the 32-bit range.
    bool ReadNumber(qint32& value);
    // A value list: exactly values.size() numbers separated by commas.
    bool ReadValueList(std::span<qint32> values);
    // The same for 16-bit fields: a number outside -32768..32767 is a failure.
    bool ReadNumber16(qint16& value);
    bool ReadValueList16(std::span<qint16> values);

    bool AtEnd() const { return position_ >= content_.size(); }
    // The number of the last line read, 1 for the first line.
    int LineNumber() const { return lineNumber_; }

    // Marks the line last read as damaged for `reason`; always false.
    bool Reject(const QString& reason) { return Fail(lineNumber_, reason); }

    bool Failed() const { return !failure_.isEmpty(); }
    // The line the first failure happened on.
    int FailureLine() const { return failureLine_; }
    // What was wrong, e.g. "the file ends early".
    QString FailureReason() const { return failure_; }

  private:
    bool Fail(int line, const QString& reason);
    // The next line's bytes without the line end.
    bool NextLine(QByteArrayView& bytes);
    bool ReadNumberText(QByteArrayView bytes, qint32& value);
    bool Narrow(qint32 number, qint16& value);

    QByteArray content_;
    qsizetype position_ = 0;
    int lineNumber_ = 0;
    int failureLine_ = 0;
    QString failure_;
};

}  // namespace kelvane
