#pragma once

#include "zoHPCDisplayGUII.h"
#include "zoHPCTreeGUIW.h"

#include <QDomDocument>
#include <QString>

// A whole configuration in the module's own trees, which are never shown: what it reads and writes is what
// the cluster window would.
class zoClusterSetup final
{
public:
    zoClusterSetup();

    // Reads a configuration file; when it holds none, prints an error and returns false.
    bool readFile(const QString& fileName);
    // Reads a document that is known to be good.
    void readDocument(QDomDocument& document);

    // The text that was read.
    const QString& source() const { return m_source; }

    zoHPCTreeGUIW& hosts() { return m_hosts; }
    zoHPCDisplayGUII& displays() { return m_displays; }

    // Everything in canonical form. A hosts file that the configuration names is not read.
    QDomDocument document();
    QString text();

    // The root element of an empty configuration document.
    static QDomElement appendRoot(QDomDocument& document);

private:
    QString m_source;
    zoHPCTreeGUIW m_hosts;
    zoHPCDisplayGUII m_displays;
};
