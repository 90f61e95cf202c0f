#include "web/Listener.h"

#include <QTcpSocket>

Listener::Listener()
{
    constexpr int Backlog = 1024;
    setListenBacklogSize(Backlog);
    // The one that waits with us; the others wait with the system.
    setMaxPendingConnections(1);
}

void Listener::incomingConnection(qintptr descriptor)
{
    auto *const socket = new QTcpSocket(this);
    socket->setSocketDescriptor(descriptor);
    socket->setReadBufferSize(1);
    addPendingConnection(socket);
}
