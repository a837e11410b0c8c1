#pragma once

#include "zoHPCDisplaySetup.h"
#include "zoHPCDocumentText.h"
#include "zoHPCHostTree.h"

#include <QString>

class QDomDocument;

// A configuration without a window: a host tree and a display setup, read from one document and written as one.
// The cluster window, which has both in views, writes them through the same functions.
class zoHPCConfiguration final
{
public:
    zoHPCHostTree& hosts() { return m_hosts; }
    const zoHPCHostTree& hosts() const { return m_hosts; }
    zoHPCDisplaySetup& displays() { return m_displays; }
    const zoHPCDisplaySetup& displays() const { return m_displays; }

    // Replaces both; each takes its section of the document, and is empty without one.
    void read(QDomDocument& document, zoHPCDisplaySetup::Tiles tiles = zoHPCDisplaySetup::Tiles::All);
    // The same from a text. False, and nothing is read or logged, when it holds no configuration.
    bool readText(const QString& text);
    // textAsIs() of both.
    QString text() const;
    // The same for readers: on one line, by default with no more of tiles than names and types.
    QString outline(zoHPCDocumentText::Tiles tiles = zoHPCDocumentText::Tiles::Outline) const;
    // textAsIs() as a document.
    QDomDocument document() const;

    // The text of a configuration. A hosts file that the tree is linked with is read first.
    static QString text(zoHPCHostTree& hosts, const zoHPCDisplaySetup& displays);
    // The text of both as they are, whatever a hosts file says by now.
    static QString textAsIs(const zoHPCHostTree& hosts, const zoHPCDisplaySetup& displays);

    // Whether two texts that this class wrote have the same tree section, and the same projections and displays.
    static bool haveSameHosts(const QString& left, const QString& right);
    static bool haveSameDisplays(const QString& left, const QString& right);

    // Whether a document has one of the sections.
    static bool isConfiguration(const QDomDocument& document);

private:
    zoHPCHostTree m_hosts;
    zoHPCDisplaySetup m_displays;
};
