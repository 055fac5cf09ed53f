#pragma once

// The addresses at which the other player can reach this computer: what the
// waiting server shows its user to pass on.

#include <QHostAddress>
#include <QList>
#include <QString>
#include <QStringList>

namespace tavrix {

// The addresses of `addresses` that another computer on the network can
// call, as text: IPv4 first, then IPv6, each in the order given, once each.
// Loopback addresses reach only this computer, and IPv6 link-local ones need
// the caller's own interface name, so neither is kept; IPv4 link-local ones
// (two computers joined by a cable) are.
QStringList reachableAddresses(const QList<QHostAddress> &addresses);

// The addresses of this computer's network interfaces that are up.
QList<QHostAddress> interfaceAddresses();

// The line that tells where to connect: the reachable addresses and the
// port, or that there is no address to give.
QString localAddressesText(const QList<QHostAddress> &addresses, quint16 port);

} // namespace tavrix
