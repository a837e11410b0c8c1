#include "zoThisMachine.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QSysInfo>

bool zoThisMachine::isNamed(const QString& hostName)
{
    const QString name = hostName.toLower();
    const QString own = QSysInfo::machineHostName().toLower();
    if (name == QLatin1String("localhost") || name == own || name == own.section(QLatin1Char('.'), 0, 0))
        return true;
    const QHostAddress address(name);
    return !address.isNull() && (address.isLoopback() || QNetworkInterface::allAddresses().contains(address));
}
