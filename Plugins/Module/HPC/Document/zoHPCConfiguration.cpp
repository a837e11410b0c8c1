#include "zoHPCConfiguration.h"

#include "zoHPCDocumentWriter.h"
#include "zoText.h"

#include <QDomDocument>
#include <QStringView>

#include <zoClusterTags.h>

#include <algorithm>

namespace
{
// A document of the tree section that `writeHosts` writes and the displays as they are.
template <class WriteHosts>
QString write(const zoHPCDisplaySetup& displays, zoHPCDocumentText::Tiles tiles,
              zoHPCDocumentWriter::Form form, const WriteHosts& writeHosts)
{
    zoHPCDocumentWriter writer(form);
    writer.openElement(zoClusterTags::Cluster);
    writer.addAttribute(zoClusterTags::VersionAttribute, QString::number(zoClusterTags::Version));
    writeHosts(writer);
    zoHPCDocumentText::appendDisplays(displays, tiles, writer);
    writer.closeElement();
    return writer.takeText();
}

// Where the display section begins: with the first element of its own below the root.
int displaysIn(const QString& text)
{
    int start = text.size();
    for (const QLatin1String tag : {zoClusterTags::Projection, zoClusterTags::Display}) {
        const int found = text.indexOf(zoText("\n <") + tag);
        if (found >= 0)
            start = std::min(start, found);
    }
    return start;
}
} // namespace

void zoHPCConfiguration::read(QDomDocument& document, zoHPCDisplaySetup::Tiles tiles)
{
    m_hosts.loadFromXML(document);
    m_displays.loadFromXML(document, tiles);
}

bool zoHPCConfiguration::readText(const QString& text)
{
    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    if (!zoHPCDocumentText::parse(text, document, refusal) || !isConfiguration(document))
        return false;
    read(document);
    return true;
}

QString zoHPCConfiguration::text() const
{
    return textAsIs(m_hosts, m_displays);
}

QString zoHPCConfiguration::outline(zoHPCDocumentText::Tiles tiles) const
{
    return write(m_displays, tiles, zoHPCDocumentWriter::Form::OneLine,
                 [this](zoHPCDocumentWriter& writer) { m_hosts.writeRows(writer); });
}

QDomDocument zoHPCConfiguration::document() const
{
    QDomDocument document;
    zoHPCDocumentText::parse(outline(zoHPCDocumentText::Tiles::Whole), document);
    return document;
}

QString zoHPCConfiguration::text(zoHPCHostTree& hosts, const zoHPCDisplaySetup& displays)
{
    return write(displays, zoHPCDocumentText::Tiles::Whole, zoHPCDocumentWriter::Form::Lines,
                 [&hosts](zoHPCDocumentWriter& writer) { hosts.writeSection(writer); });
}

QString zoHPCConfiguration::textAsIs(const zoHPCHostTree& hosts, const zoHPCDisplaySetup& displays)
{
    return write(displays, zoHPCDocumentText::Tiles::Whole, zoHPCDocumentWriter::Form::Lines,
                 [&hosts](zoHPCDocumentWriter& writer) { hosts.writeRows(writer); });
}

bool zoHPCConfiguration::haveSameHosts(const QString& left, const QString& right)
{
    return QStringView(left).left(displaysIn(left)) == QStringView(right).left(displaysIn(right));
}

bool zoHPCConfiguration::haveSameDisplays(const QString& left, const QString& right)
{
    return QStringView(left).mid(displaysIn(left)) == QStringView(right).mid(displaysIn(right));
}

bool zoHPCConfiguration::isConfiguration(const QDomDocument& document)
{
    const QDomElement root = document.documentElement();
    for (const QLatin1String tag :
         {zoClusterTags::Master, zoClusterTags::Projection, zoClusterTags::Display}) {
        if (!root.firstChildElement(tag).isNull())
            return true;
    }
    return false;
}
