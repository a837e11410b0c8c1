#pragma once

#include "zoHPCLayout.h"

#include <QString>
#include <QStringList>

#include <vector>

// The nodes of a configuration with what one asks about them, in the order of the host tree.
class zoNodeList final
{
public:
    static constexpr int None = -1;

    struct Node
    {
        QString name;          // host name
        QString unique;        // the one that windows refer to
        int network = 0;       // from 1, as everywhere; 0 outside of all
        int gateway = None;    // the nearest on the way to it, for gatewayOf()
        bool isEnabled = true; // with all above it
        bool isDisplay = false;
        bool isRender = true;
        bool isGateway = false;
    };

    explicit zoNodeList(const zoHPCLayout& layout);

    const std::vector<Node>& nodes() const { return m_nodes; }
    // Keeps those for which the claim holds.
    template <class Claim>
    void keep(Claim claim)
    {
        std::vector<Node> kept;
        for (const Node& node : m_nodes) {
            if (claim(node))
                kept.push_back(node);
        }
        m_nodes = kept;
    }
    // On the way to it, the nearest last. Not kept by each: what nodes deep in the tree have altogether is long.
    QStringList gatewaysOf(const Node& node) const;
    // The last of them; empty without one.
    QString gatewayOf(const Node& node) const;
    // Each name once.
    std::vector<QString> names() const;

private:
    struct Gateway
    {
        QString name;
        int above;
    };

    std::vector<Node> m_nodes;
    std::vector<Gateway> m_gateways;
};
