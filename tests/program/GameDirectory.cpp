#include "program/GameDirectory.h"

#include "platform/linux/Wine.h"
#include "support/gameFiles.h"

#include <csignal>
#include <stdexcept>
#include <sys/types.h>

const QString Tool = u"ZebekSuite.exe"_s;
const QString Server = u"GhostRecon.exe"_s;

static QString programOf(const QString &name)
{
    const char *const variable = name == Tool ? "ZEBEK_TEST_TOOL" : "ZEBEK_TEST_SERVER";
    return qEnvironmentVariable(variable, QCoreApplication::applicationDirPath() + u'/' + name);
}

bool isNative(Program program)
{
    return !platform::isWindowsProgram(programOf(program == Program::Tool ? Tool : Server));
}

/// The process's program as it is to be started.
static void setProgram(QProcess &process, const QString &program)
{
    const bool windows = platform::isWindowsProgram(program);
    process.setProgram(windows ? u"wine"_s : program);
    process.setArguments(windows ? QStringList(program) : QStringList());
}

bool waitUntil(const std::function<bool()> &condition, int milliseconds)
{
    return QTest::qWaitFor(condition, milliseconds);
}

platform::WindowHandle waitForWindow(platform::LinuxWindows &windows, const QString &caption)
{
    platform::WindowHandle found = 0;
    const auto appears = [&] {
        for (const platform::WindowHandle window : windows.topLevel()) {
            found = windows.caption(window, 100) == caption ? window : found;
        }
        return found != 0;
    };
    if (!waitUntil(appears, StartMilliseconds)) {
        throw std::runtime_error("no window " + caption.toStdString());
    }
    return found;
}

void signalProcess(Pid process, int signal)
{
    // Not the special numbers, which stand for groups of processes.
    if (process > 1) {
        ::kill(static_cast<pid_t>(process), signal);
    }
}

/// Characters that some program or other mistakes, as far as Windows allows them.
static QString awkwardName()
{
    const bool native = isNative(Program::Tool) && isNative(Program::Server);
    return native ? u"łukasz 50% \"Игра\" <&>"_s : u"łukasz 50% 'Игра' &"_s;
}

GameDirectory::GameDirectory() : m_directory(u"%1/%2-XXXXXX"_s.arg(QDir::tempPath(), awkwardName()))
{
    for (const QString &program : {Tool, Server}) {
        QFile::copy(programOf(program), path(program));
    }
    writeGameFiles(path({}));
    m_tool.setProcessChannelMode(QProcess::ForwardedChannels);
}

GameDirectory::~GameDirectory()
{
    killTool();
    for (const Pid server : servers()) {
        signalProcess(server, SIGKILL);
    }
}

QByteArray GameDirectory::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void GameDirectory::writeOptions(const QByteArray &elements, const QByteArray &serverSwitches) const
{
    QFile file(path(u"ZebekSuiteOptions.xml"_s));
    file.open(QIODevice::WriteOnly);
    file.write("<options>" + elements + "<ServerCommandLineArgs>-log events.log " + serverSwitches +
               "</ServerCommandLineArgs></options>");
}

void GameDirectory::startTool()
{
    setProgram(m_tool, path(Tool));
    m_tool.setWorkingDirectory(u"/"_s);
    m_tool.start();
    m_tool.waitForStarted();
}

GameDirectory::Ending GameDirectory::runToolAgain(const std::function<void()> &meanwhile) const
{
    QProcess second;
    setProgram(second, path(Tool));
    second.start();
    meanwhile();
    second.waitForFinished();
    return {second.exitCode(), second.readAllStandardError()};
}

void GameDirectory::killTool()
{
    m_tool.kill();
    m_tool.waitForFinished();
}

std::vector<Pid> GameDirectory::servers() const
{
    std::vector<Pid> result;
    for (const QString &entry : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        const Pid process = entry.toLongLong();
        const QString program = QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(entry));
        if (program == path(Server) ||
            (program.contains(u"/wine"_s) &&
             platform::programMappedBy(static_cast<pid_t>(process)) == path(Server))) {
            result.push_back(process);
        }
    }
    return result;
}

Pid GameDirectory::server() const
{
    const std::vector<Pid> all = servers();
    return all.size() > 1 ? -1 : (all.empty() ? 0 : all.front());
}

qsizetype GameDirectory::events(const QByteArray &name) const
{
    const QRegularExpression event(u"  %1( |$)"_s.arg(QString::fromLatin1(name)),
                                   QRegularExpression::MultilineOption);
    return QString::fromUtf8(read(u"events.log"_s)).count(event);
}
