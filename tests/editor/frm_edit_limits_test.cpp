// The date editor's boxes stop taking text at the length of the field it is
// stored in, so that OK stores exactly what the boxes show.
#include <QClipboard>
#include <QGuiApplication>

#include <gtest/gtest.h>

#include "support/EditorWorld.h"

namespace kelvane::testing {
namespace {

const QString kAcuteMark = QStringLiteral("\u0301");
const QString kFamily = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");  // 8 units
const QString kFrance = QStringLiteral("\U0001F1EB\U0001F1F7");                        // 4 units
const QString kHangul = QStringLiteral("\u1100\u1161\u11A8");                          // 3 units
const QString kParty = QStringLiteral("\U0001F389");                                   // 2 units

// Ctrl+V with `text` on the clipboard.
void Paste(QWidget* box, const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
}

// One key press that gives `text`, as a keyboard or input method sends a
// character that no plain key has.
void TypeKey(QWidget* box, const QString& text) {
    QTest::sendKeyEvent(QTest::Press, box, Qt::Key_unknown, text, Qt::NoModifier);
    QTest::sendKeyEvent(QTest::Release, box, Qt::Key_unknown, text, Qt::NoModifier);
}

// Puts the keyboard at the end of a text box that holds `text`.
void StartNote(frmEdit& dialog, const QString& text) {
    dialog.tabEdit->setCurrentIndex(2);
    dialog.txtNotes->setPlainText(text);
    dialog.txtNotes->moveCursor(QTextCursor::End);
}

QString NoteAsStored(const frmEdit& dialog) {
    return dialog.txtNotes->toPlainText().replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

TEST(EditorLimits, TypingStopsAtTheTitlesLengthAndOkStoresWhatIsShown) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    EditorWorld::Type(dialog.txtTitle, QString(250, u'a'));
    QTest::keyClicks(dialog.txtTitle, QStringLiteral("bcdefghij"));
    EXPECT_EQ(dialog.txtTitle->text(), QString(250, u'a') + QStringLiteral("bcdef"));
    EditorWorld::Click(dialog.cmdOK);
    EXPECT_EQ(w.world.calender.CurrentEntry.Title.Value(), dialog.txtTitle->text());
}

TEST(EditorLimits, AMarkTypedAtTheTitlesEndIsRefusedRatherThanTornOffOnOk) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    EditorWorld::Type(dialog.txtTitle, QString(253, u'a'));
    QTest::keyClicks(dialog.txtTitle, QStringLiteral("e"));
    TypeKey(dialog.txtTitle, kAcuteMark);  // 255: fits
    EXPECT_EQ(dialog.txtTitle->text(), QString(253, u'a') + QStringLiteral("e") + kAcuteMark);
    EditorWorld::Type(dialog.txtTitle, QString(254, u'a'));
    QTest::keyClicks(dialog.txtTitle, QStringLiteral("e"));
    TypeKey(dialog.txtTitle, kAcuteMark);  // 256
    EXPECT_EQ(dialog.txtTitle->text(), QString(254, u'a') + QStringLiteral("e"));
    EditorWorld::Click(dialog.cmdOK);
    EXPECT_EQ(w.world.calender.CurrentEntry.Title.Value(), dialog.txtTitle->text());
}

TEST(EditorLimits, APastedTitleKeepsTheGraphemesThatFit) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    EditorWorld::Type(dialog.txtTitle, QString(250, u'a'));
    Paste(dialog.txtTitle, QStringLiteral("xy") + kFamily + QStringLiteral("z"));
    EXPECT_EQ(dialog.txtTitle->text(), QString(250, u'a') + QStringLiteral("xy"));
    Paste(dialog.txtTitle, kFamily);
    EXPECT_EQ(dialog.txtTitle->text(), QString(250, u'a') + QStringLiteral("xy"));

