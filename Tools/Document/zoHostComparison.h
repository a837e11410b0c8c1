#pragma once

#include <QCoreApplication>
#include <QDomElement>
#include <QHash>
#include <QString>
#include <QStringList>

class zoDifferences;

// What differs between the host trees of two configurations: networks, nodes and their options.
class zoHostComparison final
{
    Q_DECLARE_TR_FUNCTIONS(zoHostComparison)

public:
    // Differences are added to the list, which is not owned.
    explicit zoHostComparison(zoDifferences& differences) : m_differences(differences) {}

    // Of two root elements.
    void compare(const QDomElement& before, const QDomElement& after);

private:
    // A network or node with the place where it hangs.
    struct Entry
    {
        QDomElement element;
        QString parent; // key of the network or gateway above
        QString label;
    };
    struct HostList
    {
        QStringList networks; // keys in order
        QStringList nodes;
        QHash<QString, Entry> entries;
        QHash<QString, QStringList> nodesOfNetwork;

        // Where the network or gateway is: its label.
        QString placeLabel(const QString& key) const;
        QStringList names(const QStringList& keys) const;
    };

    static HostList hostsOf(const QDomElement& master);
    void compareNetworks(const HostList& before, const HostList& after);
    // The nodes below each network or gateway that the other side lacks.
    void addMissingNodes(const HostList& list, const HostList& other, bool isAdded);
    void compareNodes(const HostList& before, const HostList& after);
    void compareOrder(const HostList& before, const HostList& after);
    void compareOptions(const QString& label, const QDomElement& before, const QDomElement& after);
    // Whether the option is a switch that was turned.
    bool compareSwitch(const QString& option, const QString& label, const QString& before,
                       const QString& after);

    zoDifferences& m_differences; // not owned
};
