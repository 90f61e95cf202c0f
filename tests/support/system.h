#pragma once

#include <QtGlobal>

/// Closes a socket's sending half, as a peer does that has said all it has to say.
void finishSending(qintptr socket);

/// The bytes that are allocated and not freed; always 0 where nobody keeps that count.
qsizetype heapInUse();
