#include "zoConfigurationCounts.h"

#include <zoClusterTags.h>

#include <QXmlStreamReader>

zoConfigurationCounts::zoConfigurationCounts(const QString& document)
{
    struct Tag
    {
        QLatin1String name;
        int& count;
        bool onlyBelowRoot;
    };
    const Tag tags[] = {
        {zoClusterTags::Network, networks, false},      {zoClusterTags::Node, nodes, false},
        {zoClusterTags::Projection, projections, true}, {zoClusterTags::Display, displays, true},
        {zoClusterTags::Window, windows, false},        {zoClusterTags::Viewport, viewports, false},
    };
    constexpr int BelowRoot = 2;

    QXmlStreamReader xml(document);
    xml.setNamespaceProcessing(false);
    int depth = 0;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            ++depth;
            for (const Tag& tag : tags) {
                if (xml.qualifiedName() == tag.name && (!tag.onlyBelowRoot || depth == BelowRoot))
                    ++tag.count;
            }
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        default:
            break;
        }
    }
}
