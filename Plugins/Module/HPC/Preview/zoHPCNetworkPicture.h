#pragma once

#include "zoHPCPicture.h"
#include "zoHPCPictureStyle.h"

#include <QCoreApplication>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <memory>
#include <vector>

class QFont;
class zoHPCLayout;
class zoHPCTreeItem;

// The networks of a cluster as boxes that hold their nodes; the networks that a gateway forwards to hang beside it.
// What drives a display, does not render or is disabled is told by colour, mark and legend.
class zoHPCNetworkPicture final : public zoHPCPicture
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCNetworkPicture)

public:
    zoHPCNetworkPicture();
    ~zoHPCNetworkPicture() override;

    // Reads what there is to draw; no item is kept.
    void setLayout(const zoHPCLayout& layout);

    // With letters of their natural size.
    QSizeF naturalSize() const;

    void fit(const QRectF& area) override;
    bool isLarge() const override;
    bool isReadable(const QRectF& area) const override;
    void paint(QPainter& painter, const QRectF& area, const QPalette& palette, Detail detail) const override;

private:
    // Networks in networks are drawn this deep.
    static constexpr int Deepest = 40;

    struct Network;
    struct Node
    {
        QString name;
        bool isEnabled = true;
        bool isDisplay = false;
        bool isRender = true;
        std::vector<std::unique_ptr<Network>> networks; // that it forwards to
        int hiddenBelow = 0;                            // nodes too deep to be drawn
        QRectF cell;                                    // in the network
    };
    struct Network
    {
        QString title;
        QString details;
        bool isEnabled = true;
        std::vector<Node> nodes;
        QPointF origin; // in what it is part of
        QSizeF size;
    };
    using Networks = std::vector<std::unique_ptr<Network>>;

    struct Reader;
    struct Flow;

    void arrange();
    void place(Network& network) const;
    QSizeF placeGateway(Node& gateway, const QPointF& corner) const;
    void paintNetwork(QPainter& painter, const zoHPCPictureStyle& style, const Network& network) const;
    // The same without words.
    void paintCrowd(QPainter& painter, const zoHPCPictureStyle& style, const Network& network) const;
    void paintNode(QPainter& painter, const zoHPCPictureStyle& style, const Node& node) const;
    void paintLegend(QPainter& painter, const zoHPCPictureStyle& style) const;
    static QFont font(bool isBold = false);

    Networks m_networks;
    int m_nodeCount = 0;
    bool m_isCrowded = false;
    double m_cellWidth = 0.0;
    QSizeF m_size;
    double m_scale = 1.0;
    QPointF m_offset;
};
