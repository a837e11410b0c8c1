#pragma once

#include <zoClusterService.h>

#include <QHash>
#include <QJsonObject>

// What the controller said of the nodes of a session, in the order of the document.
class zoNodeReports final
{
public:
    // Nothing is known of any node.
    void reset(const QStringList& ids);
    // The nodes of another document: of those that stay, all that is known stays.
    void setOrder(const QStringList& ids);
    const QStringList& order() const { return m_order; }
    // Forgets those that are not in the order.
    void forgetOthers();

    // A NODE of the controller; what it does not say stays as it is.
    const zoClusterNodeReport& take(const QJsonObject& object);
    // A WAITS of the controller.
    void takeWaits(const QJsonObject& object);

    QVector<zoClusterNodeReport> all() const;
    zoClusterNodeReport of(const QString& id) const { return m_nodes.value(id).report; }
    qint64 process(const QString& id) const { return m_nodes.value(id).process; }

private:
    struct Node
    {
        zoClusterNodeReport report;
        qint64 process = 0;
    };

    QStringList m_order;
    QHash<QString, Node> m_nodes;
};
