// Selecting and copying in the line view, by mouse, keys and menu, and what a
// screen reader learns of it.
#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>

#include <memory>

#include "report/LineTextViewFixture.h"
#include "support/EveryScript.h"

namespace kelvane::line_text_view_test {
namespace {

using kelvane::testing::kEveryScript;

QAction* Action(QMenu* menu, const char* name) {
    return menu->findChild<QAction*>(QString::fromLatin1(name));
}

// --- the mouse and keys ---

TEST_F(LineTextViewTest, ADragSelectsAndCopyPutsExactlyThatOnTheClipboard) {
    view.setPlainText(QStringLiteral("first line\nsecond line\nthird"));
    Paint();
    Press(OnRow(0));
    DragTo(OnRow(1, Port()->width() - 10));
    Release(OnRow(1, Port()->width() - 10));
    EXPECT_EQ(view.selectedText(), "first line\nsecond line");
    QGuiApplication::clipboard()->clear();
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "first line\nsecond line");
}

TEST_F(LineTextViewTest, ADragBackwardsSelectsTheSame) {
    view.setPlainText(QStringLiteral("first line\nsecond line"));
    Paint();
    Press(OnCharacter(14));
    DragTo(OnCharacter(2));
    Release(OnCharacter(2));
    EXPECT_EQ(view.selectedText(), "rst line\nsec");
    EXPECT_EQ(view.cursorPosition(), view.selectionStart());
}

TEST_F(LineTextViewTest, ShiftClickExtendsTheSelection) {
    view.setPlainText(QStringLiteral("one two three"));
    Paint();
    Press(OnCharacter(4));
    Release(OnCharacter(4));
    Press(OnCharacter(8), Qt::ShiftModifier);
    Release(OnCharacter(8));
    EXPECT_EQ(view.selectedText(), "two ");
}

TEST_F(LineTextViewTest, ADragBelowTheBoxScrollsOn) {
    view.setPlainText(NumberedLines(200));
    Paint();
    Press(OnRow(0));
    DragTo(QPoint(20, Port()->height() + 20));
    QTRY_VERIFY(Bar()->value() >= 3);
    Release(QPoint(20, Port()->height() + 20));
    const int scrolled = Bar()->value();
    QTest::qWait(150);
    EXPECT_EQ(Bar()->value(), scrolled);
    EXPECT_GE(view.selectionEnd(), view.Lines().LineStart(Bar()->pageStep() + 3));
    EXPECT_EQ(view.selectionStart(), 0);
}

TEST_F(LineTextViewTest, ADoubleClickSelectsAWordAndATripleClickItsLine) {
    view.setPlainText(QStringLiteral("hello world\nnext line\nlast"));
    Paint();
    QTest::mouseDClick(Port(), Qt::LeftButton, {}, OnCharacter(8));
    EXPECT_EQ(view.selectedText(), "world");
    QTest::mouseClick(Port(), Qt::LeftButton, {}, OnCharacter(8));
    EXPECT_EQ(view.selectedText(), "hello world\n");
}

TEST_F(LineTextViewTest, ADragAfterADoubleClickGoesByWords) {
    view.setPlainText(QStringLiteral("one two three four five"));
    Paint();
    QTest::mouseDClick(Port(), Qt::LeftButton, {}, OnCharacter(9));
    ASSERT_EQ(view.selectedText(), "three");
    DragTo(OnCharacter(15));
    EXPECT_EQ(view.selectedText(), "three four");
    DragTo(OnCharacter(5));
    EXPECT_EQ(view.selectedText(), "two three");
    EXPECT_EQ(view.cursorPosition(), 4);
    Release(OnCharacter(5));
    Press(OnCharacter(20), Qt::ShiftModifier);
    EXPECT_EQ(view.selectedText(), "three four five");
}

TEST_F(LineTextViewTest, ADragAfterATripleClickGoesByLines) {
    view.setPlainText(QStringLiteral("first\nsecond\nthird\nfourth"));
    Paint();
    QTest::mouseDClick(Port(), Qt::LeftButton, {}, OnCharacter(8));
    QTest::mousePress(Port(), Qt::LeftButton, {}, OnCharacter(8));
    ASSERT_EQ(view.selectedText(), "second\n");
    DragTo(OnCharacter(15));
    EXPECT_EQ(view.selectedText(), "second\nthird\n");
    DragTo(OnCharacter(1));
    EXPECT_EQ(view.selectedText(), "first\nsecond\n");
}

TEST_F(LineTextViewTest, ADoubleClickOnAnEmptyLineSelectsNothing) {
    view.setPlainText(QStringLiteral("above\n\nbelow"));
    view.selectAll();
    Paint();
    QTest::mouseDClick(Port(), Qt::LeftButton, {}, OnRow(1, 40));
    EXPECT_FALSE(view.hasSelection());
    EXPECT_EQ(view.cursorPosition(), 6);
}

TEST_F(LineTextViewTest, AnEmptyBoxTakesClicksAndSelectsNothing) {
    Paint();
    QTest::mouseClick(Port(), Qt::LeftButton, {}, OnRow(0));
    QTest::mouseDClick(Port(), Qt::LeftButton, {}, OnRow(2, 50));
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_FALSE(view.hasSelection());
    EXPECT_EQ(view.OffsetAt(OnRow(0)), 0);
    EXPECT_TRUE(view.CharacterRect(0).isValid());
}

TEST_F(LineTextViewTest, CtrlASelectsAll) {
    view.setPlainText(QStringLiteral("a\nb"));
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(view.selectedText(), "a\nb");
    EXPECT_EQ(view.cursorPosition(), 3);
}

TEST_F(LineTextViewTest, CopyWithoutASelectionLeavesTheClipboard) {
    view.setPlainText(QStringLiteral("text"));
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "before");
}

