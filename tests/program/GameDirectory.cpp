#include "program/GameDirectory.h"

#include "support/gameFiles.h"

#include <csignal>
#include <sys/types.h>

const QString Tool = u"ZebekSuite.exe"_s;
const QString Server = u"GhostRecon.exe"_s;

bool waitUntil(const std::function<bool()> &condition, int milliseconds)
{
    return QTest::qWaitFor(condition, milliseconds);
}

void signalProcess(Pid process, int signal)
{
    // Not the special numbers, which stand for groups of processes.
    if (process > 1) {
        ::kill(static_cast<pid_t>(process), signal);
    }
}

GameDirectory::GameDirectory(const QString &name)
    : m_directory(u"%1/%2-XXXXXX"_s.arg(QDir::tempPath(), name))
{
    for (const QString &program : {Tool, Server}) {
        QFile::copy(QCoreApplication::applicationDirPath() + u'/' + program, path(program));
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
    m_tool.setProgram(path(Tool));
    m_tool.setWorkingDirectory(u"/"_s);
    m_tool.start();
    m_tool.waitForStarted();
}

void GameDirectory::killTool()
{
    m_tool.kill();
    m_tool.waitForFinished();
}

Pid GameDirectory::startServerByHand(const QString &switches)
{
    QProcess process;
    process.setProgram(path(Server));
    process.setArguments(
        u"-autoserve -log events.log %1"_s.arg(switches).split(u' ', Qt::SkipEmptyParts));
    process.setWorkingDirectory(path());
    Pid result = 0;
    process.startDetached(&result);
    return result;
}

std::vector<Pid> GameDirectory::servers() const
{
    std::vector<Pid> result;
    for (const QString &entry : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        if (QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(entry)) == path(Server)) {
            result.push_back(entry.toLongLong());
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
