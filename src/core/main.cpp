#include "core/SingleInstance.h"
#include "core/basMain.h"
#include "core/clsZebek.h"
#include "platform/Machine.h"
#include "ui/WrappedToolTips.h"
#include "ui/frmMain.h"

#include <QApplication>
#include <QDir>

#include <cstdlib>

namespace {

void bringToFront()
{
    for (QWidget *const window :
         {static_cast<QWidget *>(gRoot->MainWindow()), QApplication::activeModalWidget()}) {
        if (window != nullptr && window->isVisible()) {
            window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
            window->raise();
            window->activateWindow();
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zebek Suite"));
    // Closing the main window ends the program by itself; closing a message box must not.
    QApplication::setQuitOnLastWindowClosed(false);
    WrappedToolTips toolTips;
    application.installEventFilter(&toolTips);

    const platform::Machine &machine = platform::nativeMachine();
    const QString directory = QDir::toNativeSeparators(QApplication::applicationDirPath());
    clsZebek root(machine, directory);
    gRoot = &root;
    SingleInstance instance(directory);
    if (!instance.claim(bringToFront)) {
        return EXIT_SUCCESS;
    }
    machine.processEnd.onRequest([&root] { root.Quit(); });
    // The end of the desktop session arrives as the end of the application.
    QObject::connect(&application, &QApplication::aboutToQuit, [&root] { root.Quit(); });

    root.Start();
    if (root.GlobalForm() == nullptr) {
        return EXIT_FAILURE; // the operator gave up before anything was loaded that could go on
    }
    return QApplication::exec();
}
