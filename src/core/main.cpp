#include "core/SingleInstance.h"
#include "core/basMain.h"
#include "core/clsOptions.h"
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

/// When the desktop session ends or the display goes away, there is nobody to ask.
void saveUnattended()
{
    if (clsOptions *const options = gRoot->Options()) {
        options->SaveUnattended();
    }
}

/// Where Qt runs on GLib's event loop, every change to a watched socket wakes that loop by a write:
/// nine for each web request, which takes twice the processor time then.
constexpr char QtsOwnEventLoop[] = "QT_NO_GLIB";

} // namespace

int main(int argc, char *argv[])
{
    qputenv(QtsOwnEventLoop, "1");
    QApplication application(argc, argv);
    qunsetenv(QtsOwnEventLoop); // the game server has its own choice
    QApplication::setApplicationName(QStringLiteral("Zebek Suite"));
    // Closing the main window ends the program by itself; closing a message box must not.
    QApplication::setQuitOnLastWindowClosed(false);
    WrappedToolTips toolTips;
    application.installEventFilter(&toolTips);

    const platform::Machine &machine = platform::nativeMachine();
    const QString directory = QDir::toNativeSeparators(QApplication::applicationDirPath());
    SingleInstance instance(directory);
    if (!instance.claim(bringToFront)) {
        qInfo("The game directory is served already; that tool's window comes to the front.");
        return EXIT_SUCCESS;
    }
    static clsZebek root(machine, directory); // still there when exit() saves the options
    gRoot = &root;
    machine.processEnd.onRequest([] { gRoot->Quit(); });
    // The end of the desktop session arrives as the end of the application, which the window does
    // not outlive; when the display goes away, Qt ends the process with exit().
    QObject::connect(&application, &QApplication::aboutToQuit, [&machine] {
        saveUnattended();
        machine.processEnd.end();
    });
    if (std::atexit(saveUnattended) != 0) {
        qWarning("The settings cannot be saved if the display goes away.");
    }

    root.Start();
    if (root.GlobalForm() == nullptr) {
        return EXIT_FAILURE; // the operator gave up before anything was loaded that could go on
    }
    return QApplication::exec();
}
