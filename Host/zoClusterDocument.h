#pragma once

#include <zoClusterTags.h>

#include <QString>

#include <vector>

// What a cluster service needs to know of a configuration document: its compute nodes. Reads elements as the
// host tree of the module does, so that both form the same ids.
class zoClusterDocument final
{
public:
    struct Node
    {
        QString id;       // the host name; later nodes of the same name get "_2", "_3", ...
        QString hostName; // may be empty
        int servicePort = zoClusterTags::DefaultServicePort;
        bool enabled = true; // itself and everything above it

        bool operator==(const Node& other) const
        {
            return id == other.id && hostName == other.hostName && servicePort == other.servicePort &&
                   enabled == other.enabled;
        }
    };

    // False, with a reason that names line and column, and no nodes when the text is not well-formed.
    bool parse(const QString& text, QString& reason);

    // All nodes in document order, forwarded and disabled ones included.
    const std::vector<Node>& nodes() const { return m_nodes; }
    // The nodes that a session runs on: enabled, and with a host name to reach them by.
    std::vector<Node> enabledNodes() const;

private:
    std::vector<Node> m_nodes;
};
