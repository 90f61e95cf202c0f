#pragma once

#include <QTcpServer>

/// Listens for the web site's connections. One that waits for a free element of the pool is hardly
/// read: what it sends stays with the system, and so does the news that its peer has gone, which
/// would keep it from being answered.
class Listener : public QTcpServer
{
public:
    Listener();

protected:
    void incomingConnection(qintptr descriptor) override;
};
