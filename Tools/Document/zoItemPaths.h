#pragma once

#include <QCoreApplication>
#include <QDomElement>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

// The items of a configuration document by their paths: what get, set, diff and merge call them.
//
//   master, network[2], node[gpu01], projection[Wall], projection[Wall row:1 col:2]
//   display[1], display[1]/window[2], display[1]/window[2]/viewport[1]
//
// An attribute follows behind a slash: "node[gpu01]/enabled", "cluster/booking". Networks, displays, windows and
// viewports are counted from 1 in the order of the document, networks behind gateways with the others; nodes go by
// their id (their host name, "gpu01_2" for a second one), projections by their name. People may leave out what is
// not needed to tell an item from others ("gpu01/enabled", "Wall/distance", "window[2]/screen"), number nodes and
// projections, name a network by its description, and take all with [*].
class zoItemPaths final
{
    Q_DECLARE_TR_FUNCTIONS(zoItemPaths)

public:
    struct Item
    {
        QString path;
        QString kind; // tag of the element
        QString name; // id of a node, name of a projection, description of a network
        QDomElement element;
        int parent = 0;          // index of the item above; the root's own
        int end = 0;             // index behind the last item below it
        int place = 0;           // of a projection: its row among those below the same item
        bool isComputed = false; // a tile or plane that its projection generates
    };

    struct Target
    {
        std::vector<int> items; // indices
        QString attribute;      // empty for the items themselves
    };

    // Of the root element of a document, which must live as long, or until the paths leave it.
    explicit zoItemPaths(const QDomElement& root);

    // In the order of the document; the first one is the root.
    const std::vector<Item>& items() const { return m_items; }
    const Item& item(int index) const { return m_items[std::size_t(index)]; }
    // Its path, after changes of names as well.
    const QString& pathOf(int index);
    // By its whole path; -1 when there is none. Before names change.
    int indexOf(const QString& path) const { return m_byPath.value(path, -1); }

    // What a path stands for; false with the reason when nothing or no single thing without [*].
    bool find(const QString& path, Target& target, QString& reason);

    // To be called when the name of an item's element has changed, or the description of a network.
    void rename(int index);
    // After the last change: paths stay, elements are null from then on.
    void leaveDocument();

    // Attributes that an element of the kind may have, in the order of documents; a projection's by its type.
    static QStringList attributesOf(const QDomElement& element);

    // The paths that items have.
    static QString master() { return QStringLiteral("master"); }
    static QString network(int number);
    static QString node(const QString& id);
    static QString projection(const QString& name);
    static QString display(int number);
    static QString window(int display, int number);
    static QString viewport(int display, int window, int number);
    static QString attribute(const QString& item, const QString& name);

private:
    struct Step
    {
        QString kind; // empty for a bare name
        QString key;
        bool hasKey = false;
        bool isAttribute = false; // may be, too: the last one, without a key
    };

    // Below one item.
    struct Counts
    {
        int projections = 0;
        int displays = 0;
        int windows = 0;
        int viewports = 0;
    };

    void add(const QDomElement& element, int parent, Counts& counts);
    void nameItems();
    void makeIndex();
    // After names have changed.
    void refresh();
    bool isFresh(const std::vector<Step>& steps) const;
    static bool readSteps(const QString& path, std::vector<Step>& steps);
    // All that the kind of a step may stand for, in order; those below an item are in a row there.
    const std::vector<int>& candidatesOf(const Step& step) const;
    // Numbers count in each of the scopes.
    std::vector<int> chosen(const std::vector<int>& scopes, const Step& step) const;
    std::vector<int> chosenBelow(int scope, const Step& step) const;
    bool isAttribute(const std::vector<int>& scopes, const QString& word) const;
    QString missing(const Step& step, const std::vector<int>& scopes);
    QString meant(const Step& step, const std::vector<int>& scopes);

    std::vector<Item> m_items;
    QHash<QString, int> m_byPath;
    // Made when the first path is looked for; indices in order.
    bool m_hasKinds = false;
    bool m_hasNames = false;
    QHash<QString, std::vector<int>> m_ofKind;
    std::vector<int> m_named; // nodes and projections
    QHash<QString, std::vector<int>> m_byName;
    // Names that have changed since, and those that they became, without their numbers: "gpu01_2" may be "gpu01" now.
    QSet<QString> m_stale;
    int m_guesses = 0;
};
