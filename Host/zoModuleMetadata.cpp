#include "zoModuleMetadata.h"

#include <zoModuleInterface.h>

#include <QCborMap>
#include <QCborValue>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonObject>
#include <QPluginLoader>

#include <algorithm>

namespace
{
// What moc of Qt 5 and of Qt 6 puts before the metadata, which is CBOR: the mark, a format, the version of Qt (major, minor)
// and requirements.
constexpr char s_mark[] = "QTMETADATA !";
constexpr qint64 s_markSize = sizeof s_mark - 1;
constexpr qint64 s_headSize = s_markSize + 4;
constexpr qint64 s_most = 1 << 16; // of the metadata, with what stands behind it
constexpr int s_iidKey = 2;
constexpr int s_moduleKey = 4;

struct Plugin
{
    int qt = QT_VERSION_MAJOR;
    QJsonObject content;
};

// A plug-in for another major version of Qt, whose metadata QPluginLoader does not find or warns of.
bool readOtherQt(const QString& fileName, Plugin& plugin)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const uchar* const begin = file.map(0, file.size());
    if (begin == nullptr)
        return false;
    const uchar* const end = begin + file.size();
    const uchar* const found = std::search(begin, end, s_mark, s_mark + s_markSize);
    if (end - found < s_headSize || found[s_markSize] != 0 || found[s_markSize + 1] == QT_VERSION_MAJOR)
        return false;
    plugin.qt = found[s_markSize + 1];
    const auto size = std::min<qint64>(end - found - s_headSize, s_most);
    const QCborMap map =
        QCborValue::fromCbor(QByteArray(reinterpret_cast<const char*>(found) + s_headSize, int(size)))
            .toMap();
    plugin.content = {{QStringLiteral("IID"), map.value(s_iidKey).toString()},
                      {QStringLiteral("MetaData"), map.value(s_moduleKey).toJsonValue()}};
    return true;
}

Plugin readPlugin(const QString& fileName)
{
    Plugin plugin;
    // Qt 6 warns that it cannot look into an empty file; what is wrong with it, the system says when it loads it.
    if (QFileInfo(fileName).size() == 0 || readOtherQt(fileName, plugin))
        return plugin;
    QPluginLoader loader;
    // Else Qt remembers of the file that it stays in memory for ever.
    loader.setLoadHints({});
    loader.setFileName(fileName);
    plugin.content = loader.metaData();
    return plugin;
}
} // namespace

zoModuleMetadata zoModuleMetadata::read(const QString& fileName)
{
    const Plugin plugin = readPlugin(fileName);
    const QJsonObject module = plugin.content.value(QStringLiteral("MetaData")).toObject();

    zoModuleMetadata metadata;
    metadata.m_iid = plugin.content.value(QStringLiteral("IID")).toString();
    metadata.m_qt = plugin.qt;
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
    const QString module = m_name + QLatin1Char(' ') + m_version;
    if (m_qt != QT_VERSION_MAJOR)
        return tr("%1 was built with Qt %2, this host with Qt %3: install the module for this host")
            .arg(module)
            .arg(m_qt)
            .arg(QT_VERSION_MAJOR);
    if (m_interfaceVersion == ZO_MODULE_INTERFACE)
        return {};
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