    dialog.txtTitle->selectAll();
    Paste(dialog.txtTitle, QString(300, u'p'));
    EXPECT_EQ(dialog.txtTitle->text(), QString(255, u'p'));
    EditorWorld::Click(dialog.cmdOK);
    EXPECT_EQ(w.world.calender.CurrentEntry.Title.Value(), QString(255, u'p'));
}

TEST(EditorLimits, APasteReplacingPartOfTheTitleKeepsWhatFollowsIt) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    EditorWorld::Type(dialog.txtTitle, QString(250, u'a') + QStringLiteral("bcdef"));
    dialog.txtTitle->setSelection(250, 2);  // "bc"
    Paste(dialog.txtTitle, kParty + kParty);
    EXPECT_EQ(dialog.txtTitle->text(), QString(250, u'a') + kParty + QStringLiteral("def"));
    EXPECT_EQ(dialog.txtTitle->cursorPosition(), 252);
}

TEST(EditorLimits, TheDescriptionStopsAtFiftyBetweenGraphemes) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    dialog.tabEdit->setCurrentIndex(1);
    EditorWorld::Type(dialog.txtAppDescription, QString(46, u'd'));
    Paste(dialog.txtAppDescription, kFrance + kFrance);
    EXPECT_EQ(dialog.txtAppDescription->text(), QString(46, u'd') + kFrance);

    EditorWorld::Type(dialog.txtAppDescription, QString(48, u'd'));
    Paste(dialog.txtAppDescription, kHangul);
    EXPECT_EQ(dialog.txtAppDescription->text(), QString(48, u'd'));
    QTest::keyClicks(dialog.txtAppDescription, QStringLiteral("xyz"));
    EXPECT_EQ(dialog.txtAppDescription->text(), QString(48, u'd') + QStringLiteral("xy"));

    w.Add(QString(), QStringLiteral("9:00"), QString(), QString(46, u'd') + kFrance + kFrance);
    EXPECT_EQ(w.Slot(1).Description.Value(), QString(46, u'd') + kFrance);
}

TEST(EditorLimits, TheNoteCountsEachLineBreakAsTwoAndStopsAtEightHundred) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    StartNote(dialog, QString(797, u'n'));
    QTest::keyClick(dialog.txtNotes, Qt::Key_Return);         // 799
    QTest::keyClicks(dialog.txtNotes, QStringLiteral("ab"));  // 800, then refused
    EXPECT_EQ(dialog.txtNotes->toPlainText(), QString(797, u'n') + QStringLiteral("\na"));
    QTest::keyClick(dialog.txtNotes, Qt::Key_Backspace);  // 797
    QTest::keyClicks(dialog.txtNotes, QStringLiteral("x"));
    QTest::keyClick(dialog.txtNotes, Qt::Key_Return);  // 802: refused
    QTest::keyClick(dialog.txtNotes, Qt::Key_Return);
    EXPECT_EQ(dialog.txtNotes->toPlainText(), QString(797, u'n') + QStringLiteral("\nx"));
    EditorWorld::Click(dialog.cmdOK);
    EXPECT_EQ(w.world.diary.NoteBuffer.Value(), NoteAsStored(dialog));
}

TEST(EditorLimits, APastedNoteKeepsWhatFitsAsStored) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    StartNote(dialog, QString(794, u'n'));
    Paste(dialog.txtNotes, QStringLiteral("ab\r\ncd"));  // a, b, CR LF: 798; c: 799; d: 800
    EXPECT_EQ(dialog.txtNotes->toPlainText(), QString(794, u'n') + QStringLiteral("ab\ncd"));
    StartNote(dialog, QString(795, u'n'));
    Paste(dialog.txtNotes, QStringLiteral("ab\ncd"));
    EXPECT_EQ(dialog.txtNotes->toPlainText(), QString(795, u'n') + QStringLiteral("ab\nc"));
    EditorWorld::Click(dialog.cmdOK);
    EXPECT_EQ(w.world.diary.NoteBuffer.Value(), NoteAsStored(dialog));
}

