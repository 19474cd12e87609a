#include <QFile>

#include <gtest/gtest.h>

#include <csignal>

#include "support/ProgramCopy.h"

// The program as a process of its own, ended by a signal.
namespace kelvane {
namespace {

using testing::ProgramCopy;

class EndedBySignal : public ::testing::TestWithParam<int> {};

TEST_P(EndedBySignal, UnsavedEditsAreKeptInACopyAndNoTemporaryFileIsLeft) {
    ProgramCopy copy;
    ASSERT_TRUE(copy.Start(QStringLiteral("edit")));
    ASSERT_TRUE(copy.EndWith(GetParam())) << copy.Output().toStdString();
    EXPECT_TRUE(copy.TemporaryFilesLeft().isEmpty())
        << copy.TemporaryFilesLeft().join(' ').toStdString();
    EXPECT_TRUE(copy.GeometryWritten());
    const QStringList copies = copy.CopiesMade();
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(copy.FirstRecentFile(), copy.CopyPath(copies.front()));

    CalendarFileContent content;
    ASSERT_EQ(ReadCalendarFileNamed(copy.CopyPath(copies.front()), content).Status,
              CalendarFileStatus::Ok);
    ASSERT_EQ(content.Dates.size(), 2U);
    EXPECT_EQ(content.Dates[0].Entry.Title.Trimmed(), QStringLiteral("New Year"));
    EXPECT_EQ(content.Dates[1].Entry.Title.Trimmed(), QStringLiteral("Fifth of May"));
    ASSERT_EQ(content.Dates[1].Schedule.size(), 1U);
    EXPECT_EQ(content.Dates[1].Schedule[0].Description.Trimmed(), QStringLiteral("Parade"));
    EXPECT_EQ(content.Dates[1].Note, QStringLiteral("Flags\r\nDrums"));
    EXPECT_FALSE(copy.Output().contains("box:")) << copy.Output().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Signals, EndedBySignal, ::testing::Values(SIGTERM, SIGHUP, SIGINT));

TEST(SignalEnd, WithoutUnsavedChangesNoCopyIsMade) {
    ProgramCopy copy;
    ASSERT_TRUE(copy.Start());
    ASSERT_TRUE(copy.EndWith(SIGTERM)) << copy.Output().toStdString();
    EXPECT_TRUE(copy.CopiesMade().isEmpty());
    EXPECT_TRUE(copy.TemporaryFilesLeft().isEmpty());
}

TEST(SignalEnd, AfterAKillTheNextStartRunsCleanly) {
    ProgramCopy copy;
    ASSERT_TRUE(copy.Start(QStringLiteral("edit")));
    copy.EndWith(SIGKILL);
    EXPECT_FALSE(copy.TemporaryFilesLeft().isEmpty());  // nothing could clean up

    ASSERT_TRUE(copy.Start()) << copy.Output().toStdString();
    EXPECT_FALSE(copy.Output().contains("box:")) << copy.Output().toStdString();
    ASSERT_TRUE(copy.EndWith(SIGTERM));
    EXPECT_TRUE(copy.TemporaryFilesLeft().isEmpty());
    EXPECT_TRUE(copy.CopiesMade().isEmpty());
}

// Nothing changed but the text typed into the open date editor: the copy holds
// the date as OK would have kept it.
TEST(SignalEnd, WhatIsTypedIntoAnOpenEditorIsKept) {
    ProgramCopy copy;
    ASSERT_TRUE(copy.Start(QStringLiteral("typing")));
    ASSERT_TRUE(copy.EndWith(SIGTERM)) << copy.Output().toStdString();
    const QStringList copies = copy.CopiesMade();
    ASSERT_EQ(copies.size(), 1) << copy.Output().toStdString();
    EXPECT_EQ(copy.FirstRecentFile(), copy.CopyPath(copies.front()));
    CalendarFileContent content;
    ASSERT_EQ(ReadCalendarFileNamed(copy.CopyPath(copies.front()), content).Status,
              CalendarFileStatus::Ok);
    ASSERT_EQ(content.Dates.size(), 2U);
    EXPECT_EQ(content.Dates[1].Month, 5);
    EXPECT_EQ(content.Dates[1].Day, 5);
    EXPECT_EQ(content.Dates[1].Entry.Title.Trimmed(), QStringLiteral("Typed title"));
    EXPECT_EQ(content.Dates[1].Note, QStringLiteral("Typed\r\nnote"));
    EXPECT_TRUE(copy.TemporaryFilesLeft().isEmpty());
}

}  // namespace
}  // namespace kelvane
