#include "zoIconManager.h"

#include "zoPlatform.h"

#include <QFile>

QIcon zoIconManager::getIcon(const QString& name, const QString& theme)
{
    Q_UNUSED(theme)
    Q_UNUSED(name)
    return {};
}

QPixmap zoIconManager::getPixmap(const QString& name, const QString& theme)
{
    return getIcon(name, theme).pixmap(zoPlatform::getMediumIconSize());
}
