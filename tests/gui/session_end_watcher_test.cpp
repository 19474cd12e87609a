#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>

#include "gui/SessionEndWatcher.h"

namespace kelvane {
namespace {

// The ends told so far, oldest first.
struct Ends {
    void operator()(SessionEnd how) { told.push_back(how); }
    // Lets the event loop run until `count` ends were told, or a second passes.
    void WaitFor(std::size_t count) {
        [[maybe_unused]] const bool all =
            QTest::qWaitFor([&] { return told.size() >= count; }, 1000);
    }
    std::vector<SessionEnd> told;
};

void (*HandlerOf(int signalNumber))(int) {
    struct sigaction current {};
    sigaction(signalNumber, nullptr, &current);
    return current.sa_handler;
}

class SessionEndWatcherTest : public ::testing::TestWithParam<int> {};

TEST_P(SessionEndWatcherTest, ASignalIsToldInTheEventLoopAndDoesNotEndTheProcess) {
    Ends ends;
    const SessionEndWatcher watcher([&](SessionEnd how) { ends(how); });
    ASSERT_TRUE(watcher.CatchesSignals());
    std::raise(GetParam());
    EXPECT_TRUE(ends.told.empty());  // nothing happens inside the handler
    ends.WaitFor(1);
    EXPECT_EQ(ends.told, std::vector<SessionEnd>{SessionEnd::Signal});
}

INSTANTIATE_TEST_SUITE_P(TerminationSignals, SessionEndWatcherTest,
                         ::testing::Values(SIGTERM, SIGHUP, SIGINT));

TEST(SessionEndWatcher, SignalsThatComeTogetherMakeOneEnd) {
    Ends ends;
    const SessionEndWatcher watcher([&](SessionEnd how) { ends(how); });
    std::raise(SIGTERM);
    std::raise(SIGHUP);
    ends.WaitFor(1);
    QTest::qWait(50);
    EXPECT_EQ(ends.told.size(), 1U);
}

TEST(SessionEndWatcher, GivesTheSignalsTheirDefaultActionsBackWhenItGoes) {
    {
        const SessionEndWatcher watcher([](SessionEnd) {});
        EXPECT_NE(HandlerOf(SIGTERM), SIG_DFL);
    }
    EXPECT_EQ(HandlerOf(SIGTERM), SIG_DFL);
    EXPECT_EQ(HandlerOf(SIGHUP), SIG_DFL);
    EXPECT_EQ(HandlerOf(SIGINT), SIG_DFL);
}

TEST(SessionEndWatcher, TheApplicationAboutToQuitIsTheQuit) {
    Ends ends;
    const SessionEndWatcher watcher([&](SessionEnd how) { ends(how); });
    QMetaObject::invokeMethod(QCoreApplication::instance(), "aboutToQuit");
    EXPECT_EQ(ends.told, std::vector<SessionEnd>{SessionEnd::Quit});
}

}  // namespace
}  // namespace kelvane
