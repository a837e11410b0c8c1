#include "zoHPCNetworkPicture.h"

#include "zoHPCLayout.h"
#include "zoHPCOption.h"
#include "zoHPCTreeItem.h"

#include <QFont>
#include <QFontMetricsF>
#include <QHash>
#include <QPainter>
#include <QPalette>
#include <QSet>
#include <QVector>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
// Units of the sheet, which are those of the picture at its natural size.
constexpr int s_letters = 12;
constexpr int s_smallestLetters = 9;
constexpr double s_cellHeight = 22.0;
constexpr double s_gap = 8.0;
constexpr double s_title = 38.0;
constexpr double s_wire = 30.0;
constexpr double s_legend = 34.0;
constexpr double s_mark = 10.0;
// More rows of the tree, networks and nodes, are drawn without words: a file of all of them takes a gigabyte.
constexpr int s_mostWords = 50000;
} // namespace

// Reads rows of the host tree.
struct zoHPCNetworkPicture::Reader
{
    QHash<const zoHPCTreeItem*, QString> names; // unique ones
    QSet<const zoHPCTreeItem*> displays;
    int networks = 0;
    int nodes = 0;
    double widest = 0.0;

    explicit Reader(const zoHPCLayout& layout)
    {
        for (const zoHPCLayout::Node& node : layout.nodes())
            names.insert(node.item, node.name);
        for (const zoHPCLayout::Window& window : layout.windows()) {
            if (window.nodeIndex != None)
                displays.insert(layout.nodes()[static_cast<size_t>(window.nodeIndex)].item);
        }
    }

    static constexpr int None = zoHPCLayout::None;

    Networks read(const zoHPCTreeItem& above, bool isEnabled, int depth)
    {
        Networks result;
        for (const zoHPCTreeItem* item : above.items()) {
            if (!item->isNetwork())
                continue;
            auto network = std::make_unique<Network>();
            ++networks;
            const QString description = item->getOption(zoHPCOption::Description);
            network->title = description.isEmpty() ? tr("Network %1").arg(networks)
                                                   : tr("Network %1: %2").arg(networks).arg(description);
            network->isEnabled = isEnabled && item->isEnabled();
            network->details = details(*item);
            for (const zoHPCTreeItem* child : item->items()) {
                if (child->isNode())
                    network->nodes.push_back(readNode(*child, network->isEnabled, depth));
            }
            result.push_back(std::move(network));
        }
        return result;
    }

    Node readNode(const zoHPCTreeItem& item, bool isEnabled, int depth)
    {
        Node node;
        ++nodes;
        node.name = names.value(&item, item.hostName());
        node.isEnabled = isEnabled && item.isEnabled();
        node.isDisplay = displays.contains(&item);
        node.isRender = item.isRenderNode();
        if (depth < Deepest) {
            node.networks = read(item, node.isEnabled, depth + 1);
        } else {
            std::vector<zoHPCTreeItem*> all;
            const_cast<zoHPCTreeItem&>(item).getAllSubItems(all);
            node.hiddenBelow =
                int(std::count_if(all.begin() + 1, all.end(), [](auto* i) { return i->isNode(); }));
        }
        if (node.hiddenBelow > 0)
            node.name = tr("%1 (nodes behind: %2)").arg(node.name, QString::number(node.hiddenBelow));
        widest = std::max(widest, QFontMetricsF(font()).horizontalAdvance(node.name));
        return node;
    }

    static QString details(const zoHPCTreeItem& network)
    {
        QStringList words;
        const QString type = network.getOption(zoHPCOption::NetworkType);
        const QString speed = network.getOption(zoHPCOption::LinkSpeed);
        words << (network.childCount() == 1 ? tr("1 node") : tr("%1 nodes").arg(network.childCount()));
        if (!type.isEmpty())
            words << type;
        if (!speed.isEmpty())
            words << speed;
        if (network.isEncrypted())
            words << tr("encrypted");
        if (!network.isEnabled())
            words << tr("disabled");
        return words.join(QLatin1String(", "));
    }
};

