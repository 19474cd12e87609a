#include "CurlPuts.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char** environ;

namespace {

// A text in double quotes as curl's config file reads it.
QByteArray Quoted(const QByteArray& text) {
    QByteArray quoted = text;
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    return '"' + quoted + '"';
}

// One section of the config file for each PUT, its body in a file of its own.
bool WriteConfig(const std::vector<kelvane::cal::DavRequest>& puts, const QByteArray& credentials,
                 const QDir& folder, const QString& configFile) {
    QFile config(configFile);
    if (!config.open(QIODevice::WriteOnly)) {
        return false;
    }
    for (std::size_t index = 0; index < puts.size(); ++index) {
        const QString bodyFile = folder.filePath(QStringLiteral("%1.ics").arg(index));
        QFile body(bodyFile);
        if (!body.open(QIODevice::WriteOnly) || body.write(puts[index].Body) < 0) {
            return false;
        }
        QByteArray section = (index == 0 ? "" : "next\n") + QByteArray("url = ") +
                             Quoted(puts[index].Url.toEncoded()) +
                             "\nupload-file = " + Quoted(bodyFile.toLocal8Bit()) +
                             "\nuser = " + Quoted(credentials) + "\noutput = \"/dev/null\"\n";
        for (const auto& [name, value] : puts[index].Headers) {
            section += "header = " + Quoted(name + ": " + value) + '\n';
        }
        // Without this curl would wait for "100 Continue" before a larger body.
        section += "header = \"Expect:\"\nwrite-out = \"%{http_code} %{num_connects}\\n\"\n";
        if (config.write(section) < 0) {
            return false;
        }
    }
    return config.flush();
}

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

// Runs curl on the config file, its write-out lines going to `outFile` and
// its complaints to `errFile`; false when it could not be started.
bool SpawnCurl(const QString& configFile, const QString& outFile, const QString& errFile,
               CurlTimes& times, int& status) {
    const QByteArray config = configFile.toLocal8Bit();
    const QByteArray out = outFile.toLocal8Bit();
    const QByteArray err = errFile.toLocal8Bit();
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 1, out.constData(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    posix_spawn_file_actions_addopen(&files, 2, err.constData(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    char* arguments[] = {const_cast<char*>("curl"),
                         const_cast<char*>("--silent"),
                         const_cast<char*>("--show-error"),
                         const_cast<char*>("--config"),
                         const_cast<char*>(config.constData()),
                         nullptr};
    QElapsedTimer timer;
    timer.start();
    pid_t pid = 0;
    const int spawned = posix_spawnp(&pid, "curl", &files, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&files);
    rusage usage{};
    if (spawned != 0 || wait4(pid, &status, 0, &usage) != pid) {
        return false;
    }
    times.WallSeconds = timer.nsecsElapsed() / 1e9;
    times.CpuSeconds = Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
    return true;
}

// Counts the connections and the failures from curl's write-out lines: the
// HTTP status and the connections opened, for each request.
void ReadWriteOut(const QString& outFile, int requests, CurlTimes& times) {
    QFile out(outFile);
    int answered = 0;
    if (out.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : out.readAll().split('\n')) {
            const QList<QByteArray> fields = line.split(' ');
            if (fields.size() == 2) {
                const int status = fields[0].toInt();
                ++answered;
                times.Connections += fields[1].toInt();
                times.Failed += (status >= 200 && status < 300) ? 0 : 1;
            }
        }
    }
    times.Failed += requests - answered;
}

}  // namespace

CurlTimes RunCurlPuts(const std::vector<kelvane::cal::DavRequest>& puts, const QString& user,
                      const QString& password, const QString& folder) {
    CurlTimes times;
    const QDir bodies(folder);
    const QString configFile = bodies.filePath(QStringLiteral("puts.curl"));
    if (!QDir().mkpath(folder) ||
        !WriteConfig(puts, (user + QLatin1Char(':') + password).toUtf8(), bodies, configFile)) {
        times.Problem = QStringLiteral("cannot write curl's requests to %1").arg(folder);
        return times;
    }
    const QString outFile = bodies.filePath(QStringLiteral("write-out.txt"));
    const QString errFile = bodies.filePath(QStringLiteral("errors.txt"));
    int status = 0;
    if (!SpawnCurl(configFile, outFile, errFile, times, status)) {
        times.Problem = QStringLiteral("curl could not be run (scripts/bench.sh installs it)");
        return times;
    }
    ReadWriteOut(outFile, static_cast<int>(puts.size()), times);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        QFile errors(errFile);
        errors.open(QIODevice::ReadOnly);
        times.Problem = QStringLiteral("curl failed: ") + QString::fromLocal8Bit(errors.readAll());
    }
    return times;
}
