#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <QString>

#include <array>

// Writes the display section of a converted configuration, one element each, in the order of the calls.
class zoHPCLegacyDisplayWriter final
{
public:
    using Point = std::array<double, 3>;

    // Projections go into `cluster`, windows into `display`.
    zoHPCLegacyDisplayWriter(const QDomElement& cluster, const QDomElement& display);

    // What all walls of the configuration share.
    void setWallOptions(bool edgeBlending, double distance);

    void addWall(const QString& name, int tileWidth, int tileHeight, int offsetX, int offsetY, int rows,
                 int columns, int overlapX, int overlapY);
    void addPlane(const QString& name, const std::array<Point, 3>& points);
    QDomElement addWindow(const QString& node, const QString& screen, int x, int y, int width, int height);
    void addViewport(QDomElement window, const QString& projection, double x1, double y1, double x2,
                     double y2, const QString& eye, int rotate);

private:
    QDomDocument m_document;
    QDomElement m_cluster;
    QDomElement m_display;
    bool m_edgeBlending = false;
    double m_distance = 0.0;
};
