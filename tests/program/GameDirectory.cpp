#include "program/GameDirectory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QtTest/QTest>

#include <csignal>
#include <sys/types.h>

namespace {

QString program(const QString &name)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
}

const QString Tool = QStringLiteral("ZebekSuite.exe");
const QString Server = QStringLiteral("GhostRecon.exe");

} // namespace

bool waitUntil(const std::function<bool()> &condition, int milliseconds)
{
    return QTest::qWaitFor(condition, milliseconds);
}

bool holdsFor(const std::function<bool()> &condition, int milliseconds)
{
    return !QTest::qWaitFor([&] { return !condition(); }, milliseconds);
}

void signalProcess(Pid process, int signal)
{
    // Not the special numbers, which stand for groups of processes.
    if (process > 1) {
        ::kill(static_cast<pid_t>(process), signal);
    }
}

GameDirectory::GameDirectory(const QString &name)
    : m_directory(QStringLiteral("%1/%2-XXXXXX").arg(QDir::tempPath(), name))
{
    QFile::copy(program(Tool), path(Tool));
    QFile::copy(program(Server), path(Server));
    m_tool.setProcessChannelMode(QProcess::ForwardedChannels);
}

GameDirectory::~GameDirectory()
{
    m_tool.kill();
    m_tool.waitForFinished();
    for (const Pid server : servers()) {
        signalProcess(server, SIGKILL);
    }
}

QString GameDirectory::path(const QString &name) const
{
    return m_directory.filePath(name);
}

QByteArray GameDirectory::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void GameDirectory::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    file.open(QIODevice::WriteOnly);
    file.write(content);
}

void GameDirectory::writeOptions(const QByteArray &elements, const QByteArray &serverSwitches) const
{
    write(QStringLiteral("ZebekSuiteOptions.xml"),
          "<options>" + elements + "<ServerCommandLineArgs>-log events.log " + serverSwitches +
              "</ServerCommandLineArgs></options>");
}

void GameDirectory::startTool()
{
    m_tool.setProgram(path(Tool));
    m_tool.setWorkingDirectory(QStringLiteral("/"));
    m_tool.start();
    m_tool.waitForStarted();
}

Pid GameDirectory::startServerByHand(const QString &switches)
{
    QProcess server;
    server.setProgram(path(Server));
    server.setArguments(QStringLiteral("-autoserve -log events.log %1")
                            .arg(switches)
                            .split(u' ', Qt::SkipEmptyParts));
    server.setWorkingDirectory(path());
    server.setStandardErrorFile(QProcess::nullDevice());
    Pid id = 0;
    server.startDetached(&id);
    return id;
}

std::vector<Pid> GameDirectory::servers() const
{
    std::vector<Pid> result;
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString &entry : entries) {
        if (QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(entry)) == path(Server)) {
            result.push_back(entry.toLongLong());
        }
    }
    return result;
}

Pid GameDirectory::server() const
{
    const std::vector<Pid> all = servers();
    if (all.size() > 1) {
        return -1;
    }
    return all.empty() ? 0 : all.front();
}

qsizetype GameDirectory::events(const QByteArray &name) const
{
    qsizetype count = 0;
    const QList<QByteArray> lines = read(QStringLiteral("events.log")).split('\n');
    for (const QByteArray &line : lines) {
        const QByteArray event = line.mid(line.indexOf("  ") + 2);
        if (event == name || event.startsWith(name + ' ')) {
            ++count;
        }
    }
    return count;
}
