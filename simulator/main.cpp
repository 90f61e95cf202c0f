#include "EventLog.h"
#include "SimulatedServer.h"
#include "Switches.h"

#include <QApplication>
#include <QTextStream>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QStringList argumentsOf(int count, char **values)
{
    QStringList arguments;
    for (int i = 1; i < count; ++i) {
        arguments.append(QString::fromLocal8Bit(values[i]));
    }
    return arguments;
}

} // namespace

int main(int argc, char **argv)
{
    const CommandLine line = readCommandLine(argumentsOf(argc, argv));
    if (line.settings.help) {
        QTextStream(stdout) << switchHelp();
        return 0;
    }
    // Qt sees the program's name only: it would take the game's arguments such as -name for its
    // own.
    int qtArgumentCount = 1;
    const QApplication application(qtArgumentCount, argv);
    // The server ends when its own window is asked to close, whatever becomes of the others.
    QApplication::setQuitOnLastWindowClosed(false);

    EventLog log;
    if (!log.open(line.settings.logFile)) {
        log.complain(u"cannot-write "_s + line.settings.logFile);
    }
    log.record(u"started pid=%1"_s.arg(QCoreApplication::applicationPid()));
    for (const QString &complaint : line.complaints) {
        log.complain(complaint);
    }
    SimulatedServer server(line.settings, log, QCoreApplication::applicationDirPath());
    server.start();
    return QApplication::exec();
}