// Places boxes in rows, from the left and from the top, as wide as makes the whole not too long or too high.
struct zoHPCNetworkPicture::Flow
{
    Flow(double area, double widest) : m_limit(std::max(widest, std::sqrt(area * Aspect))) {}

    QPointF add(const QSizeF& box)
    {
        if (m_x > 0.0 && m_x + box.width() > m_limit) {
            m_x = 0.0;
            m_y += m_row + s_gap;
            m_row = 0.0;
        }
        const QPointF corner(m_x, m_y);
        m_x += box.width() + s_gap;
        m_row = std::max(m_row, box.height());
        size = QSizeF(std::max(size.width(), m_x - s_gap), m_y + m_row);
        return corner;
    }

    QSizeF size = QSizeF(0.0, 0.0);

private:
    static constexpr double Aspect = 1.6;
    double m_limit;
    double m_x = 0.0;
    double m_y = 0.0;
    double m_row = 0.0;
};

zoHPCNetworkPicture::zoHPCNetworkPicture() = default;
zoHPCNetworkPicture::~zoHPCNetworkPicture() = default;

void zoHPCNetworkPicture::setLayout(const zoHPCLayout& layout)
{
    m_networks.clear();
    m_nodeCount = 0;
    if (layout.master() != nullptr) {
        Reader reader(layout);
        m_networks = reader.read(*layout.master(), layout.master()->isEnabled(), 0);
        m_nodeCount = reader.nodes;
        m_isCrowded = reader.nodes + reader.networks > s_mostWords;
        m_cellWidth = std::ceil(reader.widest) + 2 * s_gap + 2 * s_mark;
    }
    arrange();
}

void zoHPCNetworkPicture::arrange()
{
    double area = 0.0;
    double widest = 0.0;
    for (const auto& network : m_networks) {
        place(*network);
        area += (network->size.width() + s_gap) * (network->size.height() + s_gap);
        widest = std::max(widest, network->size.width());
    }
    Flow flow(area, widest);
    for (const auto& network : m_networks)
        network->origin = flow.add(network->size);
    const double legend = m_networks.empty() ? 0.0 : 4 * 170.0;
    m_size = QSizeF(std::max(flow.size.width(), legend), flow.size.height() + s_legend);
}

void zoHPCNetworkPicture::place(Network& network) const
{
    // The nodes without anything behind them first, as a grid.
    int plain = 0;
    double area = 0.0;
    double widest = 0.0;
    std::vector<QSizeF> gateways;
    for (Node& node : network.nodes) {
        if (node.networks.empty()) {
            ++plain;
            continue;
        }
        gateways.push_back(placeGateway(node, QPointF()));
        area += gateways.back().width() * gateways.back().height();
        widest = std::max(widest, gateways.back().width());
    }
    constexpr double GridAspect = 2.0;
    const int columns = std::max(
        1,
        std::min(plain, int(std::lround(std::sqrt(plain * GridAspect * s_cellHeight / m_cellWidth) + 0.3))));
    const int rows = (plain + columns - 1) / columns;
    const QSizeF grid(columns * (m_cellWidth + s_gap) - s_gap, rows * (s_cellHeight + s_gap) - s_gap);
    QFont bold = font(true);
    const double title = std::max(QFontMetricsF(bold).horizontalAdvance(network.title),
                                  QFontMetricsF(font()).horizontalAdvance(network.details));
    Flow flow(area + (plain > 0 ? grid.width() * grid.height() : 0.0),
              std::max({widest, plain > 0 ? grid.width() : 0.0, std::ceil(title)}));
    const QPointF inside(s_gap, s_title);
    const QPointF gridCorner = plain > 0 ? inside + flow.add(grid) : inside;
    int next = 0;
    std::size_t gateway = 0;
    for (Node& node : network.nodes) {
        if (node.networks.empty()) {
            const int row = next / columns;
            node.cell = QRectF(
                gridCorner + QPointF((next % columns) * (m_cellWidth + s_gap), row * (s_cellHeight + s_gap)),
                QSizeF(m_cellWidth, s_cellHeight));
            ++next;
        } else {
            placeGateway(node, inside + flow.add(gateways[gateway++]));
        }
    }
    network.size = QSizeF(std::max(flow.size.width(), std::ceil(title) + 1.0) + 2 * s_gap,
                          flow.size.height() + s_title + s_gap);
}

