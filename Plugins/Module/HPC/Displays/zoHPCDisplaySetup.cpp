#include "zoHPCDisplaySetup.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCDocumentUpgrade.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"
#include "zoText.h"

#include <zoClusterTags.h>

#include <QDomDocument>
#include <QSet>

#include <algorithm>

zoHPCDisplaySetup::zoHPCDisplaySetup()
    : m_ownProjections(std::make_unique<QTreeWidgetItem>())
    , m_ownDisplays(std::make_unique<QTreeWidgetItem>())
    , m_projectionRoot(m_ownProjections.get())
    , m_displayRoot(m_ownDisplays.get())
{
}

zoHPCDisplaySetup::zoHPCDisplaySetup(QTreeWidgetItem* projectionRoot, QTreeWidgetItem* displayRoot)
    : m_projectionRoot(projectionRoot), m_displayRoot(displayRoot)
{
}

zoHPCDisplaySetup::~zoHPCDisplaySetup() = default;

QList<zoHPCProjectionItem*> zoHPCDisplaySetup::getProjectionItems() const
{
    return zoHPCTreeWidgetItem::subChildren<zoHPCProjectionItem>(m_projectionRoot);
}

QList<zoHPCViewportItem*> zoHPCDisplaySetup::getViewportItems() const
{
    return zoHPCTreeWidgetItem::subChildren<zoHPCViewportItem>(m_displayRoot);
}

QList<zoHPCWindowItem*> zoHPCDisplaySetup::getWindowItems() const
{
    return zoHPCTreeWidgetItem::subChildren<zoHPCWindowItem>(m_displayRoot);
}

void zoHPCDisplaySetup::saveToXML(QDomDocument& document) const
{
    QDomElement root = document.documentElement();
    if (root.isNull())
        return;
    const auto append = [&](const QTreeWidgetItem* items, const QString& tagName) {
        for (int i = 0; i < items->childCount(); ++i) {
            if (const auto* item = dynamic_cast<const zoHPCTreeWidgetItem*>(items->child(i)))
                root.appendChild(item->toXML(document, tagName));
        }
    };
    append(m_projectionRoot, zoClusterTags::Projection);
    append(m_displayRoot, zoClusterTags::Display);
}

void zoHPCDisplaySetup::loadFromXML(const QDomDocument& document, Tiles tiles)
{
    clear();
    const int version = zoHPCDocumentUpgrade::versionOf(document);
    zoHPCDisplaySetup loaded;
    // What is upgraded may need its tiles.
    loaded.read(document, version < zoClusterTags::Version ? Tiles::All : tiles);
    zoHPCDocumentUpgrade::upgrade(version, *loaded.m_projectionRoot, *loaded.m_displayRoot);
    loaded.correctProjectionViewportsAssignments();

    m_projectionRoot->addChildren(loaded.m_projectionRoot->takeChildren());
    m_displayRoot->addChildren(loaded.m_displayRoot->takeChildren());
    m_collected = loaded.m_collected;
    m_names = loaded.m_names;
    m_identifiers = loaded.m_identifiers;
}

void zoHPCDisplaySetup::setDefaultConfig()
{
    clear();
    m_displayRoot->addChild(new zoHPCDisplayItem);
}

void zoHPCDisplaySetup::clear()
{
    qDeleteAll(m_projectionRoot->takeChildren());
    qDeleteAll(m_displayRoot->takeChildren());
}

bool zoHPCDisplaySetup::correctProjectionViewportsAssignments()
{
    collectProjections();
    return linkViewports();
}

bool zoHPCDisplaySetup::correctWrongRows()
{
    return zoHPCDocumentUpgrade::correctWrongRows(*m_projectionRoot, *m_displayRoot);
}

