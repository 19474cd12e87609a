#pragma once

#include <gtest/gtest.h>

#include <QFileInfo>

#include "store/DiaryMOD.h"
#include "support/EveryScript.h"
#include "support/TestWorld.h"

namespace kelvane::testing {

inline const QString kNoteFileName = QStringLiteral("~tmpDiaryCal");
inline constexpr qint64 kNoteRecordBytes = 1600;

// A note record: the text padded with blanks to 800 characters.
inline QByteArray NoteRecord(const QString& text) {
    return Utf16Le(text.leftJustified(800, QLatin1Char(' ')));
}

// The notes' temporary store, opened in a world of its own.
class DiaryStoreTest : public ::testing::Test {
  protected:
    void SetUp() override { world.OpenStores(); }

    qint64 FileSize() const { return QFileInfo(world.FilePath(kNoteFileName)).size(); }

    TestWorld world;
    DiaryMOD& diary = world.diary;
};

}  // namespace kelvane::testing
