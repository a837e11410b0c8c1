#pragma once

#include <zoClusterTags.h>
#include <zoHPCConfiguration.h>
#include <zoHPCDisplayItem.h>
#include <zoHPCDisplayTables.h>
#include <zoHPCOptionValues.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCTreeItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QDomDocument>
#include <QRandomGenerator>
#include <QTreeWidgetItem>

// A configuration that the dialogs could have made, the same for the same seed: every item with any of the values that
// its fields take. For tests that link the core.
class zoRandomConfiguration final
{
public:
    explicit zoRandomConfiguration(quint32 seed)
        : m_random(seed), m_displays(&m_projectionRoot, &m_displayRoot)
    {
        makeHosts();
        for (int i = below(4); i > 0; --i)
            m_projectionRoot.addChild(makeProjection());
        for (int i = below(3); i > 0; --i)
            m_displayRoot.addChild(makeDisplay());
        m_displays.correctProjectionViewportsAssignments();
    }

    const zoHPCDisplaySetup& displays() const { return m_displays; }
    QString text() const { return zoHPCConfiguration::textAsIs(m_hosts, m_displays); }

private:
    int below(int bound) { return int(m_random.bounded(bound)); }
    bool chance() { return below(2) == 0; }

    double number()
    {
        const double values[] = {0, -0.0, 1, -1, 65, 0.065, 1e-9, 1e300, -2500.5, 1.0 / 3.0};
        return chance() ? values[below(10)] : m_random.generateDouble() * 1e4 - 5e3;
    }
    int integer()
    {
        const int values[] = {0, 1, 2, 3, -1, 1920, 1200, 32767, -2147483647, 2147483647};
        return values[below(10)];
    }
    QString name()
    {
        const char* const names[] = {"a",       "Wall",    "node 1", "\"<&>'", "\xc3\xbc\xe2\x82\xac",
                                     "x\ty\nz", " blank ", ""};
        return QString::fromUtf8(names[below(8)]);
    }

    template <class Options>
    void choose(zoHPCTreeItem* item, const Options& options)
    {
        for (const auto& option : options)
            item->setOption(*option.option,
                            QString::fromLatin1(option.rows[size_t(below(int(option.count)))].value));
    }

    void makeHosts()
    {
        QDomDocument none;
        m_hosts.loadFromXML(none);
        choose(m_hosts.master(), zoHPCOptionValues::MasterOptions);
        m_hosts.master()->setOption(zoHPCOption::Homogeneous, chance() ? QStringLiteral("true") : QString());
        for (int i = below(3); i > 0; --i)
            addNetwork(m_hosts.master(), 0);
    }

    void addNetwork(zoHPCTreeItem* parent, int depth)
    {
        zoHPCTreeItem* const network = m_hosts.createNetwork(parent, -1);
        choose(network, zoHPCOptionValues::NetworkOptions);
        network->setOption(zoHPCOption::Description, name());
        network->setIntOption(zoHPCOption::ServicePort, 1 + below(65535), zoClusterTags::DefaultServicePort);
        network->setOption(zoHPCOption::Encrypted, chance() ? QStringLiteral("true") : QString());
        network->setIsEnabled(chance());
        for (int i = below(4); i > 0; --i) {
            zoHPCTreeItem* const node = m_hosts.createNode(network, name(), -1);
            node->setIsEnabled(chance());
            node->setIsRenderNode(chance());
            if (depth < 2 && below(4) == 0)
                addNetwork(node, depth + 1);
        }
    }

    zoHPCProjectionItem* makeProjection()
    {
        using P = zoHPCProjectionItem;
        const std::vector<zoHPCProjectionType>& types = zoHPCProjectionType::all();
        auto* const item = new P(name(), types[size_t(below(int(types.size())))].kind);
        for (const int column : item->typeRow().columns) {
            switch (column) {
            case P::Name:
            case P::Type:
                break;
            case P::Rows:
            case P::Columns:
                item->setInt(column, below(4));
                break;
            case P::RightOffsetX:
            case P::RightOffsetY:
            case P::Row:
            case P::TileColumn:
                item->setInt(column, integer());
                break;
            default:
                // Flags stay unset or are set; everything else is a number.
                if ((column >= P::LeftWall && column <= P::BackWall) || column == P::EdgeBlending) {
                    if (chance())
                        item->setBool(column, chance());
                } else if (chance()) {
                    item->setDouble(column, number());
                }
            }
        }
        item->update();
        return item;
    }

    zoHPCDisplayItem* makeDisplay()
    {
        auto* const display = new zoHPCDisplayItem;
        display->setEyeSeparation(number());
        display->setString(zoHPCDisplayItem::Camera, name());
        display->setString(zoHPCDisplayItem::User, name());
        display->setBool(zoHPCDisplayItem::HardwareSync, chance());
        for (int i = below(4); i > 0; --i)
            display->addChild(makeWindow());
        return display;
    }

    zoHPCWindowItem* makeWindow()
    {
        using W = zoHPCWindowItem;
        auto* const window = new W;
        window->setRenderNode(name());
        window->setString(W::Screen, QString::fromLatin1(zoHPCDisplayTables::Screens[below(18)].value));
        for (const int column : {W::X, W::Y, W::Width, W::Height})
            window->setInt(column, integer());
        window->setBool(W::FullScreen, chance());
        for (int i = below(3); i > 0; --i)
            window->addChild(makeViewport());
        return window;
    }

    zoHPCViewportItem* makeViewport()
    {
        using V = zoHPCViewportItem;
        auto* const viewport = new V;
        const QList<zoHPCProjectionItem*> all = m_displays.getProjectionItems();
        if (!all.isEmpty())
            viewport->setProjection(all.at(below(all.size()))->getString(zoHPCProjectionItem::Name));
        viewport->setString(V::Position, QString::fromLatin1(zoHPCDisplayTables::Positions[below(6)].value));
        viewport->setString(V::Eye, QString::fromLatin1(zoHPCDisplayTables::Eyes[below(11)].value));
        viewport->setViewport(number(), number(), number(), number());
        viewport->setBool(V::FlipX, chance());
        viewport->setBool(V::FlipY, chance());
        viewport->update();
        return viewport;
    }

    QRandomGenerator m_random;
    zoHPCHostTree m_hosts;
    QTreeWidgetItem m_projectionRoot;
    QTreeWidgetItem m_displayRoot;
    zoHPCDisplaySetup m_displays;
};
