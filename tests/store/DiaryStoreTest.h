#pragma once

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFileInfo>

#include "store/DiaryMOD.h"
#include "store/LineWriter.h"
#include "support/EveryScript.h"
#include "support/TestWorld.h"

namespace kelvane::testing {

inline const QString kNoteFileName = QStringLiteral("~tmpDiaryCal");
inline constexpr qint64 kNoteRecordBytes = 1600;

// A note in many scripts: Polish, Chinese, Greek, Russian, an emoji (two code
// units), combining accents, Hebrew and Arabic (written right to left).
inline const QString kEveryScriptNote = QStringLiteral(
    "\u0141\u00f3d\u017a \u5317\u4eac\r\n\u03a9\u03bc\u03ad\u03b3\u03b1 "
    "\u041f\u0440\u0438\u0432\u0435\u0442 \U0001F389\r\ne\u0301a\u0308 "
    "\u05e9\u05dc\u05d5\u05dd \u0645\u0631\u062d\u0628\u0627");

// A note record: the text padded with blanks to 800 characters.
inline QByteArray NoteRecord(const QString& text) {
    return Utf16Le(text.leftJustified(800, QLatin1Char(' ')));
}

// The note section of `note` as the calendar file holds it.
inline QByteArray SectionOf(const QString& note) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    LineWriter out(buffer);
    WriteNoteSection(out, note);
    out.Flush();
    return buffer.data();
}

// A note section's bytes and the line its damage is reported on.
struct DamagedSection {
    const char* bytes;
    int line;
};

// The notes' temporary store, opened in a world of its own.
class DiaryStoreTest : public ::testing::Test {
  protected:
    void SetUp() override { world.OpenStores(); }

    qint64 FileSize() const { return QFileInfo(world.FilePath(kNoteFileName)).size(); }

    TestWorld world;
    DiaryMOD& diary = world.diary;
};

}  // namespace kelvane::testing
