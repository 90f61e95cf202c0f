#include "core/basAddress.h"

#include <QNetworkInterface>

QHostAddress fnPrimaryAddress()
{
    for (const QNetworkInterface &network : QNetworkInterface::allInterfaces()) {
        if (!network.flags().testFlags(QNetworkInterface::IsUp | QNetworkInterface::IsRunning) ||
            network.flags().testFlag(QNetworkInterface::IsLoopBack)) {
            continue;
        }
        for (const QNetworkAddressEntry &entry : network.addressEntries()) {
            if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol) {
                return entry.ip();
            }
        }
    }
    return {QHostAddress::LocalHost};
}
