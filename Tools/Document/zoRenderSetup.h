#pragma once

#include "zoHPCLayout.h"
#include "zoHPCPlane.h"

#include <QCoreApplication>
#include <QRect>
#include <QString>

#include <vector>

class QTreeWidgetItem;
class zoClusterSetup;

// A configuration as engines see it that render distributed: one picture per viewport, on a window of a host,
// of a plane in space. What of the configuration engines cannot take is told in words.
class zoRenderSetup final
{
    Q_DECLARE_TR_FUNCTIONS(zoRenderSetup)

public:
    struct Picture
    {
        QString host;
        QString projection; // name of the plane or tile
        QString wall;       // name of the projection of the top level that it belongs to
        int screen;         // of the host; negative for its desktop
        int window;         // index of the window; those of one window follow each other
        bool isFullScreen;
        QRect windowGeometry; // pixels, y down
        QRectF area;          // of the window in fractions, y down
        QRect geometry;       // the same in pixels of the screen
        zoHPCPlane plane;     // millimetres
        QRectF part;          // of the wall in fractions, y up; all of it when the wall is not one plane
    };

    struct Note
    {
        const QTreeWidgetItem* item; // not owned
        QString text;
    };

    // `pixelPitch` is the size of a pixel of tiled walls, which have no other, in millimetres.
    zoRenderSetup(zoClusterSetup& setup, double pixelPitch);

    const std::vector<Picture>& pictures() const { return m_pictures; }
    const std::vector<Note>& notes() const { return m_notes; }
    double eyeSeparation() const { return m_eyeSeparation; } // mm

private:
    void noteDisplays();
    void noteGateways();
    void noteProjections();
    void addPicture(const zoHPCLayout::Viewport& viewport);
    bool findPlane(int projection, Picture& picture) const;
    zoHPCPlane wallPlane(const zoHPCProjectionItem& wall, const QSizeF& tile) const;
    void note(const QTreeWidgetItem* item, const QString& text);

    zoHPCLayout m_layout;
    double m_pixelPitch;
    double m_eyeSeparation = 65.0;
    std::vector<Picture> m_pictures;
    std::vector<Note> m_notes;
};
