#include "app/Program.h"
#include "app/SingleInstance.h"
#include "core/basMain.h"
#include "core/basVersion.h"
#include "core/clsOptions.h"
#include "core/config.h"
#include "platform/Machine.h"
#include "platform/SystemServices.h"
#include "platform/XmlDocument.h"
#include "ui/WrappedToolTips.h"

#include <QApplication>
#include <QDir>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// When the display goes away, Qt ends the process with exit().
void saveUnattended()
{
    if (clsOptions *const options = gRoot->Options()) {
        options->saveUnattended();
    }
}

/// Told by the exit code, since nobody looks at a window then.
constexpr int NoDisplay = 69;

/// Takes what Qt says, also before it aborts for want of a display or of a platform plugin.
void takeMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    static QString displayProblem; // what Qt's platform part has complained of first
    const bool starting = QApplication::instance() == nullptr || QApplication::startingUp();
    if (type == QtFatalMsg && starting) {
        platform::tellOnStandardError(
            u"ZebekSuite.exe: %1. It needs the display of a running X server in "
            "DISPLAY; on a machine without a desktop start one, as in \"Xvfb :1 &\"."_s.arg(
                displayProblem.isEmpty() ? message : displayProblem));
        std::_Exit(NoDisplay);
    }
    if (!starting || qstrncmp(context.category, "qt.qpa", 6) != 0) {
        platform::tellOnStandardError(message);
    } else if (displayProblem.isEmpty()) {
        displayProblem = message;
    }
}

/// A first tool that runs is told and shows its window; of one that hangs the operator must know.
int endAsSecond(const SingleInstance &instance, SingleInstance::Claim claim)
{
    if (claim == SingleInstance::Claim::Second) {
        qInfo("The game directory is served already; that tool's window comes to the front.");
        return EXIT_SUCCESS;
    }
    platform::nativeMachine().messageBoxes.show(
        u"The tool that serves this game directory%1 does not answer. End that "
        "process, then start this program again."_s.arg(
            instance.firstProcess() == 0 ? QString()
                                         : u", process %1,"_s.arg(instance.firstProcess())),
        u"Zebek Suite Does Not Answer"_s, platform::OkOnly + platform::StopIcon);
    return EXIT_FAILURE;
}

/// What the program tells instead of starting; empty where it was not asked.
QString answerTo(const QByteArray &question)
{
    if (question == "--version") {
        return fnVersionLine() + u"\nBuilt with Qt %1, libxml2 %2 and %3"_s.arg(
                                     QLatin1String(QT_VERSION_STR),
                                     platform::XmlDocument::libraryVersion(),
                                     QLatin1String(config::Compiler));
    }
    if (question == "--help") {
        return u"Usage: ZebekSuite.exe [--version | --help]\n"
               "It serves the Ghost Recon directory that it lies in, and takes no other arguments"_s;
    }
    return {};
}

/// Where Qt runs on GLib's event loop, every change to a watched socket wakes that loop by a write:
/// nine for each web request, which takes twice the processor time then.
constexpr char QtsOwnEventLoop[] = "QT_NO_GLIB";

} // namespace

int main(int argc, char *argv[])
{
    platform::secureStandardStreams();
    if (const QString answer = answerTo(argc == 2 ? argv[1] : ""); !answer.isEmpty()) {
        platform::tellOnStandardOutput(answer);
        return EXIT_SUCCESS;
    }
    qputenv(QtsOwnEventLoop, "1");
    qInstallMessageHandler(takeMessage);
    QApplication application(argc, argv);
    qunsetenv(QtsOwnEventLoop); // the game server has its own choice
    QApplication::setApplicationName(u"Zebek Suite"_s);
    // Closing the main window ends the program by itself; closing a message box must not.
    QApplication::setQuitOnLastWindowClosed(false);
    WrappedToolTips toolTips;
    application.installEventFilter(&toolTips);

    const platform::Machine &machine = platform::nativeMachine();
    const QString directory = QDir::toNativeSeparators(QApplication::applicationDirPath());
    static Program root(machine, directory); // still there when exit() saves the options
    gRoot = &root;
    SingleInstance instance(directory);
    const SingleInstance::Claim claim =
        instance.claim([] { frmMain::bringToFront(root.MainWindow()); });
    if (claim != SingleInstance::Claim::First) {
        return endAsSecond(instance, claim);
    }
    machine.processEnd.onRequest([] { root.quitUnattended(); });
    // The end of the desktop session arrives as the end of the application, which the window does
    // not outlive.
    QObject::connect(&application, &QApplication::aboutToQuit, [] { root.quitUnattended(); });
    if (std::atexit(saveUnattended) != 0) {
        qWarning("The settings cannot be saved if the display goes away.");
    }

    root.Start();
    if (root.GlobalForm() == nullptr) {
        return EXIT_FAILURE; // the operator gave up before anything was loaded that could go on
    }
    return QApplication::exec();
}
