#include <QApplication>

#include "gui/ProgramIcon.h"
#include "gui/QtPlatform.h"
#include "shell/Application.h"
#include "shell/SplashAndTips.h"

int main(int argc, char* argv[]) {
    QApplication qtApplication(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Kelvane"));
    QApplication::setOrganizationName(QStringLiteral("Kelvane"));
    QApplication::setWindowIcon(kelvane::ProgramIcon());

    kelvane::QtPlatform platform;
    kelvane::SplashAndTips startupDialogs(platform.Random);
    kelvane::Application application(platform.Services, startupDialogs);
    return application.Run(kelvane::Application::CommandLineOf(QApplication::arguments()));
}
