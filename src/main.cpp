#include <QApplication>

#include "gui/QtPlatform.h"
#include "shell/Application.h"

int main(int argc, char* argv[]) {
    QApplication qtApplication(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Kelvane"));
    QApplication::setOrganizationName(QStringLiteral("Kelvane"));

    kelvane::QtPlatform platform;
    kelvane::NoStartupDialogs startupDialogs;
    kelvane::Application application(platform.Services, startupDialogs);
    return application.Run(kelvane::Application::CommandLineOf(QApplication::arguments()));
}