void zoHPCDisplaySetup::collectProjections()
{
    // Most often a value has changed, and all ten thousand tiles are called what they were called.
    if (isAsCollected())
        return;
    m_collected.clear();
    m_names.clear();
    m_identifiers.clear();
    const QList<zoHPCProjectionItem*> projections = getProjectionItems();
    m_collected.reserve(std::size_t(projections.size()));
    for (const zoHPCProjectionItem* projection : projections) {
        m_collected.push_back({projection->getString(zoHPCProjectionItem::Name),
                               projection->getString(zoHPCProjectionItem::Identifier), projection->ownTiles(),
                               projection->childCount()});
        const Collected& collected = m_collected.back();
        m_names.insert(collected.identifier, collected.name);
        m_identifiers.insert(collected.name, collected.identifier);
    }
}

bool zoHPCDisplaySetup::isAsCollected() const
{
    auto before = m_collected.cbegin();
    for (int i = 0; i < m_projectionRoot->childCount(); ++i) {
        const auto* const projection = dynamic_cast<const zoHPCProjectionItem*>(m_projectionRoot->child(i));
        if (projection == nullptr || before == m_collected.cend() ||
            before->name != projection->getString(zoHPCProjectionItem::Name) ||
            before->identifier != projection->getString(zoHPCProjectionItem::Identifier) ||
            before->children != projection->childCount() || (before->children > 0 && before->ownTiles == 0) ||
            before->ownTiles != projection->ownTiles())
            return false;
        before += 1 + before->children;
    }
    return before == m_collected.cend();
}

zoHPCProjectionItem* zoHPCDisplaySetup::projectionOf(const zoHPCViewportItem& viewport) const
{
    const QString identifier = viewport.getString(zoHPCViewportItem::ProjectionIdentifier);
    if (!m_names.contains(identifier))
        return nullptr;
    zoHPCProjectionItem* result = nullptr;
    const QList<zoHPCProjectionItem*> projections = getProjectionItems();
    for (zoHPCProjectionItem* projection : projections) {
        // Of equal ones the last counts, as for names.
        if (projection->getString(zoHPCProjectionItem::Identifier) == identifier)
            result = projection;
    }
    return result;
}

bool zoHPCDisplaySetup::isShown(const zoHPCProjectionItem& projection) const
{
    const QString identifier = projection.getString(zoHPCProjectionItem::Identifier);
    const QList<zoHPCViewportItem*> viewports = getViewportItems();
    return std::any_of(viewports.cbegin(), viewports.cend(), [&](const zoHPCViewportItem* viewport) {
        return viewport->getString(zoHPCViewportItem::ProjectionIdentifier) == identifier;
    });
}

QString zoHPCDisplaySetup::getUniqueProjectionName() const
{
    QSet<QString> names;
    const QList<zoHPCProjectionItem*> projections = getProjectionItems();
    for (const zoHPCProjectionItem* projection : projections)
        names.insert(projection->getString(zoHPCProjectionItem::Name));
    for (int counter = 1;; ++counter) {
        const QString name = zoText("Projection%1").arg(counter);
        if (!names.contains(name))
            return name;
    }
}

bool zoHPCDisplaySetup::clearUnknownNodes(const std::function<bool(const QString&)>& isKnown)
{
    bool isChanged = false;
    const QList<zoHPCWindowItem*> windows = getWindowItems();
    for (zoHPCWindowItem* window : windows) {
        const QString node = window->renderNode();
        if (node.isEmpty() || isKnown(node))
            continue;
        window->setRenderNode(QString::fromLatin1(""));
        window->update();
        isChanged = true;
    }
    return isChanged;
}

QStringList zoHPCDisplaySetup::attributeOrder(const QString& tagName)
{
    if (tagName == zoClusterTags::Projection)
        return zoHPCTreeWidgetItem::attributeOrder(zoHPCProjectionItem::columns(QString()));
    if (tagName == zoClusterTags::Display)
        return zoHPCTreeWidgetItem::attributeOrder(zoHPCDisplayItem::columns());
    if (tagName == zoClusterTags::Window)
        return zoHPCTreeWidgetItem::attributeOrder(zoHPCWindowItem::columns());
    if (tagName == zoClusterTags::Viewport)
        return zoHPCTreeWidgetItem::attributeOrder(zoHPCViewportItem::columns());
    return {};
}

