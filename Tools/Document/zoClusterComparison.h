#pragma once

#include <QCoreApplication>
#include <QDomDocument>
#include <QDomElement>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

// What differs between two configuration documents in canonical form, told as a person sees a wall: nodes,
// tiles, windows, overlaps.
class zoClusterComparison final
{
    Q_DECLARE_TR_FUNCTIONS(zoClusterComparison)

public:
    struct Difference
    {
        QString kind; // a stable word such as "node-added"
        QString text;
    };

    zoClusterComparison(const QDomDocument& before, const QDomDocument& after);

    const std::vector<Difference>& differences() const { return m_differences; }

private:
    // A network or node with the place where it hangs.
    struct HostEntry
    {
        QDomElement element;
        QString parent; // key of the network or gateway above
        QString label;
    };
    struct HostList
    {
        QStringList networks; // keys in order
        QStringList nodes;
        QHash<QString, HostEntry> entries;
        QHash<QString, QStringList> nodesOfNetwork;
    };
    struct Named
    {
        QString key; // the name, numbered when it is not the first of its kind
        QDomElement element;
    };
    struct Window
    {
        QString key; // what it shows
        QString label;
        int display;
        QDomElement element;
    };

    static HostList hostsOf(const QDomElement& master);
    static std::vector<Named> projectionsOf(const QDomElement& root);
    static std::vector<Window> windowsOf(const QDomElement& root);

    void compareHosts(const QDomElement& before, const QDomElement& after);
    void compareNodeLists(const HostList& before, const HostList& after);
    void compareOptions(const QString& label, const QDomElement& before, const QDomElement& after);
    void compareProjections(const QDomElement& before, const QDomElement& after);
    void compareProjection(const QDomElement& before, const QDomElement& after);
    bool comparePlanes(const QString& label, const QDomElement& before, const QDomElement& after);
    void compareDisplays(const QDomElement& before, const QDomElement& after);
    void compareWindows(const QDomElement& before, const QDomElement& after);
    void compareWindow(const Window& before, const Window& after);
    void compareViewports(const Window& before, const Window& after);
    // Attributes of the kinds of the display section in groups such as width and height.
    void compareAttributes(const QString& kind, const QString& label, const QDomElement& before,
                           const QDomElement& after, const QStringList& skipped);
    void add(const QString& kind, const QString& text);

    std::vector<Difference> m_differences;
};
