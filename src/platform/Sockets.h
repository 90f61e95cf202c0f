#pragma once

#include <QString>

#include <optional>

/// What Qt lacks for sockets, which are named by their descriptors.
namespace platform {

/// Lets the system notice when the other end of a connection is gone without a word, for those that
/// a listening socket accepts from now on: an idle one then fails after about two minutes.
void noticeLostPeer(qintptr listener);

/// The descriptor of the next connection that waits at a listening socket that does not block;
/// nothing when none waits. Throws Failure when the system has no more of what a connection takes.
/// Qt's own server keeps its first such failure for ever, and takes later ones for another.
std::optional<qintptr> acceptConnection(qintptr listener);

/// The id of the process that serves the local server to which a QLocalSocket is connected, by the
/// socket's descriptor; 0 when unknown.
qint64 processServing(qintptr descriptor);

/// What somebody can do on this system about a port that another program has, and about one that he
/// may not have: sentences for people.
QString adviceOnTakenPort();
QString adviceOnForbiddenPort();

} // namespace platform
