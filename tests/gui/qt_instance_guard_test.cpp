#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <chrono>
#include <iostream>
#include <memory>
#include <string>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include <gtest/gtest.h>

#include "gui/QtInstanceGuard.h"

namespace kelvane {
namespace {

// The lock tests start this test program a second time to play the other copy
// of Kelvane; this variable hands it the lock file.
constexpr char kOtherCopyLock[] = "KELVANE_OTHER_COPY_LOCK";
constexpr char kOtherCopySawAnother[] = "other copy: another copy is running";
constexpr char kOtherCopyHolds[] = "other copy: holds the lock";

void WaitForEndOfInput() {
    std::string line;
    while (std::getline(std::cin, line)) {
    }
}

// The other copy's side: it asks its own guard, says what it found, and when
// it got the lock keeps it until its standard input closes or it is killed.
TEST(QtInstanceGuardOtherCopy, AsksForTheLockWhenStartedByTheLockTests) {
    const QString lockPath = qEnvironmentVariable(kOtherCopyLock);
    if (lockPath.isEmpty()) {
        GTEST_SKIP() << "runs only as the other copy that the lock tests start";
    }
    QtInstanceGuard guard(lockPath);
    const bool another = guard.AnotherCopyRunning();
    std::cout << (another ? kOtherCopySawAnother : kOtherCopyHolds) << std::endl;
    if (!another) {
        WaitForEndOfInput();
    }
}

// Another copy of the program, in a process of its own: this test program
// started again to run only the test above.
class OtherCopy {
  public:
    enum class Answer { None, SawAnotherCopy, HoldsTheLock };

    explicit OtherCopy(const QString& lockPath) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(kOtherCopyLock), lockPath);
        for (const char* name : {"GTEST_OUTPUT", "GTEST_SHARD_INDEX", "GTEST_TOTAL_SHARDS"}) {
            environment.remove(QString::fromLatin1(name));
        }
        process_.setProcessEnvironment(environment);
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(QCoreApplication::applicationFilePath(),
                       {QStringLiteral("--gtest_filter=QtInstanceGuardOtherCopy.*")});
    }
    OtherCopy(const OtherCopy&) = delete;
    OtherCopy& operator=(const OtherCopy&) = delete;
    ~OtherCopy() { Finish(); }

    // Waits until the other copy has asked its guard and tells what it found.
    Answer WaitForAnswer() {
        const QDeadlineTimer deadline(std::chrono::seconds(60));
        bool more = true;
        while (AnswerSoFar() == Answer::None && more) {
            more = process_.waitForReadyRead(static_cast<int>(deadline.remainingTime()));
            output_ += process_.readAllStandardOutput();
        }
        return AnswerSoFar();
    }

    // Lets the other copy end as it would on its own; true when it did so cleanly.
    bool Finish() {
        if (process_.state() == QProcess::NotRunning) {
            return Ended();
        }
        process_.closeWriteChannel();
        if (!process_.waitForFinished(60000)) {
            Kill();
        }
        return Ended();
    }

    // Kills the other copy, leaving its lock file behind.
    void Kill() {
        process_.kill();
        process_.waitForFinished(60000);
    }

    std::string Output() const { return output_.toStdString(); }

  private:
    Answer AnswerSoFar() const {
        if (output_.contains(kOtherCopySawAnother)) {
            return Answer::SawAnotherCopy;
        }
        return output_.contains(kOtherCopyHolds) ? Answer::HoldsTheLock : Answer::None;
    }

    bool Ended() const {
        return process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
    }

    QProcess process_;
    QByteArray output_;
};

void WriteFile(const QString& path, const QByteArray& contents) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(contents), contents.size());
}

class QtInstanceGuardTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(directory_.isValid()); }

    QString LockPath() const { return directory_.filePath(QStringLiteral("kelvane.lock")); }

    QTemporaryDir directory_;
};

TEST_F(QtInstanceGuardTest, TheFirstCopyTakesTheLockAndKeepsIt) {
    QtInstanceGuard guard(LockPath());
    EXPECT_FALSE(guard.AnotherCopyRunning());
    EXPECT_TRUE(QFileInfo::exists(LockPath()));
    EXPECT_FALSE(guard.AnotherCopyRunning());
}

