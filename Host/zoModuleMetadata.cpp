#include "zoModuleMetadata.h"

#include <zoModuleInterface.h>

#include <QFileInfo>
#include <QHash>
#include <QJsonObject>
#include <QPluginLoader>

zoModuleMetadata zoModuleMetadata::read(const QString& fileName)
{
    QPluginLoader loader;
    // Else Qt remembers of the file that it stays in memory for ever.
    loader.setLoadHints({});
    loader.setFileName(fileName);
    const QJsonObject plugin = loader.metaData();
    const QJsonObject module = plugin.value(QStringLiteral("MetaData")).toObject();

    zoModuleMetadata metadata;
    metadata.m_iid = plugin.value(QStringLiteral("IID")).toString();
    metadata.m_name = module.value(QStringLiteral("name")).toString();
    metadata.m_version = module.value(QStringLiteral("version")).toString();
    metadata.m_licence = module.value(QStringLiteral("licence")).toString();
    metadata.m_interfaceVersion = module.value(QStringLiteral("interface")).toInt();

    // Of a library that is loaded Qt asks the library itself, which hides the answer.
    static QHash<QString, zoModuleMetadata> known;
    const QString file = QFileInfo(fileName).canonicalFilePath();
    if (metadata.isPresent())
        known.insert(file, metadata);
    return metadata.isPresent() ? metadata : known.value(file);
}

QString zoModuleMetadata::refusal() const
{
    if (!isPresent())
        return {};
    if (m_iid != QLatin1String(ZO_MODULE_IID))
        return tr("It is a plug-in for another program (%1)").arg(m_iid);
    if (m_interfaceVersion == ZO_MODULE_INTERFACE)
        return {};
    const QString module = m_name + QLatin1Char(' ') + m_version;
    if (m_interfaceVersion > ZO_MODULE_INTERFACE)
        return tr("%1 needs a newer host: it was built for interface %2, this host has interface %3")
            .arg(module)
            .arg(m_interfaceVersion)
            .arg(ZO_MODULE_INTERFACE);
    return tr("%1 was built for interface %2, this host has interface %3: install the module of this release")
        .arg(module)
        .arg(m_interfaceVersion)
        .arg(ZO_MODULE_INTERFACE);
}
