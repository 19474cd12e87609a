#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

#include <csignal>

#include "calfile/CalendarFileOnDisk.h"
#include "support/CalendarFiles.h"

namespace kelvane::testing {

// A copy of the program (the session probe, KELVANE_SESSION_PROBE) alone in a
// folder of its own, with home, data, settings and runtime folders of its own,
// started on a calendar file that holds "New Year" on 1 January. A test may
// name the program's folder and the data folder (for example on a small disk
// it fills up); temporary ones are used otherwise.
class ProgramCopy {
  public:
    static constexpr int kWaitMs = 60000;

    explicit ProgramCopy(const QString& programFolder = QString(),
                         const QString& dataHome = QString())
        : programFolder_(programFolder.isEmpty() ? ownProgramFolder_.path() : programFolder),
          dataHome_(dataHome.isEmpty() ? home_.filePath(QStringLiteral("data")) : dataHome) {
        program_ = QDir(programFolder_).filePath(QStringLiteral("kelvane"));
        QFile::copy(QStringLiteral(KELVANE_SESSION_PROBE), program_);
        QFile::setPermissions(program_, QFile::permissions(program_) | QFileDevice::ExeOwner);
        QFile::setPermissions(runtime_.path(), QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                                   QFileDevice::ExeOwner);
        calendar_ = home_.filePath(QStringLiteral("plans.cal"));
        CalendarFileContent content = EmptyCalendar(5);
        content.Dates = {TitledDate(1, 1, QStringLiteral("New Year"))};
        WriteCalendarFileNamed(calendar_, content);
    }

    // Starts the program and waits until it runs; false when it did not. With
    // `how` "edit", one date is changed before it says it runs; with "typing",
    // the date editor is open with text typed into it and nothing else changed.
    bool Start(const QString& how = QString()) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home_.path());
        environment.insert(QStringLiteral("XDG_DATA_HOME"), dataHome_);
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"),
                           home_.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime_.path());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        for (auto name = extra_.cbegin(); name != extra_.cend(); ++name) {
            environment.insert(name.key(), name.value());
        }
        process_.setProcessEnvironment(environment);
        QStringList arguments{calendar_};
        if (!how.isEmpty()) {
            arguments << how;
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

    // An environment variable for the next starts, such as HOME or TMPDIR.
    void SetEnvironment(const QString& name, const QString& value) { extra_.insert(name, value); }
    QString HomeFolder() const { return home_.path(); }

    // Sends a signal and waits for the end; true when the program ended by
    // itself with status 0.
    bool EndWith(int signalNumber) {
        ::kill(static_cast<pid_t>(process_.processId()), signalNumber);
        process_.waitForFinished(kWaitMs);
        output_ += process_.readAllStandardOutput();
        return process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
    }

    QStringList TemporaryFilesLeft() const {
        QStringList left = QDir(programFolder_).entryList({QStringLiteral("~tmpTXT*")});
        for (const QString& name :
             {QStringLiteral("~tempAppoint.tmp"), QStringLiteral("~tmpDiaryCal")}) {
            if (QFile::exists(QDir(programFolder_).filePath(name))) {
                left << name;
            }
        }
        return left;
    }

    // The copies of unsaved changes in the data folder.
    QStringList CopiesMade() const {
        return QDir(DataFolder()).entryList({QStringLiteral("unsaved-*.cal")}, QDir::Files);
    }
    // The copies of unsaved changes beside the program.
    QStringList CopiesBesideTheProgram() const {
        return QDir(programFolder_).entryList({QStringLiteral("unsaved-*.cal")}, QDir::Files);
    }
    QString DataFolder() const { return QDir(dataHome_).filePath(QStringLiteral("Kelvane")); }
    QString CopyPath(const QString& name) const { return QDir(DataFolder()).filePath(name); }
    QString ProgramFolder() const { return programFolder_; }

    QString FirstRecentFile() const {
        QFile list(QDir(programFolder_).filePath(QStringLiteral("~tmpFileList")));
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
    QTemporaryDir ownProgramFolder_;
    QTemporaryDir home_;
    QTemporaryDir runtime_;
    QString programFolder_;
    QString dataHome_;
    QString program_;
    QString calendar_;
    QProcess process_;
    QByteArray output_;
    QMap<QString, QString> extra_;
};

}  // namespace kelvane::testing
