#include "zoWallScreens.h"

#include <zoWallSetup.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("zoWallScreens", text);
}

// Number of the X screen in a display name, "host:0.1".
int screenOfDisplay()
{
    const QByteArray display = qgetenv("DISPLAY");
    const int dot = display.lastIndexOf('.');
    return dot > display.lastIndexOf(':') ? display.mid(dot + 1).toInt() : 0;
}

// In the order in which the display server counts them. Names do not tell: all screens of X are called "screen". Those
// of one X screen are siblings, and the toolkit lists those of DISPLAY first and the others in their order.
QList<QScreen*> inOrder()
{
    QList<QList<QScreen*>> groups;
    const QList<QScreen*> all = QGuiApplication::screens();
    for (QScreen* const screen : all) {
        const auto isSibling = [screen](const QList<QScreen*>& group) {
            return group.first()->virtualSiblings().contains(screen);
        };
        const auto group = std::find_if(groups.begin(), groups.end(), isSibling);
        if (group != groups.end())
            group->append(screen);
        else
            groups.append({screen});
    }
    if (groups.size() > 1)
        groups.move(0, std::clamp<int>(screenOfDisplay(), 0, groups.size() - 1));
    QList<QScreen*> screens;
    for (const QList<QScreen*>& group : groups)
        screens += group;
    return screens;
}
} // namespace

bool zoWallScreens::areImaginary()
{
    const QString platform = QGuiApplication::platformName();
    return platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
}

zoWallScreens::Place zoWallScreens::find(const zoWallWindow& window)
{
    Place place;
    const QRect wanted(window.geometry.topLeft(), window.geometry.size().expandedTo({1, 1}));
    if (areImaginary()) {
        place.screen = QGuiApplication::primaryScreen();
        place.geometry = wanted;
        return place;
    }
    const QList<QScreen*> screens = inOrder();
    if (window.screen < 0)
        place.screen = QGuiApplication::primaryScreen();
    else if (window.screen < screens.size())
        place.screen = screens[window.screen];
    if (place.screen == nullptr) {
        place.failure = tr("screen %1 is missing, the machine has %2")
                            .arg(QString::number(window.screen + 1), QString::number(screens.size()));
        return place;
    }
    const QRect area = window.screen <= zoWallWindow::ExtendedDesktop ? place.screen->virtualGeometry()
                                                                      : place.screen->geometry();
    place.geometry = window.fullScreen ? area : wanted.translated(area.topLeft());
    return place;
}