QSizeF zoHPCNetworkPicture::placeGateway(Node& gateway, const QPointF& corner) const
{
    const double left = m_cellWidth + s_wire;
    double y = 0.0;
    double width = left;
    for (const auto& network : gateway.networks) {
        if (network->size.isEmpty())
            place(*network);
        network->origin = corner + QPointF(left, y);
        y += network->size.height() + s_gap;
        width = std::max(width, left + network->size.width());
    }
    const double height = std::max(y - s_gap, s_cellHeight);
    gateway.cell = QRectF(corner + QPointF(0.0, std::min(s_title, (height - s_cellHeight) / 2.0)),
                          QSizeF(m_cellWidth, s_cellHeight));
    return {width, height};
}

QSizeF zoHPCNetworkPicture::naturalSize() const
{
    return m_size + QSizeF(2 * s_gap, 2 * s_gap);
}

void zoHPCNetworkPicture::fit(const QRectF& area)
{
    if (area.isEmpty())
        return;
    const QSizeF natural = naturalSize();
    m_scale = std::min(1.6, std::min(area.width() / natural.width(), area.height() / natural.height()));
    m_offset = area.center() - m_scale * QPointF(m_size.width() / 2.0, m_size.height() / 2.0);
}

bool zoHPCNetworkPicture::isLarge() const
{
    constexpr int ManyNodes = 2000;
    return m_nodeCount > ManyNodes;
}

bool zoHPCNetworkPicture::isReadable(const QRectF& area) const
{
    Q_UNUSED(area)
    return m_scale * s_letters >= s_smallestLetters;
}

void zoHPCNetworkPicture::paint(QPainter& painter, const QRectF& area, const QPalette& palette,
                                Detail detail) const
{
    const zoHPCPictureStyle style(palette);
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    painter.fillRect(area, style.background);
    painter.setRenderHint(QPainter::Antialiasing, detail == Detail::Full);
    if (m_networks.empty()) {
        painter.setPen(style.faintText);
        painter.setFont(style.font);
        painter.drawText(area, Qt::AlignCenter, tr("No networks"));
        painter.restore();
        return;
    }
    painter.translate(m_offset);
    painter.scale(m_scale, m_scale);
    for (const auto& network : m_networks)
        paintNetwork(painter, style, *network);
    paintLegend(painter, style);
    painter.restore();
}

void zoHPCNetworkPicture::paintNetwork(QPainter& painter, const zoHPCPictureStyle& style,
                                       const Network& network) const
{
    painter.save();
    painter.translate(network.origin);
    painter.setPen(QPen(network.isEnabled ? style.line : style.grid, 1.2,
                        network.isEnabled ? Qt::SolidLine : Qt::DashLine));
    painter.setBrush(style.panel);
    painter.drawRoundedRect(QRectF(QPointF(), network.size), 5.0, 5.0);
    if (m_isCrowded) {
        paintCrowd(painter, style, network);
        painter.restore();
        return;
    }
    const QRectF line(s_gap, 4.0, network.size.width() - 2 * s_gap, 16.0);
    painter.setPen(network.isEnabled ? style.text : style.faintText);
    painter.setFont(font(true));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, network.title);
    painter.setPen(style.faintText);
    painter.setFont(font());
    painter.drawText(line.translated(0.0, 15.0), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     network.details);
    for (const Node& node : network.nodes)
        paintNode(painter, style, node);
    painter.restore();
}