TEST_F(LineTextViewTest, EveryScriptIsSelectedByWholeCharacters) {
    view.resize(900, 200);
    view.setPlainText(kEveryScript);
    Paint();
    for (int x = 0; x < Port()->width(); x += 3) {
        const qsizetype at = view.OffsetAt(OnRow(0, x));
        ASSERT_TRUE(at == 0 || at == kEveryScript.size() || !kEveryScript.at(at).isLowSurrogate())
            << at;
    }
    const qsizetype party = kEveryScript.indexOf(QStringLiteral("\U0001F389"));
    QTest::mouseDClick(Port(), Qt::LeftButton, {}, OnCharacter(party));
    EXPECT_EQ(view.selectedText(), QStringLiteral("\U0001F389"));
}

TEST_F(LineTextViewTest, TheSelectionIsPaintedInTheHighlightColours) {
    view.setPlainText(QStringLiteral("a\n\nb"));
    view.selectAll();
    const QImage image = view.grab().toImage();
    const QPoint emptyLine = Port()->mapTo(&view, OnRow(1, LineTextView::TextMargin + 1));
    EXPECT_EQ(image.pixelColor(emptyLine), view.palette().color(QPalette::Highlight));
    const QPoint afterText = Port()->mapTo(&view, OnRow(2, Port()->width() / 2));
    EXPECT_EQ(image.pixelColor(afterText), view.palette().color(QPalette::Base));
}

// The word stands at the left, as in Qt's plain text box (whose text option
// also aligns left), and reads from its right end.
TEST_F(LineTextViewTest, ARightToLeftWordIsSelectedFromItsRightEnd) {
    const QString hebrew = QStringLiteral("\u05e9\u05dc\u05d5\u05dd");
    view.setPlainText(hebrew);
    Paint();
    const QRect first = view.CharacterRect(0);
    const QRect last = view.CharacterRect(3);
    EXPECT_LT(last.left(), first.left());
    const QPoint rightEnd = OnRow(0, first.right() + 3);
    EXPECT_EQ(view.OffsetAt(rightEnd), 0);
    Press(rightEnd);
    DragTo(QPoint(first.left() + 1, rightEnd.y()));
    EXPECT_EQ(view.selectedText(), hebrew.first(1));
    const QPoint pastLeftEnd = OnRow(0, 0);
    DragTo(pastLeftEnd);
    Release(pastLeftEnd);
    EXPECT_EQ(view.selectedText(), hebrew);
}

// --- the menu ---

TEST_F(LineTextViewTest, TheMenuCopiesOnlyWithASelectionAndSelectsAll) {
    view.setPlainText(QStringLiteral("menu text"));
    std::unique_ptr<QMenu> menu(view.createStandardContextMenu());
    ASSERT_EQ(menu->actions().size(), 3);
    EXPECT_FALSE(Action(menu.get(), "edit-copy")->isEnabled());
    EXPECT_TRUE(Action(menu.get(), "edit-copy")->text().startsWith("&Copy"));
    EXPECT_TRUE(Action(menu.get(), "select-all")->text().startsWith("Select All"));
    Action(menu.get(), "select-all")->trigger();
    EXPECT_EQ(view.selectedText(), "menu text");

    view.select(5, 9);
    menu.reset(view.createStandardContextMenu());
    ASSERT_TRUE(Action(menu.get(), "edit-copy")->isEnabled());
    Action(menu.get(), "edit-copy")->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "text");
}

