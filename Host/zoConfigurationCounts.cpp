#include "zoConfigurationCounts.h"

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
        {QLatin1String("network"), networks, false},      {QLatin1String("node"), nodes, false},
        {QLatin1String("projection"), projections, true}, {QLatin1String("display"), displays, true},
        {QLatin1String("window"), windows, false},        {QLatin1String("viewport"), viewports, false},
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
