#pragma once

#include <QString>
#include <QWidget>

#include "calfile/FixedText.h"
#include "calfile/OneBased.h"
#include "store/Module1.h"
#include "store/RecordFile.h"
#include "store/Utf16Records.h"

namespace kelvane {

class LineTextView;

// A read-only text box for reports. Lines are added one at a time, each kept as
// exactly 80 characters (cut or blank padded); the first 1000 stay in memory
// and the rest go to a temporary file in the program directory, one record of
// 160 bytes (80 characters in UTF-16 little-endian) per line. The box only
// changes when RefreshDisplay is called.
//
// `module1` gives the program directory, the file numbers and the random
// numbers for the temporary file's name; it must outlive the viewer.
class usrDocViewer : public QWidget {
  public:
    static constexpr int LineLength = 80;
    static constexpr qint16 MemoryLines = 1000;
    // The line count is a 16-bit number; no line is taken beyond this one.
    static constexpr qint16 MostLines = 32767;

    explicit usrDocViewer(Module1& module1, QWidget* parent = nullptr);
    usrDocViewer(const usrDocViewer&) = delete;
    usrDocViewer& operator=(const usrDocViewer&) = delete;
    // Deletes the temporary file, as Terminate does.
    ~usrDocViewer() override;

    // Nothing needs preparing; always true.
    bool Initialize();
    // Closes and deletes the temporary file when one is open. Its name is kept
    // for the next time lines go beyond memory.
    void Terminate();

    // Stores `strA` as the next line; the count grows even when storing fails.
    // False when the line could not be stored (the temporary file did not open
    // or the write failed) or when the count is already at MostLines, which
    // then stays as it is. Does not redraw.
    bool AddLine(const QString& strA);
    // All 80 characters of line `intLineNum`, or "" when there is no such line
    // or it could not be read back.
    QString GetLine(qint16 intLineNum) const;
    qint16 GetLineCount() const { return lineCount_; }
    // Forgets the lines; later lines overwrite the old ones. The box keeps its
    // text and the temporary file stays open.
    void ClearLines();
    // Shows every line without its leading and trailing blanks, one per line,
    // with no line break after the last. Lines kept in the temporary file are
    // written out by then: until a refresh (or a read) they may still wait in
    // the file's buffer.
    void RefreshDisplay();

    // The box that shows the lines, for the dialog's Tab order.
    QWidget* TextBox() const;
    // The name a screen reader gives the viewer and its box, "Report" until
    // set: the report's heading written plainly, where the shown heading is
    // spaced out letter by letter.
    void SetSpokenName(const QString& name);

    // The temporary file's path, "" until lines first went beyond memory.
    const QString& OverflowFilePath() const { return overflowFilePath_; }
    // The temporary file's number, 0 while it is not open.
    qint16 OverflowFileNumber() const { return overflowFileNumber_; }

  private:
    QString ShownText() const;
    void AppendOverflowLines(QString& text) const;
    bool StoreLine(qint16 lineNumber, const QString& text);
    const QByteArray& LineRecord(const QString& text);
    bool OpenOverflowFile();
    QString FreeOverflowPath() const;
    QString RandomLetters(int count) const;

    Module1& module1_;
    LineTextView* txtDocument_;

    qint16 lineCount_ = 0;
    qint16 memoryLimit_;
    OneBased<FixedText<LineLength>, MemoryLines> lines_;
    // The record a line past memory is written from, made anew for each.
    QByteArray lineRecord_{RecordTextBytes(LineLength), Qt::Uninitialized};

    qint16 overflowFileNumber_ = 0;
    QString overflowFilePath_;
    // Mutable because reading a record moves the file's position. Its writes
    // collect in a buffer: the viewer reads its lines back itself, and reading
    // writes the buffer out first.
    mutable RecordFile overflowFile_{RecordTextBytes(LineLength), RecordFile::Writes::Buffered};
};

}  // namespace kelvane
