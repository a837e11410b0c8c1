#include "zoServerHello.h"

#include "zoAvailableMemory.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QSysInfo>

zoServerHello zoServerHello::own()
{
    zoServerHello hello;
    hello.protocol = Protocol;
    hello.version = QStringLiteral(ZO_VERSION);
    hello.host = QSysInfo::machineHostName();
    hello.freeMemory = zoAvailableMemory::bytes();
    hello.processId = QCoreApplication::applicationPid();
    return hello;
}

zoServerHello zoServerHello::fromMessage(const zoServerMessage& message)
{
    const QJsonObject object = message.object();
    zoServerHello hello;
    hello.protocol = object.value(QLatin1String("protocol")).toInt();
    hello.version = object.value(QLatin1String("version")).toString();
    hello.host = object.value(QLatin1String("host")).toString();
    hello.freeMemory = qint64(object.value(QLatin1String("freeMemory")).toDouble(-1));
    hello.display = object.value(QLatin1String("display")).toString();
    const QJsonArray screens = object.value(QLatin1String("screens")).toArray();
    for (const QJsonValue& screen : screens)
        hello.screens << screen.toString();
    hello.processId = qint64(object.value(QLatin1String("processId")).toDouble());
    return hello;
}

zoServerMessage zoServerHello::message() const
{
    return zoServerMessage::of("HELLO", {{QStringLiteral("protocol"), protocol},
                                         {QStringLiteral("version"), version},
                                         {QStringLiteral("host"), host},
                                         {QStringLiteral("freeMemory"), double(freeMemory)},
                                         {QStringLiteral("display"), display},
                                         {QStringLiteral("screens"), QJsonArray::fromStringList(screens)},
                                         {QStringLiteral("processId"), double(processId)}});
}

QString zoServerHello::mismatch() const
{
    if (protocol == Protocol)
        return {};
    return QStringLiteral(
               "its program is version %1 with protocol %2, this one is version %3 with protocol %4")
        .arg(version, QString::number(protocol), QStringLiteral(ZO_VERSION), QString::number(Protocol));
}