TEST(EditorLimits, AnEmojiThatWouldEndPastTheNoteIsLeftOutWhole) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    StartNote(dialog, QString(799, u'n'));
    Paste(dialog.txtNotes, kParty);
    EXPECT_EQ(dialog.txtNotes->toPlainText(), QString(799, u'n'));
    StartNote(dialog, QString(796, u'n'));
    Paste(dialog.txtNotes, QStringLiteral("e") + kAcuteMark + kFamily);
    EXPECT_EQ(dialog.txtNotes->toPlainText(),
              QString(796, u'n') + QStringLiteral("e") + kAcuteMark);
    EditorWorld::Click(dialog.cmdOK);
    EXPECT_EQ(w.world.diary.NoteBuffer.Value(),
              QString(796, u'n') + QStringLiteral("e") + kAcuteMark + QStringLiteral("  "));
}

TEST(EditorLimits, UndoAfterALongPasteGoesBackToTheNoteBeforeIt) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    StartNote(dialog, QString(790, u'n'));
    Paste(dialog.txtNotes, QString(20, u'p'));
    EXPECT_EQ(dialog.txtNotes->toPlainText(), QString(790, u'n') + QString(10, u'p'));
    QTest::keyClick(dialog.txtNotes, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(dialog.txtNotes->toPlainText(), QString(790, u'n'));
    QTest::keyClicks(dialog.txtNotes, QStringLiteral("abc"));
    EXPECT_EQ(dialog.txtNotes->toPlainText(), QString(790, u'n') + QStringLiteral("abc"));
}

TEST(EditorLimits, TheNotesPageShowsTheCountAsStored) {
    EditorWorld w;
    w.world.diary.NoteBuffer = QStringLiteral("one\r\ntwo");
    w.world.diary.SaveNote(MakeDateKey(7, 17));
    frmEdit& dialog = w.Open();
    const auto* count = dialog.findChild<QLabel*>(QStringLiteral("lblNoteCount"));
    ASSERT_NE(count, nullptr);
    EXPECT_EQ(count->text(), QStringLiteral("8 / 800"));
    StartNote(dialog, QString());
    QTest::keyClicks(dialog.txtNotes, QStringLiteral("hello"));
    QTest::keyClick(dialog.txtNotes, Qt::Key_Return);
    QTest::keyClicks(dialog.txtNotes, QStringLiteral("world"));
    EXPECT_EQ(count->text(), QStringLiteral("12 / 800"));
    EXPECT_EQ(count->accessibleName(), QStringLiteral("Note length: 12 of 800 characters"));
    EXPECT_EQ(count->parentWidget(), dialog.txtNotes->parentWidget());
}

// A title loaded at its full length: a key pressed inside it does nothing, and
// no other character makes room for it.
TEST(EditorLimits, ALoadedFullTitleTakesNoMoreKeys) {
    EditorWorld w;
    w.view.calender->SetDate(2000, 7, 17);
    const QString full = QString(254, u'a') + QStringLiteral("Z");
    w.world.calender.CurrentEntry.Title = full;
    w.view.calender->UpdateSelectedDate(false);
    frmEdit& dialog = w.Open();
    ASSERT_EQ(dialog.txtTitle->text(), full);
    dialog.txtTitle->setCursorPosition(10);
    QTest::keyClicks(dialog.txtTitle, QStringLiteral("x"));
    EXPECT_EQ(dialog.txtTitle->text(), full);
}

// An entry chosen in the list fills the description box; a key at its limit
// then changes nothing either.
TEST(EditorLimits, ADescriptionPutInByTheListTakesNoMoreKeysAtItsLimit) {
    EditorWorld w;
    frmEdit& dialog = w.Open();
    dialog.txtAppDescription->setText(QString(49, u'd') + QStringLiteral("E"));
    dialog.txtAppDescription->setCursorPosition(3);
    QTest::keyClicks(dialog.txtAppDescription, QStringLiteral("x"));
    EXPECT_EQ(dialog.txtAppDescription->text(), QString(49, u'd') + QStringLiteral("E"));
}

}  // namespace
}  // namespace kelvane::testing
