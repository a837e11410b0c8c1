#pragma once

#include <QRect>
#include <QRectF>
#include <QSize>
#include <QString>

// Where the windows of a rehearsed wall stand on the desktop of this machine: as on the wall, as large as there is room,
// beside the window that a person starts and stops the session in.
class zoRehearsalPlaces final
{
public:
    // All in pixels. `avoided` is the window of the host, empty for none; on a screen that it leaves too little of, the
    // wall stands in the middle, over it.
    zoRehearsalPlaces(const QSize& wall, const QRect& screen, const QRect& avoided);

    // Of a window in a picture of the whole wall; never empty.
    QRect of(const QRectF& place) const;

    // "1920x1080+0+0", as node servers tell their screens; another one for anything else.
    static QRect screenOf(const QString& text);

private:
    QPointF m_corner;
    double m_scale = 1.0;
};
