#include "zoServerSetup.h"

#include "zoConfigurationText.h"
#include "zoWallArrangement.h"
#include "zoWallNeighbourhood.h"

#include <zoCheckScene.h>
#include <zoHPCDisplayItem.h>
#include <zoHPCItemsById.h>
#include <zoHPCTreeItem.h>
#include <zoHPCWindowItem.h>

namespace
{
zoWallPoint toPoint(const Point3& point)
{
    return {point.x, point.y, point.z};
}

QMap<QString, QString> optionsOf(const zoHPCTreeItem& item)
{
    QMap<QString, QString> options;
    item.forEachOption([&options](const QString& name, const QString& value) {
        if (!value.isEmpty())
            options.insert(name, value);
    });
    return options;
}

bool isEncryptedFromAbove(const zoHPCTreeItem* item)
{
    for (; item != nullptr; item = item->getParent()) {
        if (item->isEncrypted())
            return true;
    }
    return false;
}
} // namespace

bool zoServerSetup::read(const QString& text, double pixelPitch, zoWallSetup& setup, QString& reason)
{
    zoServerSetup reader;
    if (!zoConfigurationText::read(text, reader.m_configuration, reason))
        return false;
    reader.m_render = std::make_unique<zoHPCRenderSetup>(reader.m_configuration.displays(),
                                                         reader.m_configuration.hosts().master(), pixelPitch);
    reader.readNetworks();
    reader.readNodes();
    reader.readWindows();
    reader.readViewports();
    reader.readNotes();
    setup = std::move(reader.m_setup);
    return true;
}

void zoServerSetup::readNetworks()
{
    zoHPCTreeItem* const master = m_configuration.hosts().master();
    m_setup.options = optionsOf(*master);
    zoHPCItemsById ids;
    ids.enter({master}, [&](zoHPCTreeItem* item, int entry) { m_ids.insert(item, ids.id(entry)); });
    for (const zoHPCLayout::Network& network : m_render->layout().networks()) {
        if (!network.enabled)
            continue;
        m_networks.insert(network.item, int(m_setup.networks.size()));
        zoWallNetwork entry;
        entry.id = m_ids.value(network.item);
        entry.description = network.item->getOption(zoHPCOption::Description);
        entry.options = optionsOf(*network.item);
        entry.encrypted = isEncryptedFromAbove(network.item);
        // A network hangs below the master, or below the node that is its gateway.
        const zoHPCTreeItem* const above = network.item->getParent();
        if (above != nullptr && above->isNode()) {
            entry.gateway = m_ids.value(above);
            entry.parent = networkIndexOf(above->getParent());
        }
        m_setup.networks.push_back(entry);
    }
}

int zoServerSetup::networkIndexOf(const zoHPCTreeItem* network) const
{
    return m_networks.value(network, -1);
}

void zoServerSetup::readNodes()
{
    for (std::size_t i = 0; i < m_render->layout().nodes().size(); ++i) {
        const zoHPCLayout::Node& node = m_render->layout().nodes()[i];
        // Without a host name there is nothing to reach.
        if (!node.enabled || node.item->hostName().isEmpty())
            continue;
        m_nodes.insert(int(i), int(m_setup.nodes.size()));
        zoWallNode entry;
        entry.id = m_ids.value(node.item);
        entry.name = node.name;
        entry.host = node.item->hostName();
        entry.network = networkIndexOf(node.item->getParent());
        if (entry.network >= 0) {
            zoWallNetwork& network = m_setup.networks[std::size_t(entry.network)];
            network.nodes.append(entry.id);
            network.encrypted = network.encrypted || node.item->isEncrypted();
        }
        m_setup.nodes.push_back(entry);
    }
}

// All windows of the nodes: one that shows nothing is black on the wall as well. One that is beyond all screens is none.
void zoServerSetup::readWindows()
{
    for (std::size_t i = 0; i < m_render->layout().windows().size(); ++i) {
        const zoHPCLayout::Window& window = m_render->layout().windows()[i];
        const int node = m_nodes.value(window.nodeIndex, -1);
        if (node < 0 || !zoHPCRenderSetup::isOnAScreen(window.geometry))
            continue;
        zoWallNode& owner = m_setup.nodes[std::size_t(node)];
        zoWallWindow entry;
        entry.number = int(owner.windows.size()) + 1;
        entry.title = owner.name;
        entry.screen = window.screen;
        entry.fullScreen = window.isFullScreen;
        entry.geometry = window.geometry.toRect();
        const QTreeWidgetItem* const item = window.item;
        if (const auto* display = dynamic_cast<const zoHPCDisplayItem*>(item->parent()))
            entry.hardwareSync = display->getBool(zoHPCDisplayItem::HardwareSync);
        m_windows.insert(int(i), {node, int(owner.windows.size())});
        owner.windows.push_back(entry);
    }
}

