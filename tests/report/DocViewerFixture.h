#pragma once

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include "report/TextBoxFound.h"
#include "report/usrDocViewer.h"
#include "support/EveryScript.h"
#include "support/TestWorld.h"

// A text viewer over a fresh world, and the temporary line file as bytes.
namespace kelvane::doc_viewer_test {

using kelvane::testing::kEveryScript;
using kelvane::testing::TestWorld;

constexpr int kLength = usrDocViewer::LineLength;
constexpr qint64 kRecordBytes = 160;

inline QString Padded(const QString& text) {
    return text.leftJustified(kLength, QLatin1Char(' '));
}

// A line as the temporary file holds it, built here byte by byte: each UTF-16
// code unit of the padded line, low byte first.
inline QByteArray Record(const QString& text) {
    QByteArray bytes;
    for (const QChar unit : Padded(text)) {
        bytes.append(static_cast<char>(unit.unicode() & 0xFF));
        bytes.append(static_cast<char>(unit.unicode() >> 8));
    }
    return bytes;
}

// The names of the temporary line files in the program directory.
inline QStringList OverflowFiles(const TestWorld& world) {
    return QDir(world.module1.AppDirectory())
        .entryList({QStringLiteral("~tmpTXT*")}, QDir::Files | QDir::Hidden);
}

// Scripts the ten letters of the next file name, all `letter` ('A'..'Y').
inline void ScriptName(TestWorld& world, char letter) {
    for (int i = 0; i < 10; ++i) {
        world.platform.Random.Script.append((letter - 'A') / 24.0);
    }
}

inline void CreateFile(const TestWorld& world, const QString& name, const QByteArray& bytes) {
    QFile file(world.FilePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

class DocViewerTest : public ::testing::Test {
  protected:
    // Lines "line 1", "line 2", ... up to `last`, from the current count on.
    void AddNumberedLines(int last) {
        for (int i = viewer.GetLineCount() + 1; i <= last; ++i) {
            ASSERT_TRUE(viewer.AddLine(QStringLiteral("line %1").arg(i)));
        }
    }
    // Fills memory so that the next line goes to the temporary file.
    void FillMemory() { AddNumberedLines(usrDocViewer::MemoryLines); }

    LineTextView* Box() const { return TextBoxFound(viewer); }
    QString Shown() const { return Box()->toPlainText(); }

    // A fresh world for each test; the viewer is declared after it, so it
    // goes first.
    TestWorld world;
    usrDocViewer viewer{world.module1};
};

}  // namespace kelvane::doc_viewer_test
