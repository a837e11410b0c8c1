#include "zoHPCLegacyDisplayWriter.h"

#include "zoHPCProjectionType.h"
#include "zoText.h"

#include <zoClusterTags.h>

#include <cstddef>

zoHPCLegacyDisplayWriter::zoHPCLegacyDisplayWriter(const QDomElement& cluster, const QDomElement& display)
    : m_document(cluster.ownerDocument()), m_cluster(cluster), m_display(display)
{
}

void zoHPCLegacyDisplayWriter::setWallOptions(bool edgeBlending, double distance)
{
    m_edgeBlending = edgeBlending;
    m_distance = distance;
}

void zoHPCLegacyDisplayWriter::addWall(const QString& name, int tileWidth, int tileHeight, int offsetX,
                                       int offsetY, int rows, int columns, int overlapX, int overlapY)
{
    QDomElement projection = m_document.createElement(zoClusterTags::Projection);
    projection.setAttribute(zoText("name"), name);
    projection.setAttribute(zoText("type"), zoHPCProjectionType::word(zoHPCProjectionType::Kind::Wall));
    projection.setAttribute(zoClusterTags::TileWidthAttribute, tileWidth);
    projection.setAttribute(zoClusterTags::TileHeightAttribute, tileHeight);
    projection.setAttribute(zoClusterTags::OffsetXAttribute, offsetX);
    projection.setAttribute(zoClusterTags::OffsetYAttribute, offsetY);
    projection.setAttribute(zoText("rows"), rows);
    projection.setAttribute(zoText("columns"), columns);
    projection.setAttribute(zoText("edgeblending"), m_edgeBlending ? zoText("true") : zoText("false"));
    projection.setAttribute(zoText("overlapx"), overlapX);
    projection.setAttribute(zoText("overlapy"), overlapY);
    projection.setAttribute(zoText("distance"), m_distance);
    m_cluster.appendChild(projection);
}

void zoHPCLegacyDisplayWriter::addPlane(const QString& name, const std::array<Point, 3>& points)
{
    QDomElement projection = m_document.createElement(zoClusterTags::Projection);
    projection.setAttribute(zoText("name"), name);
    projection.setAttribute(zoText("type"), zoHPCProjectionType::word(zoHPCProjectionType::Kind::Plane));
    for (std::size_t i = 0; i < points.size(); ++i) {
        const QString number = QString::number(i + 1);
        projection.setAttribute(QLatin1Char('x') + number, points[i][0]);
        projection.setAttribute(QLatin1Char('y') + number, points[i][1]);
        projection.setAttribute(QLatin1Char('z') + number, points[i][2]);
    }
    m_cluster.appendChild(projection);
}

QDomElement zoHPCLegacyDisplayWriter::addWindow(const QString& node, const QString& screen, int x, int y,
                                                int width, int height)
{
    QDomElement window = m_document.createElement(zoClusterTags::Window);
    window.setAttribute(zoText("node"), node);
    window.setAttribute(zoText("screen"), screen);
    window.setAttribute(zoText("x"), x);
    window.setAttribute(zoText("y"), y);
    window.setAttribute(zoText("width"), width);
    window.setAttribute(zoText("height"), height);
    // Replaces the caller's screen: legacy windows lie on the extended desktop.
    window.setAttribute(zoText("screen"), zoText("-2"));
    window.setAttribute(zoText("fullscreen"), zoText("false"));
    m_display.appendChild(window);
    return window;
}

void zoHPCLegacyDisplayWriter::addViewport(QDomElement window, const QString& projection, double x1,
                                           double y1, double x2, double y2, const QString& eye, int rotate)
{
    QDomElement viewport = m_document.createElement(zoClusterTags::Viewport);
    viewport.setAttribute(zoText("projection"), projection);
    viewport.setAttribute(zoText("x1"), x1);
    viewport.setAttribute(zoText("y1"), y1);
    viewport.setAttribute(zoText("x2"), x2);
    viewport.setAttribute(zoText("y2"), y2);
    viewport.setAttribute(zoText("eye"), eye);
    viewport.setAttribute(zoClusterTags::RotateAttribute, rotate);
    viewport.setAttribute(zoText("position"), zoText("custom"));
    window.appendChild(viewport);
}
