#pragma once

#include <QAccessibleWidget>

#include <optional>

#include "report/WrappedLines.h"

namespace kelvane {

class LineTextView;

// What a screen reader learns of a LineTextView: a read-only text, its name,
// its text by characters, words, sentences and lines, and its selection.
class LineTextAccessible : public QAccessibleWidget, public QAccessibleTextInterface {
  public:
    explicit LineTextAccessible(LineTextView* view);

    QAccessible::State state() const override;
    QString text(QAccessible::Text type) const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    void selection(int selectionIndex, int* startOffset, int* endOffset) const override;
    int selectionCount() const override;
    void addSelection(int startOffset, int endOffset) override;
    void removeSelection(int selectionIndex) override;
    void setSelection(int selectionIndex, int startOffset, int endOffset) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int startOffset, int endOffset) const override;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundaryType,
                             int* startOffset, int* endOffset) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundaryType,
                            int* startOffset, int* endOffset) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundaryType, int* startOffset,
                         int* endOffset) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int startIndex, int endIndex) override;
    QString attributes(int offset, int* startOffset, int* endOffset) const override;

  private:
    LineTextView* View() const;
    std::optional<WrappedLines::Span> UnitAt(int offset,
                                             QAccessible::TextBoundaryType boundaryType) const;
    QString Give(WrappedLines::Span unit, int* startOffset, int* endOffset) const;
};

// Makes Qt's accessibility use LineTextAccessible for every LineTextView.
void InstallLineTextAccessible();

}  // namespace kelvane
