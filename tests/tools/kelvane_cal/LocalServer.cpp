#include "LocalServer.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

namespace kelvane::cal::testing {

int FreePort() {
    QTcpServer server;
    server.listen(QHostAddress::LocalHost, 0);
    return server.serverPort();
}

bool WriteText(const QString& path, const QByteArray& text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

bool StartListening(QProcess& process, int port, const QString& name, QString& problem) {
    if (port == 0) {
        return false;
    }
    process.start();
    if (!process.waitForStarted(10000)) {
        problem = name + QStringLiteral(" did not start: ") + process.errorString();
        return false;
    }
    const QDeadlineTimer deadline(20000);
    while (!deadline.hasExpired()) {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
        if (socket.waitForConnected(200)) {
            // A server of another test on the same port answers too; this
            // one has ended then.
            if (process.waitForFinished(300)) {
                break;
            }
            problem.clear();
            return true;
        }
        if (process.state() == QProcess::NotRunning) {
            break;
        }
        QThread::msleep(50);
    }
    problem = QStringLiteral("%1 does not answer on port %2").arg(name).arg(port);
    return false;
}

void StopProcess(QProcess& process) {
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished(5000);
    }
}

}  // namespace kelvane::cal::testing