TEST_F(LineTextViewTest, ARightClickOpensTheMenu) {
    view.setPlainText(QStringLiteral("text"));
    const QPoint at = OnRow(0);
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, Port()->mapToGlobal(at));
    QApplication::sendEvent(Port(), &event);
    auto* menu = view.findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isVisible());
    menu->close();
}

// --- accessibility ---

TEST_F(LineTextViewTest, AScreenReaderFindsANamedReadOnlyText) {
    view.setAccessibleName(QStringLiteral("Report"));
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->role(), QAccessible::EditableText);
    EXPECT_EQ(face->text(QAccessible::Name), "Report");
    EXPECT_TRUE(face->state().readOnly);
    EXPECT_TRUE(face->state().focusable);
    ASSERT_NE(face->textInterface(), nullptr);
}

TEST_F(LineTextViewTest, AScreenReaderReadsTheTextByUnits) {
    view.setPlainText(QStringLiteral("Hello there. Bye now\nsecond line"));
    QAccessibleTextInterface* text = QAccessible::queryAccessibleInterface(&view)->textInterface();
    EXPECT_EQ(text->characterCount(), 32);
    EXPECT_EQ(text->text(6, 11), "there");
    int start = 0;
    int end = 0;
    EXPECT_EQ(text->textAtOffset(7, QAccessible::WordBoundary, &start, &end), "there");
    EXPECT_EQ(start, 6);
    EXPECT_EQ(text->textAtOffset(7, QAccessible::CharBoundary, &start, &end), "h");
    EXPECT_EQ(text->textAtOffset(2, QAccessible::SentenceBoundary, &start, &end), "Hello there. ");
    EXPECT_EQ(text->textAtOffset(3, QAccessible::LineBoundary, &start, &end),
              "Hello there. Bye now\n");
    EXPECT_EQ(text->textAfterOffset(3, QAccessible::LineBoundary, &start, &end), "second line");
    EXPECT_EQ(start, 21);
    EXPECT_EQ(end, 32);
    EXPECT_EQ(text->textBeforeOffset(25, QAccessible::ParagraphBoundary, &start, &end),
              "Hello there. Bye now\n");
    EXPECT_EQ(text->textBeforeOffset(7, QAccessible::WordBoundary, &start, &end), " ");
    EXPECT_EQ(text->textAtOffset(9, QAccessible::NoBoundary, &start, &end), view.toPlainText());
}

TEST_F(LineTextViewTest, AScreenReaderSeesAndSetsTheSelection) {
    view.setPlainText(QStringLiteral("pick some words"));
    QAccessibleTextInterface* text = QAccessible::queryAccessibleInterface(&view)->textInterface();
    EXPECT_EQ(text->selectionCount(), 0);
    EXPECT_EQ(text->cursorPosition(), 0);
    view.select(5, 9);
    ASSERT_EQ(text->selectionCount(), 1);
    int start = 0;
    int end = 0;
    text->selection(0, &start, &end);
    EXPECT_EQ(start, 5);
    EXPECT_EQ(end, 9);
    EXPECT_EQ(text->cursorPosition(), 9);
    text->setSelection(0, 10, 15);
    EXPECT_EQ(view.selectedText(), "words");
    text->removeSelection(0);
    EXPECT_FALSE(view.hasSelection());
}

TEST_F(LineTextViewTest, AScreenReaderFindsCharactersOnScreen) {
    view.setPlainText(NumberedLines(100));
    Paint();
    QAccessibleTextInterface* text = QAccessible::queryAccessibleInterface(&view)->textInterface();
    const qsizetype third = view.Lines().LineStart(2);
    const QRect rect = text->characterRect(static_cast<int>(third));
    EXPECT_EQ(rect.translated(-Port()->mapToGlobal(QPoint(0, 0))), view.CharacterRect(third));
    EXPECT_EQ(text->offsetAtPoint(QPoint(rect.left() + 1, rect.center().y())), third);
    text->scrollToSubstring(static_cast<int>(view.Lines().LineStart(80)), 0);
    EXPECT_EQ(Bar()->value(), 81 - Bar()->pageStep());
}

}  // namespace
}  // namespace kelvane::line_text_view_test