void zoHPCNetworkPicture::paintCrowd(QPainter& painter, const zoHPCPictureStyle& style,
                                     const Network& network) const
{
    std::array<QVector<QRectF>, 3> cells; // disabled, enabled, of displays
    for (const Node& node : network.nodes) {
        if (node.networks.empty())
            cells[node.isDisplay ? 2 : node.isEnabled ? 1 : 0] << node.cell;
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (cells[i].isEmpty())
            continue;
        painter.setPen(QPen(i == 0 ? style.grid : style.line, 1.0, i == 0 ? Qt::DashLine : Qt::SolidLine));
        painter.setBrush(i == 2 ? QBrush(zoHPCPictureStyle::withAlpha(style.bothEyes, 0.30))
                                : QBrush(style.background));
        painter.drawRects(cells[i]);
    }
    for (const Node& node : network.nodes) {
        if (!node.networks.empty())
            paintNode(painter, style, node);
    }
}

void zoHPCNetworkPicture::paintNode(QPainter& painter, const zoHPCPictureStyle& style, const Node& node) const
{
    painter.setPen(
        QPen(node.isEnabled ? style.line : style.grid, 1.0, node.isEnabled ? Qt::SolidLine : Qt::DashLine));
    painter.setBrush(style.background);
    painter.drawRect(node.cell);
    if (node.isDisplay)
        painter.fillRect(node.cell, zoHPCPictureStyle::withAlpha(style.bothEyes, 0.30));
    // A node that does not render is struck at its edge, so that names stay free.
    if (!node.isRender) {
        painter.setPen(QPen(style.rightEye, 2.0));
        painter.drawLine(node.cell.topLeft() + QPointF(4.0, 4.0),
                         node.cell.bottomLeft() + QPointF(10.0, -4.0));
    }
    painter.setFont(font());
    painter.setPen(node.isEnabled ? style.text : style.faintText);
    if (!m_isCrowded || node.networks.empty())
        painter.drawText(node.cell, Qt::AlignCenter | Qt::TextSingleLine, node.name);

    painter.setPen(QPen(style.fadeOut, 1.6));
    for (const auto& network : node.networks) {
        const QPointF from(node.cell.right(), node.cell.center().y());
        const QPointF to(network->origin.x(),
                         network->origin.y() + std::min(s_title, network->size.height() / 2.0));
        const double middle = (from.x() + to.x()) / 2.0;
        painter.drawPolyline(QPolygonF({from, {middle, from.y()}, {middle, to.y()}, to}));
        paintNetwork(painter, style, *network);
        painter.setPen(QPen(style.fadeOut, 1.6));
    }
}

void zoHPCNetworkPicture::paintLegend(QPainter& painter, const zoHPCPictureStyle& style) const
{
    Node nodes[3];
    nodes[0].name = tr("drives a display");
    nodes[0].isDisplay = true;
    nodes[1].name = tr("does not render");
    nodes[1].isRender = false;
    nodes[2].name = tr("disabled");
    nodes[2].isEnabled = false;
    for (int i = 0; i < 3; ++i) {
        nodes[i].cell = QRectF(i * 170.0, m_size.height() - s_cellHeight, 160.0, s_cellHeight);
        paintNode(painter, style, nodes[i]);
    }
    const double y = m_size.height() - s_cellHeight / 2.0;
    painter.setPen(QPen(style.fadeOut, 1.6));
    painter.drawLine(QPointF(510.0, y), QPointF(510.0 + s_wire, y));
    painter.setPen(style.text);
    painter.drawText(QRectF(516.0 + s_wire, y - s_cellHeight / 2.0, 140.0, s_cellHeight),
                     Qt::AlignLeft | Qt::AlignVCenter, tr("gateway to"));
}

QFont zoHPCNetworkPicture::font(bool isBold)
{
    QFont result;
    result.setPixelSize(s_letters);
    result.setBold(isBold);
    return result;
}
