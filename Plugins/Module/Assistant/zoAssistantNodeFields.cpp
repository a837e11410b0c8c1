#include "zoAssistantNodeFields.h"

#include "zoAssistantCounts.h"
#include "zoAssistantNumberField.h"
#include "zoHPCWallMistakes.h"
#include "zoHPCWallWindows.h"
#include "zoText.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

zoAssistantNodeFields::zoAssistantNodeFields(QWidget* parent)
    : zoAssistantFields(tr("Nodes"), parent)
    , m_hosts(new QLineEdit)
    , m_count(new QLabel)
    , m_windows(
          new zoAssistantNumberField(0, zoHPCWallPlan::MaximumScreens, 0, zoAssistantNumberField::Unit::None))
    , m_name(new QLineEdit)
{
    m_hosts->setObjectName(zoText("m_hosts"));
    m_hosts->setToolTip(tr("Names of the nodes in the order of the tiles, row by row from the upper left:\n"
                           "node1 node2, node1 - node6, node[1-6];\n"
                           "behind a gateway: gate { node[1-6] }"));
    m_hosts->setClearButtonEnabled(true);
    m_count->setObjectName(zoText("m_count"));
    m_count->setWordWrap(true);
    m_count->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_windows->setObjectName(zoText("m_perNode"));
    m_windows->setSpecialValueText(tr("as many as it takes"));
    m_windows->setToolTip(
        tr("Windows on each node, each on a screen of its own. Where they do not spread evenly, the first "
           "nodes get one more"));
    m_windows->setMinimumWidth(m_windows->fontMetrics().horizontalAdvance(m_windows->specialValueText()) +
                               40);
    m_name->setObjectName(zoText("m_name"));
    connect(m_hosts, &QLineEdit::textChanged, this, &zoAssistantFields::edited);
    connect(m_name, &QLineEdit::textChanged, this, &zoAssistantFields::edited);
    connect(m_windows, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &zoAssistantFields::edited);

    const auto labelOf = [](const QString& text, QWidget* field) {
        auto* label = new QLabel(text);
        label->setBuddy(field);
        return label;
    };
    auto* layout = new QGridLayout(this);
    layout->addWidget(labelOf(tr("&Names:"), m_hosts), 0, 0);
    layout->addWidget(m_hosts, 0, 1, 1, 3);
    layout->addWidget(m_count, 1, 1, 1, 3);
    layout->addWidget(labelOf(tr("W&indows on each:"), m_windows), 2, 0);
    layout->addWidget(m_windows, 2, 1);
    layout->addWidget(labelOf(tr("Name of the wa&ll:"), m_name), 2, 2);
    layout->addWidget(m_name, 2, 3);
    layout->setColumnStretch(3, 1);
    tighten(*layout);
}

zoAssistantNodeFields::~zoAssistantNodeFields() = default;

QString zoAssistantNodeFields::example(const zoHPCWallPlan& plan)
{
    const int nodes = plan.nodesNeeded();
    return nodes > 1 ? zoText("node[1-%1]").arg(nodes) : zoText("node1");
}

void zoAssistantNodeFields::showPlan(const zoHPCWallPlan& plan)
{
    if (m_hosts->text() != plan.hosts) {
        const QSignalBlocker blocker(m_hosts);
        m_hosts->setText(plan.hosts);
    }
    m_hosts->setPlaceholderText(example(plan));
    m_windows->show(plan.windowsPerNode);
    if (m_name->text() != plan.name) {
        const QSignalBlocker blocker(m_name);
        m_name->setText(plan.name);
    }
    zoHPCWallPlan nameless = plan;
    nameless.name.clear();
    m_name->setPlaceholderText(nameless.title());
    showCount(plan);
}

void zoAssistantNodeFields::showCount(const zoHPCWallPlan& plan)
{
    if (plan.hosts.trimmed().isEmpty()) {
        m_count->setText(tr("For %1").arg(zoAssistantCounts::windows(plan.windowCount())));
        return;
    }
    const zoHPCWallBuilder::Hosts hosts = zoHPCWallBuilder::readHosts(plan.hosts);
    QString text = zoAssistantCounts::nodes(hosts.nodes);
    if (hosts.gateways > 0)
        text += zoText(", ") + zoAssistantCounts::gateways(hosts.gateways);
    text += zoText("; ") + zoAssistantCounts::windows(plan.windowCount());
    if (hosts.mistake.isEmpty() && zoHPCWallMistakes::find(plan).empty()) {
        const QString note = zoHPCWallWindows(plan, plan.tileCount(), hosts.drivers.size()).note();
        text += note.isEmpty() ? note : zoText(": ") + note;
    }
    if (!hosts.notes.empty())
        text += zoText(". ") +
                tr("At character %1: %2")
                    .arg(QString::number(hosts.notes.front().offset + 1), hosts.notes.front().reason);
    m_count->setText(text);
}

void zoAssistantNodeFields::apply(zoHPCWallPlan& plan) const
{
    plan.hosts = m_hosts->text();
    plan.windowsPerNode = int(m_windows->value());
    plan.name = m_name->text();
}

void zoAssistantNodeFields::focusHosts()
{
    m_hosts->setFocus();
    m_hosts->selectAll();
}
