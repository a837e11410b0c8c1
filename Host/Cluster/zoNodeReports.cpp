#include "zoNodeReports.h"

#include "zoNodeReasonText.h"

#include <QJsonArray>

namespace
{
zoClusterNodeReport::State stateOf(const QString& word)
{
    if (word == QLatin1String("running"))
        return zoClusterNodeReport::State::Running;
    if (word == QLatin1String("failed"))
        return zoClusterNodeReport::State::Failed;
    if (word == QLatin1String("lost"))
        return zoClusterNodeReport::State::Lost;
    return zoClusterNodeReport::State::Connecting;
}
} // namespace

void zoNodeReports::reset(const QStringList& ids)
{
    m_nodes.clear();
    setOrder(ids);
}

void zoNodeReports::setOrder(const QStringList& ids)
{
    m_order = ids;
    for (const QString& id : ids)
        m_nodes[id].report.id = id;
}

void zoNodeReports::forgetOthers()
{
    const QSet<QString> known(m_order.begin(), m_order.end());
    for (auto it = m_nodes.begin(); it != m_nodes.end();) {
        if (known.contains(it.key()))
            ++it;
        else
            it = m_nodes.erase(it);
    }
}

const zoClusterNodeReport& zoNodeReports::take(const QJsonObject& object)
{
    Node& node = m_nodes[object.value(QLatin1String("id")).toString()];
    zoClusterNodeReport& report = node.report;
    report.id = object.value(QLatin1String("id")).toString();
    report.state = stateOf(object.value(QLatin1String("state")).toString());
    report.reason = zoNodeReasonText::of(object.value(QLatin1String("reason")).toString(),
                                         object.value(QLatin1String("detail")).toString());
    report.version = object.value(QLatin1String("version")).toString(report.version);
    report.tile = object.value(QLatin1String("tile")).toString(report.tile);
    report.freeMemory = qint64(object.value(QLatin1String("memory")).toDouble(double(report.freeMemory)));
    if (object.contains(QLatin1String("screens"))) {
        report.screens.clear();
        const QJsonArray screens = object.value(QLatin1String("screens")).toArray();
        for (const QJsonValue& screen : screens)
            report.screens << screen.toString();
    }
    node.process = qint64(object.value(QLatin1String("process")).toDouble(double(node.process)));
    return report;
}

void zoNodeReports::takeWaits(const QJsonObject& object)
{
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (m_nodes.contains(it.key()))
            m_nodes[it.key()].report.barrierWait = qint64(it.value().toDouble());
    }
}

QVector<zoClusterNodeReport> zoNodeReports::all() const
{
    QVector<zoClusterNodeReport> reports;
    for (const QString& id : m_order)
        reports << of(id);
    return reports;
}
