#include "support/system.h"

#include <winsock2.h>

void finishSending(qintptr socket)
{
    shutdown(static_cast<SOCKET>(socket), SD_SEND);
}

bool withholdDescriptors(bool /*withhold*/)
{
    return false;
}

qsizetype heapInUse()
{
    return 0;
}

bool limitFileSize(qint64 /*bytes*/)
{
    return false;
}
