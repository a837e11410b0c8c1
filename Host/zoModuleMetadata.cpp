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
    bool hasMark = false;
    bool isReadable = false; // what stands behind one of the marks
};

// Whether there is metadata that can be read. That for another major version of Qt is taken: QPluginLoader does not find
// it or warns of it.
void lookFor(const QString& fileName, Plugin& plugin)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const uchar* const begin = file.map(0, file.size());
    if (begin == nullptr)
        return;
    const uchar* const end = begin + file.size();
    const auto nextMark = [end](const uchar* from) {
        return std::search(from, end, s_mark, s_mark + s_markSize);
    };
    for (const uchar* mark = nextMark(begin); mark != end && !plugin.isReadable;
         mark = nextMark(mark + s_markSize)) {
        plugin.hasMark = true;
        if (end - mark <= s_headSize)
            break;
        const QByteArray bytes =
            QByteArray::fromRawData(reinterpret_cast<const char*>(mark) + s_headSize,
                                    int(std::min<qint64>(end - mark - s_headSize, s_most)));
        const QCborMap map = QCborValue::fromCbor(bytes).toMap();
        const QString iid = map.value(s_iidKey).toString();
        plugin.isReadable = !iid.isEmpty();
        if (!plugin.isReadable || mark[s_markSize] != 0 || mark[s_markSize + 1] == QT_VERSION_MAJOR)
            continue;
        plugin.qt = mark[s_markSize + 1];
        plugin.content = {{QStringLiteral("IID"), iid},
                          {QStringLiteral("MetaData"), map.value(s_moduleKey).toJsonValue()}};
    }
}

Plugin readPlugin(const QString& fileName)
{
    Plugin plugin;
    // Qt 6 warns that it cannot look into an empty file; what is wrong with it, the system says when it loads it.
    if (QFileInfo(fileName).size() == 0)
        return plugin;
    lookFor(fileName, plugin);
    const bool isUnreadable = plugin.hasMark && !plugin.isReadable; // which Qt warns of
    if (isUnreadable || !plugin.content.isEmpty())
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
    metadata.m_isDamaged = plugin.hasMark && !metadata.isPresent();
    metadata.m_name = module.value(QStringLiteral("name")).toString();
    metadata.m_version = module.value(QStringLiteral("version")).toString();
    metadata.m_licence = module.value(QStringLiteral("licence")).toString();
    metadata.m_interfaceVersion = module.value(QStringLiteral("interface")).toInt();

    // Of a library that is loaded Qt asks the library itself, which hides the answer.
    static QHash<QString, zoModuleMetadata> known;
    const QString file = QFileInfo(fileName).canonicalFilePath();
    if (metadata.isPresent())
        known.insert(file, metadata);
    return known.value(file, metadata);
}

QString zoModuleMetadata::refusal() const
{
    // Without it nobody knows whether its code fits.
    if (m_isDamaged)
        return tr("The file is damaged: what it says of itself cannot be read. Install or copy it anew");
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
