#include "core/basMain.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"

#include <QApplication>
#include <QDir>

#include <cstdlib>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zebek Suite"));
    // Closing the main window ends the program by itself; closing a message box must not.
    QApplication::setQuitOnLastWindowClosed(false);
    const platform::Machine &machine = platform::nativeMachine();
    clsZebek root(machine, QDir::toNativeSeparators(QApplication::applicationDirPath()));
    gRoot = &root;
    machine.processEnd.onRequest([&root] { root.Quit(); });
    // The end of the desktop session arrives as the end of the application.
    QObject::connect(&application, &QApplication::aboutToQuit, [&root] { root.Quit(); });

    root.Start();
    if (root.GlobalForm() == nullptr) {
        return EXIT_FAILURE; // the operator gave up before anything was loaded that could go on
    }
    return QApplication::exec();
}
