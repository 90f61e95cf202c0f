#pragma once

#include <QLocalServer>
#include <QString>

#include <functional>

/// Keeps a second tool from serving a game directory that one serves already. The claim is a local
/// server whose name lives as long as its process, so a tool that died leaves nothing behind.
class SingleInstance
{
public:
    enum class Claim {
        First,  ///< this process serves the directory
        Second, ///< there is one already; it has been told
        Ignored ///< there is one already, which does not answer within 3 s
    };

    explicit SingleInstance(const QString &directory);

    /// The first one calls `onSecondStart` whenever another one tries.
    Claim claim(std::function<void()> onSecondStart);
    /// The process id of the first one, as told to a second; 0 when unknown.
    qint64 firstProcess() const { return m_firstProcess; }

private:
    Claim tellTheFirst();

    QString m_name;
    qint64 m_firstProcess = 0;
    QLocalServer m_server;
};
