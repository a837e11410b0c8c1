#pragma once

#include <QCoreApplication>
#include <QDomElement>
#include <QString>

#include <vector>

class zoDifferences;

// What differs between the displays of two configurations: their windows and viewports.
class zoDisplayComparison final
{
    Q_DECLARE_TR_FUNCTIONS(zoDisplayComparison)

public:
    // Differences are added to the list, which is not owned.
    explicit zoDisplayComparison(zoDifferences& differences) : m_differences(differences) {}

    // Of two root elements.
    void compare(const QDomElement& before, const QDomElement& after);

private:
    struct Window
    {
        QString key; // what it shows
        QString label;
        int display;
        QDomElement element;
    };
    using Windows = std::vector<Window>;

    static Windows windowsOf(const QDomElement& root);
    static Window windowOf(const QDomElement& element, int display);
    void compareDisplays(const QDomElement& before, const QDomElement& after);
    void compareWindows(const Windows& before, const Windows& after);
    void compareWindow(const Window& before, const Window& after);
    // A window at the same place that shows something else.
    void compareContent(const Window& before, const Window& after);
    void compareViewports(const Window& before, const Window& after);

    zoDifferences& m_differences; // not owned
};
