#pragma once

#include <QtGlobal>

namespace platform {

/// Lets another program bring its window to the front, which Windows allows only to the one that
/// the user has started last.
void letOthersComeToFront();

/// The id of the process that serves the local server to which a QLocalSocket is connected, by the
/// socket's descriptor; 0 when unknown.
qint64 processServing(qintptr descriptor);

} // namespace platform
