#pragma once

#include <QCoreApplication>
#include <QDomElement>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

class zoComparedDocument;
class zoDifferences;

// What differs between the displays of two configurations: their windows and viewports.
class zoDisplayComparison final
{
    Q_DECLARE_TR_FUNCTIONS(zoDisplayComparison)

public:
    // Differences are added to the list, which is not owned. What happened to names of nodes (the new one by the
    // former one) was told already.
    zoDisplayComparison(zoDifferences& differences, const QHash<QString, QString>& renamedNodes)
        : m_differences(differences), m_renamedNodes(renamedNodes)
    {
    }

    void compare(const zoComparedDocument& before, const zoComparedDocument& after);

private:
    struct Window
    {
        QString key; // what it shows
        QString label;
        int display;
        QString path;
        QStringList viewports; // paths
        QDomElement element;
    };
    using Windows = std::vector<Window>;

    static Windows windowsOf(const zoComparedDocument& document);
    static Window windowOf(const QDomElement& element, int display);
    void compareDisplays(const zoComparedDocument& before, const zoComparedDocument& after);
    bool isSameNode(const QDomElement& before, const QDomElement& after) const;
    static QString placeOf(const Window& window, const QHash<QString, QString>& renamedNodes);
    void compareWindows(const Windows& before, const Windows& after);
    void compareWindow(const Window& before, const Window& after);
    void addRemovedWindows(const Windows& before, const QHash<QString, std::vector<std::size_t>>& vacated);
    // A window at the same place that shows something else.
    void compareContent(const Window& before, const Window& after);
    void compareViewports(const Window& before, const Window& after);

    zoDifferences& m_differences; // not owned
    const QHash<QString, QString> m_renamedNodes;
};
