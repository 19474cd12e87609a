#include "CyrusCalDav.h"

#include <QFile>
#include <QProcess>

#include "fixtures/LocalServer.h"

namespace {

// Runs the start script; its standard error when it fails.
bool RunScript(const QStringList& arguments, QString& problem) {
    QProcess script;
    script.start(QStringLiteral("sh"),
                 QStringList{QStringLiteral(KELVANE_CYRUS_SCRIPT)} + arguments);
    if (!script.waitForFinished(120000) || script.exitStatus() != QProcess::NormalExit ||
        script.exitCode() != 0) {
        problem = QStringLiteral("cyrus-caldav.sh failed: ") +
                  QString::fromLocal8Bit(script.readAllStandardError()).trimmed();
        return false;
    }
    return true;
}

}  // namespace

CyrusCalDav::CyrusCalDav() {
    // The server runs as the user "cyrus", which must be able to reach its folder.
    QFile::setPermissions(folder_.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                              QFile::ExeGroup | QFile::ExeOther);
    for (int attempt = 0; attempt < 3; ++attempt) {
        port_ = kelvane::cal::testing::FreePort();
        if (RunScript({folder_.filePath(QStringLiteral("cyrus")), QString::number(port_)},
                      problem_)) {
            problem_.clear();
            return;
        }
    }
}

CyrusCalDav::~CyrusCalDav() {
    QString ignored;
    RunScript({QStringLiteral("--stop"), folder_.filePath(QStringLiteral("cyrus"))}, ignored);
}

QString CyrusCalDav::Calendar() const {
    return QStringLiteral("http://127.0.0.1:%1/dav/calendars/user/alice/Default/").arg(port_);
}
