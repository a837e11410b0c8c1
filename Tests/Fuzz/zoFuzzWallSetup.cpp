#include "zoFuzzing.h"

#include <zoWallSetup.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

// What a node is told to show: an object that is no setup is refused with a reason and changes nothing, what was read
// is written as it reads back, and no value of it is one that a window or a wall cannot have.

namespace
{
QByteArray bytesOf(const zoWallSetup& setup)
{
    return QJsonDocument(setup.toJson()).toJson(QJsonDocument::Compact);
}

// So that a change shows.
zoWallSetup marked()
{
    zoWallSetup setup;
    setup.nodes = {{QStringLiteral("mark"), QStringLiteral("mark"), QStringLiteral("mark"), 0, {}}};
    setup.gamma = 1.5;
    return setup;
}

void requireSane(const zoWallSetup& setup)
{
    constexpr double Furthest = 1.0e9;
    for (const zoWallNode& node : setup.nodes) {
        for (const zoWallWindow& window : node.windows) {
            for (const zoWallViewport& viewport : window.viewports) {
                for (const double value :
                     {viewport.area.x(), viewport.area.y(), viewport.area.width(), viewport.area.height(),
                      viewport.plane.lowerLeft.x, viewport.plane.lowerRight.y, viewport.plane.upperRight.z,
                      viewport.eyeSeparation, viewport.edges.left, viewport.edges.bottom})
                    zoFuzzing::require(std::abs(value) <= Furthest, "values are finite and near");
            }
        }
    }
    zoFuzzing::require(std::abs(setup.gamma) <= Furthest, "gamma is finite and small");
}

// What a node is given of it.
void requireParts(const zoWallSetup& setup)
{
    QStringList ids{QStringLiteral("nobody")};
    for (const zoWallNode& node : setup.nodes)
        ids << node.id;
    const zoWallSetup part = setup.ofNodes(ids);
    zoFuzzing::require(part.nodes.size() == setup.nodes.size(), "a setup of all nodes has all nodes");
    for (const QString& id : ids.mid(1))
        zoFuzzing::require(part.node(id) != nullptr, "a node of the setup is found", id);
    zoFuzzing::require(setup.ofNodes({}).nodes.empty(), "a setup of no node has none");
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), int(size));
    const QJsonObject object = QJsonDocument::fromJson(text).object();

    zoWallSetup setup = marked();
    QString reason;
    if (!setup.fromJson(object, reason)) {
        zoFuzzing::require(!reason.isEmpty(), "what is refused has a reason");
        zoFuzzing::require(bytesOf(setup) == bytesOf(marked()), "what is refused changes nothing");
        return 0;
    }
    zoFuzzing::require(reason.isEmpty(), "what is taken has no reason");

    const QByteArray written = bytesOf(setup);
    zoWallSetup again;
    zoFuzzing::require(again.fromJson(QJsonDocument::fromJson(written).object(), reason),
                       "what was written reads back", reason);
    zoFuzzing::requireSame(QString::fromUtf8(bytesOf(again)), QString::fromUtf8(written),
                           "and is written the same");
    requireSane(setup);
    requireParts(setup);
    return 0;
}
