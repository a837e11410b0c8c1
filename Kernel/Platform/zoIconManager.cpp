#include "zoIconManager.h"

#include "zoIconEngine.h"
#include "zoPlatform.h"

#include <QFile>
#include <QHash>
#include <QPair>

namespace
{
// Artwork file of a name without its ending; empty when there is none.
QString artworkOf(const QString& name, const QString& theme)
{
    const QString suffix = QStringLiteral(".svg");
    const QString base = name.endsWith(suffix) ? name.chopped(suffix.size()) : name;
    const QString root = QStringLiteral(":/zo/icons/");
    if (!theme.isEmpty() && QFile::exists(root + theme + QLatin1Char('/') + base + suffix))
        return root + theme + QLatin1Char('/') + base;
    return QFile::exists(root + base + suffix) ? root + base : QString();
}

QIcon loadIcon(const QString& name, const QString& theme)
{
    const QString artwork = artworkOf(name, theme);
    if (artwork.isEmpty())
        return {};
    const QString onFile = artwork + QStringLiteral("-on.svg");
    return QIcon(
        new zoIconEngine(artwork + QStringLiteral(".svg"), QFile::exists(onFile) ? onFile : QString()));
}
} // namespace

QIcon zoIconManager::getIcon(const QString& name, const QString& theme)
{
    // Copies of one icon share its pictures.
    static QHash<QPair<QString, QString>, QIcon> icons;
    const auto known = icons.constFind({name, theme});
    if (known != icons.constEnd())
        return *known;
    const QIcon icon = loadIcon(name, theme);
    // Deep copies: a text may be a literal of a module that is unloaded later.
    if (!icon.isNull())
        icons.insert({QString(name.constData(), name.size()), QString(theme.constData(), theme.size())},
                     icon);
    return icon;
}

QPixmap zoIconManager::getPixmap(const QString& name, const QString& theme)
{
    return getIcon(name, theme).pixmap(zoPlatform::getMediumIconSize());
}