TEST_F(QtInstanceGuardTest, AnotherProcessFindsTheLockHeld) {
    QtInstanceGuard guard(LockPath());
    ASSERT_FALSE(guard.AnotherCopyRunning());
    OtherCopy other(LockPath());
    EXPECT_EQ(other.WaitForAnswer(), OtherCopy::Answer::SawAnotherCopy) << other.Output();
    EXPECT_TRUE(other.Finish()) << other.Output();
}

TEST_F(QtInstanceGuardTest, ALockHeldByAnotherProcessStopsThisCopyUntilThatOneEnds) {
    OtherCopy other(LockPath());
    ASSERT_EQ(other.WaitForAnswer(), OtherCopy::Answer::HoldsTheLock) << other.Output();
    EXPECT_TRUE(QtInstanceGuard(LockPath()).AnotherCopyRunning());
    EXPECT_TRUE(other.Finish()) << other.Output();
    EXPECT_FALSE(QtInstanceGuard(LockPath()).AnotherCopyRunning());
}

TEST_F(QtInstanceGuardTest, ASecondGuardInTheSameProcessFindsTheLockHeldUntilTheFirstEnds) {
    auto first = std::make_unique<QtInstanceGuard>(LockPath());
    ASSERT_FALSE(first->AnotherCopyRunning());
    EXPECT_TRUE(QtInstanceGuard(LockPath()).AnotherCopyRunning());
    first.reset();
    EXPECT_FALSE(QtInstanceGuard(LockPath()).AnotherCopyRunning());
}

TEST_F(QtInstanceGuardTest, TheLockOfAKilledCopyDoesNotStopTheNextOne) {
    {
        OtherCopy killed(LockPath());
        ASSERT_EQ(killed.WaitForAnswer(), OtherCopy::Answer::HoldsTheLock) << killed.Output();
        killed.Kill();
    }
    ASSERT_TRUE(QFileInfo::exists(LockPath()));
    QtInstanceGuard guard(LockPath());
    EXPECT_FALSE(guard.AnotherCopyRunning());
    OtherCopy next(LockPath());
    EXPECT_EQ(next.WaitForAnswer(), OtherCopy::Answer::SawAnotherCopy) << next.Output();
}

TEST_F(QtInstanceGuardTest, ALockFileNobodyHoldsDoesNotStopTheProgram) {
    WriteFile(LockPath(), "2147483646\nkelvane\nsomewhere\n");
    QtInstanceGuard guard(LockPath());
    EXPECT_FALSE(guard.AnotherCopyRunning());
}

TEST_F(QtInstanceGuardTest, ALockFileThatCannotBeMadeDoesNotStopTheProgram) {
    const QString missing = directory_.filePath(QStringLiteral("missing/kelvane.lock"));
    EXPECT_FALSE(QtInstanceGuard(missing).AnotherCopyRunning());
    EXPECT_FALSE(QFileInfo::exists(missing));
    const QString plainFile = directory_.filePath(QStringLiteral("plain"));
    WriteFile(plainFile, "not a directory");
    EXPECT_FALSE(QtInstanceGuard(plainFile + QStringLiteral("/kelvane.lock")).AnotherCopyRunning());
}

TEST(QtInstanceGuardDefaultLockPath, IsAFileOfTheUserInTheRuntimeOrTemporaryDirectory) {
    const QFileInfo lock(QtInstanceGuard::DefaultLockPath());
    QString directory = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (directory.isEmpty()) {
        directory = QDir::tempPath();
    }
    EXPECT_EQ(lock.absolutePath(), QDir(directory).absolutePath());
#ifdef Q_OS_UNIX
    EXPECT_EQ(lock.fileName(), QStringLiteral("kelvane-%1.lock").arg(::getuid()));
#else
    EXPECT_TRUE(lock.fileName().startsWith(QStringLiteral("kelvane-")));
    EXPECT_TRUE(lock.fileName().endsWith(QStringLiteral(".lock")));
#endif
}

}  // namespace
}  // namespace kelvane
