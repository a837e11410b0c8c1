#pragma once

#include <QObject>
#include <QSet>
#include <QStringList>

#include <functional>
#include <memory>

class QZODataWidgetMapper;
class Ui_zoHPCDisplayGUII;
class zoHPCLayout;
class zoHPCNodeNames;

// The panel of a window: render node, screen and where on it.
class zoHPCWindowPanel final : public QObject
{
    Q_OBJECT

public:
    // The dialog's form, set up, and the mapper of the output tree; not owned.
    zoHPCWindowPanel(const Ui_zoHPCDisplayGUII& form, QZODataWidgetMapper& mapper, QObject* parent = nullptr);
    ~zoHPCWindowPanel() override;

    // The choice of nodes, equal names told apart by a number. The node of the window that is shown stays.
    void setNodeNames(const QStringList& names);
    // What tells which nodes are marked as in use and as gateways.
    void setLayoutSource(const std::function<std::shared_ptr<const zoHPCLayout>()>& source);
    // Whether a window can mean that node.
    bool isNode(const QString& name) const { return m_nodes.contains(name); }
    // Not for a window in full screen.
    void showGeometry();

private:
    const Ui_zoHPCDisplayGUII& m_ui;
    zoHPCNodeNames* m_nodeNames = nullptr;
    QSet<QString> m_nodes;
};
