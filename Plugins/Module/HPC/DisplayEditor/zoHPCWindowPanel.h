#pragma once

#include <QObject>
#include <QSet>
#include <QStringList>

class QStringListModel;
class QZODataWidgetMapper;
class Ui_zoHPCDisplayGUII;

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
    // Whether a window can mean that node.
    bool isNode(const QString& name) const { return m_nodes.contains(name); }
    // Not for a window in full screen.
    void showGeometry();

private:
    const Ui_zoHPCDisplayGUII& m_ui;
    QStringListModel* m_nodeNames = nullptr;
    QSet<QString> m_nodes;
};
