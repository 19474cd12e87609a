#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

#include "store/CalendarFileOnDisk.h"
#include "support/CalendarFiles.h"

// The program as a process of its own, ended by a signal.
namespace kelvane {
namespace {

constexpr int kWaitMs = 60000;

const QStringList kTemporaryFiles = {QStringLiteral("~tempAppoint.tmp"),
                                     QStringLiteral("~tmpDiaryCal")};

// A copy of the program alone in a folder of its own, with a home, data,
// settings and runtime folders of its own, started on a calendar file that
// holds "New Year" on 1 January.
class ProgramCopy {
  public:
    ProgramCopy() {
        program_ = programDir_.filePath(QStringLiteral("kelvane"));
        QFile::copy(QStringLiteral(KELVANE_SESSION_PROBE), program_);
        QFile::setPermissions(program_, QFile::permissions(program_) | QFileDevice::ExeOwner);
        QFile::setPermissions(runtime_.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                   QFileDevice::ExeOwner);
        calendar_ = home_.filePath(QStringLiteral("plans.cal"));
        WriteNewYearCalendar();
    }

    // Starts the program and waits until it runs; false when it did not.
    bool Start(bool edit) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home_.path());
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home_.filePath(QStringLiteral("data")));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"),
                           home_.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime_.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        process_.setProcessEnvironment(environment);
        QStringList arguments{calendar_};
        if (edit) {
            arguments << QStringLiteral("edit");
        }
        output_.clear();
        process_.start(program_, arguments);
        while (!output_.contains("ready\n")) {
            if (!process_.waitForReadyRead(kWaitMs)) {
                return false;
            }
            output_ += process_.readAllStandardOutput();
        }
        return true;
    }

    // Sends a signal and waits for the end; true when the program ended by
    // itself with status 0.
    bool EndWith(int signalNumber) {
        ::kill(static_cast<pid_t>(process_.processId()), signalNumber);
        process_.waitForFinished(kWaitMs);
        output_ += process_.readAllStandardOutput();
        return process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
    }

    QStringList TemporaryFilesLeft() const {
        QStringList left = QDir(programDir_.path()).entryList({QStringLiteral("~tmpTXT*")});
        for (const QString& name : kTemporaryFiles) {
            if (QFile::exists(programDir_.filePath(name))) {
                left << name;
            }
        }
        return left;
    }

    QStringList CopiesMade() const {
        return QDir(home_.filePath(QStringLiteral("data/Kelvane")))
            .entryList({QStringLiteral("unsaved-*.cal")}, QDir::Files);
    }

    QString CopyPath(const QString& name) const {
        return home_.filePath(QStringLiteral("data/Kelvane/") + name);
    }

    QString FirstRecentFile() const {
        QFile list(programDir_.filePath(QStringLiteral("~tmpFileList")));
        if (!list.open(QIODevice::ReadOnly)) {
            return QString();
        }
        return QString::fromUtf8(list.readLine()).trimmed();
    }

    QByteArray Output() const { return output_; }

    bool GeometryWritten() const {
        QFile settings(home_.filePath(QStringLiteral("config/Kelvane/Kelvane.conf")));
        return settings.open(QIODevice::ReadOnly) && settings.readAll().contains("MainLeft");
    }

  private:
    void WriteNewYearCalendar() {
        CalendarFileContent content = testing::EmptyCalendar(5);
        content.Dates = {testing::TitledDate(1, 1, QStringLiteral("New Year"))};
        testing::WriteCalendarFileNamed(calendar_, content);
    }

    QTemporaryDir programDir_;
    QTemporaryDir home_;
    QTemporaryDir runtime_;
    QString program_;
    QString calendar_;
    QProcess process_;
    QByteArray output_;
};

class EndedBySignal : public ::testing::TestWithParam<int> {};

TEST_P(EndedBySignal, UnsavedEditsAreKeptInACopyAndNoTemporaryFileIsLeft) {
    ProgramCopy copy;
    ASSERT_TRUE(copy.Start(true));
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
    ASSERT_TRUE(copy.Start(false));
    ASSERT_TRUE(copy.EndWith(SIGTERM)) << copy.Output().toStdString();
    EXPECT_TRUE(copy.CopiesMade().isEmpty());
    EXPECT_TRUE(copy.TemporaryFilesLeft().isEmpty());
}

TEST(SignalEnd, AfterAKillTheNextStartRunsCleanly) {
    ProgramCopy copy;
    ASSERT_TRUE(copy.Start(true));
    copy.EndWith(SIGKILL);
    EXPECT_FALSE(copy.TemporaryFilesLeft().isEmpty());  // nothing could clean up

    ASSERT_TRUE(copy.Start(false)) << copy.Output().toStdString();
    EXPECT_FALSE(copy.Output().contains("box:")) << copy.Output().toStdString();
    ASSERT_TRUE(copy.EndWith(SIGTERM));
    EXPECT_TRUE(copy.TemporaryFilesLeft().isEmpty());
    EXPECT_TRUE(copy.CopiesMade().isEmpty());
}

}  // namespace
}  // namespace kelvane
