#pragma once

#include <zoHPCDisplayItem.h>
#include <zoHPCDisplaySetup.h>
#include <zoHPCDocumentText.h>
#include <zoHPCLayout.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCTreeGUIW.h>
#include <zoHPCTreeItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QDomDocument>
#include <QFile>
#include <QTreeWidget>

// A small configuration in the making, for tests that link the module: the host tree and the two trees of the
// display setup, nothing of which is ever shown.
class zoHPCSetup final
{
public:
    // Starts with a master without networks and with one display.
    zoHPCSetup()
    {
        hosts.setHostString(QString());
        while (hosts.master()->childCount() > 0)
            delete hosts.master()->takeChild(0);
        displays.addTopLevelItem(new zoHPCDisplayItem);
    }

    // Replaces everything by a file's content; false when it cannot be read.
    bool load(const QString& fileName)
    {
        QFile file(fileName);
        QDomDocument document;
        if (!file.open(QIODevice::ReadOnly) ||
            !zoHPCDocumentText::parse(QString::fromUtf8(file.readAll()), document))
            return false;
        hosts.loadFromXML(document);
        projections.clear();
        displays.clear();
        const QDomElement root = document.documentElement();
        for (QDomElement e = root.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
            if (e.tagName() == QLatin1String("projection")) {
                addProjection(QString(), QStringLiteral("wall"))->fromXML(e);
            } else if (e.tagName() == QLatin1String("display")) {
                auto* item = new zoHPCDisplayItem;
                displays.addTopLevelItem(item);
                item->fromXML(e);
            }
        }
        return true;
    }

    // Appended to the last network, or to the one given.
    zoHPCTreeItem* addNode(const QString& name, zoHPCTreeItem* network = nullptr)
    {
        if (!network && hosts.master()->childCount() == 0)
            hosts.createNetwork(hosts.master(), -1);
        if (!network)
            network = hosts.master()->items().back();
        return hosts.createNode(network, name, -1);
    }

    zoHPCProjectionItem* addProjection(const QString& name, const QString& type)
    {
        auto* item = new zoHPCProjectionItem(name, type);
        projections.addTopLevelItem(item);
        return item;
    }

    zoHPCProjectionItem* addPowerWall(const QString& name, int rows, int columns, double overlap = 0.0)
    {
        zoHPCProjectionItem* item = addProjection(name, QStringLiteral("powerwall"));
        item->setInt(zoHPCProjectionItem::Rows, rows);
        item->setInt(zoHPCProjectionItem::Columns, columns);
        item->setDouble(zoHPCProjectionItem::OverlapX, overlap);
        item->setDouble(zoHPCProjectionItem::OverlapY, overlap);
        item->setBool(zoHPCProjectionItem::EdgeBlending, overlap > 0.0);
        item->update();
        return item;
    }

    zoHPCDisplayItem* display(int index = 0) const
    {
        return dynamic_cast<zoHPCDisplayItem*>(displays.topLevelItem(index));
    }

    zoHPCDisplayItem* addDisplay(const QString& user)
    {
        auto* item = new zoHPCDisplayItem;
        item->setString(zoHPCDisplayItem::User, user);
        displays.addTopLevelItem(item);
        return item;
    }

    // In full screen, with one viewport; an empty eye means no viewport.
    zoHPCWindowItem* addWindow(const QString& node, const QString& projection,
                               const QString& eye = QStringLiteral("mono"),
                               zoHPCDisplayItem* parent = nullptr)
    {
        auto* item = new zoHPCWindowItem;
        item->setRenderNode(node);
        item->update();
        (parent ? parent : display())->addChild(item);
        if (!eye.isEmpty())
            addViewport(item, projection, eye);
        return item;
    }

    // Not in full screen, without a viewport.
    zoHPCWindowItem* addWindowAt(const QString& node, const QString& screen, int x, int y, int width,
                                 int height)
    {
        zoHPCWindowItem* item = addWindow(node, QString(), QString());
        item->setString(zoHPCWindowItem::Screen, screen);
        item->setBool(zoHPCWindowItem::FullScreen, false);
        item->setInt(zoHPCWindowItem::X, x);
        item->setInt(zoHPCWindowItem::Y, y);
        item->setInt(zoHPCWindowItem::Width, width);
        item->setInt(zoHPCWindowItem::Height, height);
        return item;
    }

    zoHPCViewportItem* addViewport(zoHPCWindowItem* window, const QString& projection, const QString& eye)
    {
        auto* item = new zoHPCViewportItem;
        item->setString(zoHPCViewportItem::Eye, eye);
        item->setProjection(projection);
        window->addChild(item);
        return item;
    }

    // Identifiers of what viewports show, as the dialog gives them.
    void link()
    {
        zoHPCDisplaySetup(projections.invisibleRootItem(), displays.invisibleRootItem())
            .correctProjectionViewportsAssignments();
    }

    zoHPCLayout layout() const { return zoHPCLayout(&projections, &displays, hosts.master()); }

    zoHPCTreeGUIW hosts;
    QTreeWidget projections;
    QTreeWidget displays;
};
