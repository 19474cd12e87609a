#pragma once

#include <gtest/gtest.h>

#include <QFile>

#include "support/CalendarFileLines.h"
#include "support/DocumentWorld.h"

namespace kelvane::testing {

inline const QString kFilter = QStringLiteral("Calender Files (*.cal)|*.cal|All Files (*.*)|*.*");

inline bool WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline MessageBoxRequest Critical(const QString& text) {
    return {text, QStringLiteral("Kelvane"), MessageButtons::Ok, MessageIcon::Critical};
}

inline MessageBoxRequest Question(const QString& text, const QString& title) {
    return {text, title, MessageButtons::YesNo, MessageIcon::Exclamation};
}

// A file holding one title on 2 January.
inline QByteArray OneTitleFile(const QByteArray& title) {
    CalendarFileLines file = CalendarFileLines::Empty();
    file.FillSlot(2, {" 1 ", title, "0,0,0,0,0", "0,0,0,0,0", " 0 ", " 0 "});
    return file.Bytes();
}

// The File menu's commands on a document world with a scripted outside world.
class DocumentCommandsTest : public ::testing::Test {
  protected:
    FakeMessageBoxes& Messages() { return world.world.platform.Messages; }
    FakeFileDialogs& Dialogs() { return world.world.platform.FileDialog; }
    QString Title(int month, int day) {
        return world.calender.Months[static_cast<std::size_t>(month - 1)]
            .Dates[day]
            .Title.Trimmed();
    }

    DocumentWorld world;
};

}  // namespace kelvane::testing
