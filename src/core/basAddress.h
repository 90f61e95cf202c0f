#pragma once

#include <QHostAddress>

/// This machine's primary address: the first IPv4 address of a network that is up, the loopback
/// address without a network.
QHostAddress fnPrimaryAddress();