zoWallViewport zoServerSetup::viewportOf(const zoHPCRenderSetup::Picture& picture) const
{
    zoWallViewport viewport;
    viewport.area = picture.area;
    viewport.tile = picture.projection;
    viewport.wall = picture.wall;
    viewport.plane = {picture.projection, toPoint(picture.plane.lowerLeft), toPoint(picture.plane.lowerRight),
                      toPoint(picture.plane.upperRight)};
    viewport.eye = picture.eye.isEmpty() ? QStringLiteral("mono") : picture.eye;
    viewport.eyeSeparation = picture.eyeSeparation;
    viewport.rightEyeOffset = picture.rightEyeOffset;
    viewport.flipX = picture.flipX;
    viewport.flipY = picture.flipY;
    viewport.edges = {picture.edges.left, picture.edges.right, picture.edges.top, picture.edges.bottom};
    viewport.row = picture.cell.row;
    viewport.column = picture.cell.column;
    viewport.rows = picture.cell.rows;
    viewport.columns = picture.cell.columns;
    return viewport;
}

void zoServerSetup::readViewports()
{
    const std::vector<zoHPCRenderSetup::Picture>& pictures = m_render->pictures();
    const zoWallArrangement arrangement(*m_render);
    const zoWallNeighbourhood neighbourhood(*m_render);
    const auto nodeName = [&](int picture) {
        return picture < 0
                   ? QString()
                   : m_render->layout().nodes()[std::size_t(pictures[std::size_t(picture)].node)].name;
    };
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const auto found = m_windows.constFind(pictures[i].window);
        if (found == m_windows.constEnd())
            continue;
        zoWallViewport viewport = viewportOf(pictures[i]);
        viewport.number = int(i);
        viewport.place = arrangement.place(int(i));
        const zoWallNeighbourhood::Sides near = neighbourhood.of(int(i));
        viewport.neighbours = {nodeName(near.left), nodeName(near.right), nodeName(near.above),
                               nodeName(near.below)};
        zoWallWindow& window = m_setup.nodes[std::size_t(found->first)].windows[std::size_t(found->second)];
        if (window.viewports.empty()) {
            window.title = window.title + QStringLiteral(": ") + viewport.tile;
            // The whole window, of which this is a part.
            const QSizeF size(viewport.place.width() / viewport.area.width(),
                              viewport.place.height() / viewport.area.height());
            window.place = QRectF(viewport.place.topLeft() - QPointF(viewport.area.left() * size.width(),
                                                                     viewport.area.top() * size.height()),
                                  size);
        }
        window.viewports.push_back(viewport);
    }
    m_setup.size = arrangement.size();
    for (const zoWallArrangement::Wall& wall : arrangement.walls())
        m_setup.walls.push_back({wall.name, toPoint(wall.plane.lowerLeft), toPoint(wall.plane.lowerRight),
                                 toPoint(wall.plane.upperRight)});
}

void zoServerSetup::readNotes()
{
    for (const zoHPCRenderSetup::LeftOut& leftOut : m_render->leftOut())
        m_setup.notes.append(leftOut.text);
}

extern "C" Q_DECL_EXPORT bool zoReadWallSetupEntry(const QString& document, double pixelPitch,
                                                   zoWallSetup& setup, QString& reason)
{
    return zoServerSetup::read(document, pixelPitch, setup, reason);
}

extern "C" Q_DECL_EXPORT bool zoWriteCheckSceneEntry(const QString& document, double pixelPitch,
                                                     const QString& content, QByteArray& scene,
                                                     QString& reason)
{
    zoWallSetup setup;
    if (!zoServerSetup::read(document, pixelPitch, setup, reason))
        return false;
    scene = zoCheckScene::of(setup, content == QLatin1String("test-image") ? zoShowContent::TestImage
                                                                           : zoShowContent::Tiles);
    return true;
}
