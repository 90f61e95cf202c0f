#pragma once

#include <QtGlobal>

/// Closes a socket's sending half, as a peer does that has said all it has to say.
void finishSending(qintptr socket);

/// Lets the process get no new descriptor, or again as many as before; false where that cannot be.
bool withholdDescriptors(bool withhold);

/// The bytes that are allocated and not freed; always 0 where nobody keeps that count.
qsizetype heapInUse();

/// Lets writing fail, or fall short, where a file would become longer than so many bytes; less than
/// none is no limit. False where the system has no such limit.
bool limitFileSize(qint64 bytes);
