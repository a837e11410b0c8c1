#include "zoHPCHostIcon.h"

#include "zoText.h"

#include <zoIconManager.h>

#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include <map>
#include <utility>

namespace
{
constexpr int PictureSize = 32;
constexpr int LockSize = 24;
constexpr QPoint OverlayPlace(8, 8);

QIcon iconOf(const QPixmap& pixmap)
{
    QIcon icon;
    icon.addPixmap(pixmap, QIcon::Normal, QIcon::Off);
    return icon;
}

QIcon iconOfHost(const char* name)
{
    return zoIconManager::getIcon(QString::fromLatin1(name), QString());
}

QIcon baseIcon(int kind)
{
    switch (kind) {
    case zoHPCHostIcon::Network:
        return iconOfHost("Network");
    case zoHPCHostIcon::Node:
        return iconOfHost("Server");
    case zoHPCHostIcon::DisplayNode:
        return iconOfHost("Display");
    default:
        return {};
    }
}

// A transparent picture stands for artwork that the host does not have, so that overlays still show.
QPixmap pictureOf(const QIcon& icon, QIcon::Mode mode, QIcon::State state)
{
    QPixmap pixmap = icon.pixmap(QSize(PictureSize, PictureSize), mode, state);
    if (pixmap.isNull()) {
        pixmap = QPixmap(PictureSize, PictureSize);
        pixmap.fill(Qt::transparent);
    }
    return pixmap;
}

void paintOver(QPixmap& base, const QPixmap& overlay)
{
    QPainter painter(&base);
    painter.drawPixmap(OverlayPlace, overlay);
}

void markAsNoRenderNode(QPixmap& picture)
{
    QPainter painter(&picture);
    painter.setFont(QFont(zoText("Sans"), 8));
    painter.setPen(QPen(QColor(zoText("#FF9900")), 1));
    painter.drawText(QRect(16, 0, 32, 16), zoText("RT"));
    painter.setPen(Qt::red);
    painter.drawLine(16, 7, 32, 7);
}
} // namespace

QIcon zoHPCHostIcon::icon(int kind, bool enabled, bool running, bool encrypted, bool noRender)
{
    static std::map<int, QIcon> cache;
    static qint64 palette = 0;
    // Pictures of the host may look otherwise in another one.
    if (std::exchange(palette, QGuiApplication::palette().cacheKey()) !=
        QGuiApplication::palette().cacheKey())
        cache.clear();
    const int key =
        kind | int(enabled) << 15 | int(running) << 16 | int(encrypted) << 17 | int(noRender) << 18;
    const auto known = cache.find(key);
    if (known != cache.end())
        return known->second;
    if (kind != Network && kind != Node && kind != DisplayNode)
        return cache[key] = QIcon();

    const auto picture = [&](QIcon::Mode mode) {
        QPixmap result =
            pictureOf(baseIcon(kind), enabled ? mode : QIcon::Disabled, running ? QIcon::On : QIcon::Off);
        if (enabled && encrypted)
            paintOver(result, iconOfHost("Lock").pixmap(QSize(LockSize, LockSize), mode, QIcon::On));
        if (enabled && noRender)
            markAsNoRenderNode(result);
        return result;
    };
    QIcon icon = iconOf(picture(QIcon::Normal));
    // Else the style would tint it with the colour of the selection that it lies on.
    icon.addPixmap(picture(QIcon::Selected), QIcon::Selected, QIcon::Off);
    return cache[key] = icon;
}

QIcon zoHPCHostIcon::overlaid(QPixmap base, const QPixmap& overlay)
{
    paintOver(base, overlay);
    return iconOf(base);
}
