#include "support/system.h"

#include <malloc.h>
#include <sys/socket.h>

void finishSending(qintptr socket)
{
    ::shutdown(static_cast<int>(socket), SHUT_WR);
}

qsizetype heapInUse()
{
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<qsizetype>(heap.uordblks + heap.hblkhd);
}
