#pragma once

#include <zoHPCConfiguration.h>
#include <zoHPCRenderSetup.h>
#include <zoWallSetup.h>

#include <QCoreApplication>
#include <QHash>
#include <QString>

#include <memory>

// Reads a configuration document as the setup of a wall: windows of nodes from the render setup, networks and gateways
// from the host tree.
class zoServerSetup final
{
    Q_DECLARE_TR_FUNCTIONS(zoServerSetup)

public:
    // False, with the setup as it was and the reason, for a text that is no configuration. Pixel pitch in millimetres.
    static bool read(const QString& document, double pixelPitch, zoWallSetup& setup, QString& reason);

private:
    zoServerSetup() = default;

    void readNetworks();
    void readNodes();
    void readWindows();
    void readViewports();
    void readNotes();
    int networkIndexOf(const zoHPCTreeItem* network) const;
    zoWallViewport viewportOf(const zoHPCRenderSetup::Picture& picture) const;

    zoHPCConfiguration m_configuration;
    std::unique_ptr<zoHPCRenderSetup> m_render;
    QHash<const QTreeWidgetItem*, QString> m_ids;
    QHash<const QTreeWidgetItem*, int> m_networks; // index of each network
    QHash<int, int> m_nodes;                       // from the layout's node to the setup's
    QHash<int, std::pair<int, int>> m_windows;     // from the layout's window to node and window of the setup
    zoWallSetup m_setup;
};
