#include "core/net/local_addresses.h"

#include <QNetworkInterface>

namespace tavrix {

QStringList reachableAddresses(const QList<QHostAddress> &addresses)
{
    QStringList ipv4;
    QStringList ipv6;
    for (const QHostAddress &address : addresses) {
        if (address.isNull() || address.isLoopback())
            continue;
        // An IPv4 address seen through IPv6 is still that IPv4 address.
        bool isV4 = false;
        const quint32 v4 = address.toIPv4Address(&isV4);
        if (isV4) {
            const QString text = QHostAddress(v4).toString();
            if (!QHostAddress(v4).isLoopback() && !ipv4.contains(text))
                ipv4 << text;
        } else if (address.protocol() == QAbstractSocket::IPv6Protocol && !address.isLinkLocal()) {
            QHostAddress bare(address);
            bare.setScopeId(QString());
            const QString text = bare.toString();
            if (!ipv6.contains(text))
                ipv6 << text;
        }
    }
    return ipv4 + ipv6;
}

QList<QHostAddress> interfaceAddresses()
{
    QList<QHostAddress> addresses;
    const auto interfaces = QNetworkInterface::allInterfaces();
    for (const QNetworkInterface &interface : interfaces) {
        const auto flags = interface.flags();
        if (!flags.testFlag(QNetworkInterface::IsUp) || !flags.testFlag(QNetworkInterface::IsRunning)
            || flags.testFlag(QNetworkInterface::IsLoopBack))
            continue;
        for (const QNetworkAddressEntry &entry : interface.addressEntries())
            addresses << entry.ip();
    }
    return addresses;
}

QString localAddressesText(const QList<QHostAddress> &addresses, quint16 port)
{
    const QStringList reachable = reachableAddresses(addresses);
    if (reachable.isEmpty())
        return QStringLiteral("This computer has no address on a network, so no other computer can connect to it.");
    QString choices = reachable.last();
    if (reachable.size() > 1)
        choices = reachable.first(reachable.size() - 1).join(QStringLiteral(", ")) + QStringLiteral(" or ") + choices;
    return QStringLiteral("Tell the other player to connect to %1 on port %2.").arg(choices).arg(port);
}

} // namespace tavrix
