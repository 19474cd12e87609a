// The yardstick for the start-up benchmark: the least a Qt Widgets program
// does before its main window is painted. It shows an empty main window of
// about the size of Kelvane's, titled "Minimal", and nothing else.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Minimal"));
    window.resize(430, 430);
    window.show();
    return QApplication::exec();
}