void zoHPCDisplaySetup::read(const QDomDocument& document, Tiles tiles)
{
    const QDomElement root = document.documentElement();
    readDisplays(root);
    const QStringList shown = shownNames();
    // Parts begin with the name of their projection.
    const auto isShown = [&shown](const QString& name) {
        const auto next = std::lower_bound(shown.begin(), shown.end(), name.trimmed());
        return next != shown.end() && next->startsWith(name.trimmed());
    };
    const QString projectionTag = zoClusterTags::Projection;
    QList<QTreeWidgetItem*> projections;
    // A kilobyte may ask for a dozen of walls, each as large as one may be.
    int tilesLeft = zoHPCProjectionItem::MaximumTiles;
    qint64 charactersLeft = zoHPCProjectionItem::MaximumNameCharacters;
    for (QDomElement element = root.firstChildElement(projectionTag); !element.isNull();
         element = element.nextSiblingElement(projectionTag)) {
        auto projection =
            std::make_unique<zoHPCProjectionItem>(QString::fromLatin1(""), zoHPCProjectionType::Kind::Wall);
        projection->setTileLimit(tilesLeft, charactersLeft);
        projection->setIsLaidOut(tiles == Tiles::All ||
                                 isShown(element.attribute(zoClusterTags::NameAttribute)));
        projection->fromXML(element);
        const int count = projection->tileCount();
        tilesLeft -= count;
        charactersLeft -= qint64(count) * projection->getString(zoHPCProjectionItem::Name).size();
        projection->setIsLaidOut(true);
        projection->setTileLimit(zoHPCProjectionItem::MaximumTiles,
                                 zoHPCProjectionItem::MaximumNameCharacters);
        projections.append(projection.release());
    }
    m_projectionRoot->addChildren(projections);
}

// In order, and without the blanks that names of parts are without.
QStringList zoHPCDisplaySetup::shownNames() const
{
    QStringList names;
    const QList<zoHPCViewportItem*> viewports = getViewportItems();
    for (const zoHPCViewportItem* viewport : viewports)
        names << viewport->getString(zoHPCViewportItem::Projection).trimmed();
    std::sort(names.begin(), names.end());
    return names;
}

void zoHPCDisplaySetup::readDisplays(const QDomElement& root)
{
    const QString displayTag = zoClusterTags::Display;
    QList<QTreeWidgetItem*> displays;
    for (QDomElement element = root.firstChildElement(displayTag); !element.isNull();
         element = element.nextSiblingElement(displayTag)) {
        auto display = std::make_unique<zoHPCDisplayItem>();
        display->fromXML(element);
        displays.append(display.release());
    }
    m_displayRoot->addChildren(displays);
}

bool zoHPCDisplaySetup::linkViewports()
{
    bool isChanged = false;
    const auto show = [&isChanged](zoHPCViewportItem* viewport, const QString& name) {
        isChanged |= viewport->getString(zoHPCViewportItem::Projection) != name;
        viewport->setProjection(name);
    };
    const QList<zoHPCViewportItem*> viewports = getViewportItems();
    for (zoHPCViewportItem* viewport : viewports) {
        const auto name = m_names.constFind(viewport->getString(zoHPCViewportItem::ProjectionIdentifier));
        if (name != m_names.constEnd()) {
            show(viewport, name.value());
            continue;
        }
        const auto identifier = m_identifiers.constFind(viewport->getString(zoHPCViewportItem::Projection));
        if (identifier != m_identifiers.constEnd()) {
            viewport->setString(zoHPCViewportItem::ProjectionIdentifier, identifier.value());
            isChanged = true;
        } else {
            show(viewport, QString::fromLatin1(""));
        }
    }
    return isChanged;
}
