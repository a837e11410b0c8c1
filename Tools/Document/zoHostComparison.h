#pragma once

#include <QCoreApplication>
#include <QDomElement>
#include <QHash>
#include <QString>
#include <QStringList>

class zoComparedDocument;
class zoDifferences;

// What differs between the host trees of two configurations: networks, nodes and their options.
class zoHostComparison final
{
    Q_DECLARE_TR_FUNCTIONS(zoHostComparison)

public:
    // Differences are added to the list, which is not owned.
    explicit zoHostComparison(zoDifferences& differences) : m_differences(differences) {}

    // Once.
    void compare(const zoComparedDocument& before, const zoComparedDocument& after);

    // Gateways that have another name now: the new one by the former one.
    const QHash<QString, QString>& renamedNodes() const { return m_renamedNodes; }

private:
    // A network or node with the place where it hangs.
    struct Entry
    {
        QDomElement element;
        QString parent; // key of the network or gateway above
        QString label;
        QString path;
        int order; // among the networks or the nodes
    };
    struct HostList
    {
        QStringList networks; // keys in order
        QStringList nodes;
        QHash<QString, Entry> entries;
        QHash<QString, QStringList> nodesOf;    // of a network or gateway
        QHash<QString, QStringList> networksOf; // of the master or a gateway

        // Where the network or gateway is: its label and path.
        QString placeLabel(const QString& key) const;
        QString placePath(const QString& key) const;
        bool isNetwork(const QString& key) const;
        QStringList names(const QStringList& keys) const;
    };

    static HostList hostsOf(const zoComparedDocument& document);

    void pairNodes();
    void pairGateways();
    void pairNetworks();
    void pairRestOfNetworks();
    void pair(const QString& before, const QString& after);

    void compareNetworks();
    // Of networks and gateways that are on one side only, with the nodes that went or came with them.
    void addMissingNetworks(const HostList& list, const QHash<QString, QString>& partners, bool isAdded);
    // The nodes below each network or gateway that the other side lacks.
    void addMissingNodes(const HostList& list, const QHash<QString, QString>& partners, bool isAdded);
    void compareNodes();
    void addMovedNodes();
    void compareOrder();
    void compareOptions(const QString& label, const Entry& before, const Entry& after);
    // Whether the option is a switch that was turned.
    bool compareSwitch(const QString& option, const QString& label, const Entry& before, const Entry& after);

    zoDifferences& m_differences; // not owned
    HostList m_before;
    HostList m_after;
    QHash<QString, QString> m_partnerAfter;  // key after by key before; the master's is empty
    QHash<QString, QString> m_partnerBefore; // the other way round
    QHash<QString, QString> m_renamedNodes;
};
