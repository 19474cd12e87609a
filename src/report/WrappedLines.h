#pragma once

#include <QFont>
#include <QString>
#include <QTextBoundaryFinder>
#include <QTextLayout>

#include <memory>
#include <unordered_map>
#include <vector>

namespace kelvane {

// A text's lines as a view shows them wrapped at a width: where each line
// starts, and how many rows (visual lines) the lines laid out so far take. A
// line not laid out yet counts as one row. Only the lines asked for are laid
// out, and only the last few layouts are kept, so taking a text costs one pass
// over it and a number per line.
class WrappedLines {
  public:
    // A row given as its line and its place among that line's rows.
    struct Row {
        int line = 0;
        int inLine = 0;
    };

    // A stretch of the text, from `start` up to `end`.
    struct Span {
        qsizetype start = 0;
        qsizetype end = 0;
    };

    void SetText(const QString& text);
    const QString& Text() const { return text_; }
    int LineCount() const { return static_cast<int>(starts_.size()); }
    qsizetype LineStart(int line) const { return starts_[static_cast<std::size_t>(line)]; }
    // Where the line's text ends: at its line break, or at the end of the text.
    qsizetype LineEnd(int line) const;
    // Where the next line starts: after the line break, or the end of the text.
    qsizetype LineStop(int line) const;
    // The line that holds `offset` (0 up to the text's size).
    int LineAt(qsizetype offset) const;
    // The character, word or sentence (as `type` finds them within its line)
    // that holds `offset`; at the end of a line, its line break.
    Span SegmentAt(QTextBoundaryFinder::BoundaryType type, qsizetype offset) const;

    // Forgets the layouts when the font or the width changed; true then.
    bool SetFormat(const QFont& font, qreal width);
    int RowHeight() const { return rowHeight_; }

    // The line laid out, its rows one RowHeight apart from y = 0. The
    // reference holds until the next call.
    const QTextLayout& Layout(int line);
    int RowCount() const { return LineCount() + extraRowsTotal_; }
    // The rows before the line's first.
    int FirstRow(int line) const;
    // The row `row` counts from the top; past the last row, the last line.
    Row RowAt(int row) const;

  private:
    void Forget();
    void CountRows(int line, int rows);
    int ExtraRowsBefore(int line) const;

    QString text_;
    std::vector<qsizetype> starts_{0};
    QFont font_;
    qreal width_ = -1;
    int rowHeight_ = 1;
    std::unordered_map<int, std::unique_ptr<QTextLayout>> layouts_;
    // A Fenwick tree of each line's rows beyond its first, made when the
    // first line turns out to wrap.
    std::vector<int> extraRows_;
    int extraRowsTotal_ = 0;
};

}  // namespace kelvane
