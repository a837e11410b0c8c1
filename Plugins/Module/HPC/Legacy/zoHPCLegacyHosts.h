#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

class zoHPCDocumentWriter;
class zoHPCLegacyParameters;
class zoHPCLegacyRemarks;

// Turns the host lists of a legacy configuration into the nodes of a network, and keeps the hosts in the order
// in which its windows take them.
class zoHPCLegacyHosts final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCConfigConverter)

public:
    // Both outlive this.
    zoHPCLegacyHosts(const zoHPCLegacyParameters& parameters, zoHPCLegacyRemarks& remarks);

    // Adds to the hosts of earlier calls.
    void convert();
    // The nodes of the last call, into the element of the network that the writer has open.
    void writeNodes(zoHPCDocumentWriter& writer) const;

    int count() const { return int(m_names.size()); }
    // What a window gets; a window without a host has no node and lies at 0.
    QString name(int index) const { return m_names.value(index); }
    int xPosition(int index) const { return position(m_xPositions, index); }
    int yPosition(int index) const { return position(m_yPositions, index); }

    // Remarks on what hosts and this many windows have of each other.
    void addRemarks(int windows);

private:
    // One after the other, each before those that it forwards to: as elements of a document a million of them take
    // more than a gigabyte.
    struct Node
    {
        QString name;
        int depth; // gateways above it
        bool isGateway;
    };

    void addHosts(int depth, const QString& hosts);
    void addForwarding(int depth, const QString& hosts, int forwards);
    void addEntry(int depth, const QString& entry);
    void addHost(int depth, const QString& name, int xPosition, int yPosition);
    void addNode(int depth, const QString& name, bool isGateway);
    void setEntry(int entry);
    void numberEqualNames();
    static int position(const std::vector<int>& positions, int index);

    const zoHPCLegacyParameters& m_parameters;
    zoHPCLegacyRemarks& m_remarks;
    std::vector<Node> m_nodes;
    QStringList m_names;
    std::vector<int> m_xPositions; // of plain hosts only
    std::vector<int> m_yPositions; // of plain hosts only
    int m_entry = 0;               // that is being read
    std::vector<int> m_entries;    // of the names
    QString m_forwardsParameter;   // with the first forwarding host
};
