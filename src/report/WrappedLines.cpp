#include "report/WrappedLines.h"

#include <QFontMetrics>
#include <QTextOption>

#include <algorithm>
#include <bit>

namespace kelvane {

namespace {

// Enough for every line of a tall screen in a small font, few enough to stay
// cheap to keep.
constexpr std::size_t kKeptLayouts = 256;

// Breaks the layout into rows of `width`, one `rowHeight` apart; the count.
int BreakIntoRows(QTextLayout& layout, qreal width, int rowHeight) {
    int rows = 0;
    layout.beginLayout();
    for (QTextLine row = layout.createLine(); row.isValid(); row = layout.createLine()) {
        row.setLineWidth(width);
        row.setPosition(QPointF(0, static_cast<qreal>(rows) * rowHeight));
        ++rows;
    }
    layout.endLayout();
    return std::max(rows, 1);
}

}  // namespace

void WrappedLines::SetText(const QString& text) {
    text_ = text;
    starts_.clear();
    starts_.push_back(0);
    const QChar* const units = text_.constData();
    const qsizetype size = text_.size();
    for (qsizetype i = 0; i < size; ++i) {
        if (units[i] == u'\n') {
            starts_.push_back(i + 1);
        }
    }
    Forget();
}

qsizetype WrappedLines::LineEnd(int line) const {
    return line + 1 < LineCount() ? LineStart(line + 1) - 1 : text_.size();
}

qsizetype WrappedLines::LineStop(int line) const {
    return line + 1 < LineCount() ? LineStart(line + 1) : text_.size();
}

int WrappedLines::LineAt(qsizetype offset) const {
    const auto after = std::upper_bound(starts_.begin(), starts_.end(), offset);
    return std::max(0, static_cast<int>(after - starts_.begin()) - 1);
}

WrappedLines::Span WrappedLines::SegmentAt(QTextBoundaryFinder::BoundaryType type,
                                           qsizetype offset) const {
    const int line = LineAt(offset);
    const qsizetype start = LineStart(line);
    const qsizetype end = LineEnd(line);
    if (offset >= end) {
        return {end, LineStop(line)};
    }
    const auto inLine = offset - start;
    QTextBoundaryFinder finder(type, text_.sliced(start, end - start));
    finder.setPosition(inLine);
    const qsizetype from = finder.isAtBoundary() ? inLine : finder.toPreviousBoundary();
    finder.setPosition(inLine);
    const qsizetype to = finder.toNextBoundary();
    return {start + std::max<qsizetype>(from, 0), to < 0 ? end : start + to};
}

bool WrappedLines::SetFormat(const QFont& font, qreal width) {
    if (font == font_ && width == width_) {
        return false;
    }
    font_ = font;
    width_ = width;
    rowHeight_ = std::max(1, QFontMetrics(font_).lineSpacing());
    Forget();
    return true;
}

const QTextLayout& WrappedLines::Layout(int line) {
    const auto found = layouts_.find(line);
    if (found != layouts_.end()) {
        return *found->second;
    }
    if (layouts_.size() >= kKeptLayouts) {
        layouts_.clear();
    }
    const qsizetype start = LineStart(line);
    auto layout = std::make_unique<QTextLayout>(text_.sliced(start, LineEnd(line) - start), font_);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout->setTextOption(option);
    layout->setCacheEnabled(true);
    CountRows(line, BreakIntoRows(*layout, width_, rowHeight_));
    return *layouts_.emplace(line, std::move(layout)).first->second;
}

int WrappedLines::FirstRow(int line) const {
    return line + ExtraRowsBefore(line);
}

WrappedLines::Row WrappedLines::RowAt(int row) const {
    row = std::max(row, 0);
    const int lines = LineCount();
    if (extraRows_.empty()) {
        const int line = std::min(row, lines - 1);
        return {line, row - line};
    }
    // The most lines whose rows all come before `row`, found down the tree.
    int before = 0;
    int extraBefore = 0;
    for (int step = static_cast<int>(std::bit_floor(static_cast<unsigned>(lines))); step > 0;
         step >>= 1) {
        const int next = before + step;
        const int extra = next <= lines ? extraRows_[static_cast<std::size_t>(next)] : 0;
        if (next <= lines && next + extraBefore + extra <= row) {
            before = next;
            extraBefore += extra;
        }
    }
    const int line = std::min(before, lines - 1);
    return {line, row - FirstRow(line)};
}

void WrappedLines::Forget() {
    layouts_.clear();
    extraRows_.clear();
    extraRowsTotal_ = 0;
}

void WrappedLines::CountRows(int line, int rows) {
    const int change = (rows - 1) - (ExtraRowsBefore(line + 1) - ExtraRowsBefore(line));
    if (change == 0) {
        return;
    }
    if (extraRows_.empty()) {
        extraRows_.assign(static_cast<std::size_t>(LineCount()) + 1, 0);
    }
    for (auto i = static_cast<std::size_t>(line) + 1; i < extraRows_.size(); i += i & (~i + 1)) {
        extraRows_[i] += change;
    }
    extraRowsTotal_ += change;
}

int WrappedLines::ExtraRowsBefore(int line) const {
    if (extraRows_.empty()) {
        return 0;
    }
    int sum = 0;
    for (auto i = static_cast<std::size_t>(line); i > 0; i &= i - 1) {
        sum += extraRows_[i];
    }
    return sum;
}

}  // namespace kelvane
