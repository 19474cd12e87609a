#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>

// What the test servers on 127.0.0.1 share: a free port, their files, and
// a start that waits until the server answers.
namespace kelvane::cal::testing {

// A port on 127.0.0.1 that nothing listens on at the moment of asking.
int FreePort();

bool WriteText(const QString& path, const QByteArray& text);

// Starts `process`, a server that should listen on `port`, and waits until it
// answers there. False with the problem when it ends or stays silent; a
// server that ends at once found the port taken, and may be started again on
// another.
bool StartListening(QProcess& process, int port, const QString& name, QString& problem);

// Ends a server started so, at once.
void StopProcess(QProcess& process);

}  // namespace kelvane::cal::testing
