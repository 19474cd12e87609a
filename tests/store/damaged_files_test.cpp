#include <gtest/gtest.h>

#include <QDir>
#include <QRegularExpression>

#include "support/DocumentWorld.h"

namespace kelvane {
namespace {

using testing::DocumentWorld;

// Hand-made damaged calendar files, each named after the line its damage is
// found on: "<what>.line-<n>.cal".
QStringList DamagedFiles() {
    return QDir(QStringLiteral(KELVANE_TEST_DATA_DIR "/damaged"))
        .entryList({QStringLiteral("*.cal")}, QDir::Files, QDir::Name);
}

int ExpectedLine(const QString& name) {
    const QRegularExpressionMatch match =
        QRegularExpression(QStringLiteral("\\.line-(\\d+)\\.cal$")).match(name);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

TEST(DamagedFiles, TheCorpusIsThere) {
    EXPECT_GE(DamagedFiles().size(), 15);
}

TEST(DamagedFiles, EachNamesItsFirstBadLineAndLeavesTheDocumentAlone) {
    for (const QString& name : DamagedFiles()) {
        SCOPED_TRACE(name.toStdString());
        DocumentWorld world;
        world.EditDate(1, 1, QStringLiteral("Untouched"), 2, QStringLiteral("still here"));
        world.store.module1.CalendarDirty = true;

        EXPECT_FALSE(
            world.commands.LoadFile(QStringLiteral(KELVANE_TEST_DATA_DIR "/damaged/") + name));
        const auto& shown = world.world.platform.Messages.Shown;
        ASSERT_EQ(shown.size(), 1);
        EXPECT_EQ(shown[0].Text,
                  QStringLiteral("File is damaged - line %1").arg(ExpectedLine(name)));
        EXPECT_EQ(shown[0].Title, QStringLiteral("Kelvane"));
        EXPECT_EQ(shown[0].Icon, MessageIcon::Critical);

        EXPECT_EQ(world.calender.Months[0].Dates[1].Title.Trimmed(), QStringLiteral("Untouched"));
        EXPECT_EQ(world.calender.gLeapYear(), 1);
        world.store.appointments.LoadAppointments(QStringLiteral("0101"));
        EXPECT_EQ(world.store.appointments.CountAppointments(), 2);
        world.store.diary.LoadNote(QStringLiteral("0101"));
        EXPECT_EQ(world.store.diary.NoteBuffer.Trimmed(), QStringLiteral("still here"));
        EXPECT_TRUE(world.store.module1.CalendarDirty);
        EXPECT_EQ(world.window.Caption, QStringLiteral("Kelvane v1.0"));
        EXPECT_EQ(world.commands.RecentFiles().RecentFiles[1], QString());
    }
}

}  // namespace
}  // namespace kelvane
