#include "NginxProxy.h"

#include <QDir>
#include <QStandardPaths>

#include "LocalServer.h"

namespace kelvane::cal::testing {

NginxProxy::NginxProxy(int calendarPort) : calendarPort_(calendarPort) {
    QString nginx = QStandardPaths::findExecutable(QStringLiteral("nginx"));
    if (nginx.isEmpty()) {
        nginx =
            QStandardPaths::findExecutable(QStringLiteral("nginx"), {QStringLiteral("/usr/sbin")});
    }
    if (nginx.isEmpty()) {
        problem_ = QStringLiteral("nginx is not installed (scripts/install-deps.sh installs it)");
        return;
    }
    QDir(folder_.path()).mkpath(QStringLiteral("www/files"));
    silent_.listen(QHostAddress::LocalHost, 0);
    const QString config = folder_.filePath(QStringLiteral("nginx.conf"));
    process_.setProgram(nginx);
    process_.setArguments({QStringLiteral("-p"), folder_.path(), QStringLiteral("-c"), config,
                           QStringLiteral("-e"), folder_.filePath(QStringLiteral("error.log"))});
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // As with the calendar server, a port taken meanwhile means another try.
    for (int attempt = 0; attempt < 5; ++attempt) {
        port_ = FreePort();
        WriteText(config, Config());
        if (StartListening(process_, port_, QStringLiteral("nginx"), problem_)) {
            return;
        }
    }
}

NginxProxy::~NginxProxy() {
    StopProcess(process_);
}

QString NginxProxy::Url(const QString& path) const {
    return QStringLiteral("http://127.0.0.1:%1%2").arg(port_).arg(path);
}

QString NginxProxy::SilentUrl(const QString& path) const {
    return QStringLiteral("http://127.0.0.1:%1%2").arg(silent_.serverPort()).arg(path);
}

QByteArray NginxProxy::Config() const {
    const QString folder = folder_.path();
    return QStringLiteral(
               "daemon off;\nmaster_process off;\nworker_processes 1;\n"
               "pid %1/nginx.pid;\nerror_log %1/error.log crit;\n"
               "events { worker_connections 64; }\n"
               "http {\n"
               "  access_log off;\n"
               "  client_body_temp_path %1/body;\n  proxy_temp_path %1/proxy;\n"
               "  fastcgi_temp_path %1/fastcgi;\n  uwsgi_temp_path %1/uwsgi;\n"
               "  scgi_temp_path %1/scgi;\n"
               // Cyrus's answer to an event with DTSTART alone.
               "  map \"$request_method $uri\" $refused_put {\n"
               "    \"~^PUT /refuses/.*-a2-\" 1;\n"
               "    default 0;\n"
               "  }\n"
               // A server that will not take two of the events, saying why in plain text.
               "  map \"$request_method $uri\" $rejected_put {\n"
               "    \"~^PUT /rejects/.*-a[12]-\" 1;\n"
               "    default 0;\n"
               "  }\n"
               "  server {\n"
               "    listen 127.0.0.1:%2;\n"
               "    absolute_redirect off;\n"
               "    location /alice/ { proxy_pass http://127.0.0.1:%3; }\n"
               "    location ~ ^/moved/(.*)$ { return 308 /alice/plan/$1; }\n"
               "    location ~ ^/away/(.*)$ { return 301 http://localhost:%2/$1; }\n"
               "    location /full/ { return 507; }\n"
               "    location /no-room-to-put/ {\n"
               "      if ($request_method = PUT) { return 507; }\n"
               "      proxy_pass http://127.0.0.1:%3/alice/;\n"
               "    }\n"
               "    location /refuses/ {\n"
               "      default_type \"application/xml; charset=utf-8\";\n"
               "      if ($refused_put) {\n"
               "        return 403 '<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
               "<D:error xmlns:D=\"DAV:\" xmlns:C=\"urn:ietf:params:xml:ns:caldav\">"
               "<C:valid-calendar-data/><D:responsedescription>DTEND must occur after "
               "DTSTART</D:responsedescription></D:error>';\n"
               "      }\n"
               "      proxy_pass http://127.0.0.1:%3/alice/;\n"
               "    }\n"
               "    location /rejects/ {\n"
               "      default_type \"text/plain; charset=utf-8\";\n"
               "      if ($rejected_put) { return 400 'Invalid calendar data'; }\n"
               "      proxy_pass http://127.0.0.1:%3/alice/;\n"
               "    }\n"
               "    location /files/ { root %1/www; }\n"
               "    location /broken/ { proxy_pass http://127.0.0.1:%4; }\n"
               "    location /stalls/ {\n"
               "      if ($request_method = PUT) { proxy_pass http://127.0.0.1:%5; }\n"
               "      proxy_pass http://127.0.0.1:%3/alice/;\n"
               "    }\n"
               "  }\n"
               "}\n")
        .arg(folder)
        .arg(port_)
        .arg(calendarPort_)
        .arg(FreePort())
        .arg(silent_.serverPort())
        .toUtf8();
}

}  // namespace kelvane::cal::testing
