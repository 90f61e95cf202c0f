#pragma once

#include <QLocalServer>
#include <QString>

#include <functional>

/// Keeps a second tool from serving a game directory that one serves already. The claim is a local
/// server whose name lives as long as its process, so a tool that died leaves nothing behind.
class SingleInstance
{
public:
    explicit SingleInstance(const QString &directory);

    /// True when this process is the directory's first. It then calls `onSecondStart` whenever
    /// another one tries. False when there is one already; it has been told.
    bool claim(std::function<void()> onSecondStart);

private:
    bool tellTheFirst() const;

    QString m_name;
    QLocalServer m_server;
};
