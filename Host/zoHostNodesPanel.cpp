#include "zoHostNodesPanel.h"

#include "zoHostConnectionPanel.h"
#include "zoNodeClusterService.h"
#include "zoParaViewService.h"
#include "zoReadableColour.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
enum Column { Id, State, Version, Screens, Memory, Wait, Tile };

constexpr int s_reasonRole = Qt::UserRole;
constexpr int s_mostStateWidth = 40; // characters
constexpr int s_togetherMs = 30;
constexpr int s_waitsMs = 1000;
constexpr int s_delayMs = 500;
constexpr qint64 s_mebibyte = 1024 * 1024;
constexpr double s_microsecondsPerMillisecond = 1000.0;

QColor colourOf(zoClusterNodeReport::State state)
{
    switch (state) {
    case zoClusterNodeReport::State::Running:
        return {0, 110, 40};
    case zoClusterNodeReport::State::Failed:
    case zoClusterNodeReport::State::Lost:
        return {180, 20, 20};
    case zoClusterNodeReport::State::Connecting:
        break;
    }
    return {120, 120, 120};
}
} // namespace

zoHostNodesPanel::zoHostNodesPanel(zoHostClusterService* cluster, QWidget* parent)
    : QWidget(parent)
    , m_cluster(cluster)
    , m_servers(qobject_cast<zoNodeClusterService*>(cluster))
    , m_summary(new QLabel(this))
    , m_list(new QTreeWidget(this))
    , m_reason(new QLabel(this))
    , m_later(new QTimer(this))
    , m_waits(new QTimer(this))
{
    m_summary->setObjectName(QStringLiteral("NodesSummary"));
    m_list->setObjectName(QStringLiteral("NodesList"));
    m_list->setAccessibleName(tr("Nodes of the session"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setHeaderLabels(
        {tr("Node"), tr("State"), tr("Version"), tr("Screens"), tr("Free memory"), tr("Waited"), tr("Tile")});
    m_list->headerItem()->setToolTip(
        Wait, tr("How long the node waited in the last frame until all others had drawn theirs"));
    m_list->header()->setStretchLastSection(true);

    const auto makeButton = [this](const char* name, const QString& text, const QString& toolTip) {
        auto* button = new QToolButton(this);
        button->setObjectName(QLatin1String(name));
        button->setText(text);
        button->setToolTip(toolTip);
        button->setAutoRaise(true);
        return button;
    };
    m_lose = makeButton("LoseNode", tr("Lose"),
                        tr("Rehearsal: ends the node's program, as if its machine were off"));
    m_hang = makeButton("HangNode", tr("Hang"), tr("Rehearsal: stops the node's program, as if it hung"));
    m_delay = makeButton("DelayNode", tr("Delay"),
                         tr("Rehearsal: the node takes half a second longer for each frame"));
    connect(m_lose, &QToolButton::clicked, this, [this] { m_servers->loseNode(currentNode()); });
    connect(m_hang, &QToolButton::clicked, this, [this] { m_servers->hangNode(currentNode()); });
    m_delay->setCheckable(true);
    connect(m_delay, &QToolButton::clicked, this, [this](bool on) {
        if (on)
            m_delayed.insert(currentNode());
        else
            m_delayed.remove(currentNode());
        m_servers->delayNode(currentNode(), on ? s_delayMs : 0);
    });

    createLayout();
    createConnections();
    refresh();
}

zoHostNodesPanel::~zoHostNodesPanel() = default;

void zoHostNodesPanel::createLayout()
{
    auto* row = new QHBoxLayout;
    row->setContentsMargins(4, 2, 4, 2);
    row->addWidget(m_summary, 1);
    for (QToolButton* button : {m_lose, m_hang, m_delay})
        row->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(row);
    if (auto* paraView = qobject_cast<zoParaViewService*>(m_cluster)) {
        auto* connection = new zoHostConnectionPanel(paraView);
        layout->addWidget(connection);
        connect(connection, &zoHostConnectionPanel::restartRequested, this,
                &zoHostNodesPanel::restartRequested);
    }
    layout->addWidget(m_list);
    m_reason->setObjectName(QStringLiteral("NodesReason"));
    m_reason->setTextFormat(Qt::PlainText);
    m_reason->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_reason->setWordWrap(true);
    m_reason->setMargin(4);
    m_reason->hide();
    layout->addWidget(m_reason);
}

void zoHostNodesPanel::createConnections()
{
    m_later->setSingleShot(true);
    m_later->setInterval(s_togetherMs);
    connect(m_later, &QTimer::timeout, this, &zoHostNodesPanel::refresh);
    m_waits->setInterval(s_waitsMs);
    connect(m_waits, &QTimer::timeout, this, &zoHostNodesPanel::refresh);
    const auto soon = [this] {
        if (!m_later->isActive())
            m_later->start();
    };
    connect(m_cluster, &zoClusterService::nodeStateChanged, this, soon);
    connect(m_cluster, &zoClusterService::runningNodesChanged, this, soon);
    connect(m_cluster, &zoClusterService::started, this, soon);
    connect(m_cluster, &zoClusterService::started, this, [this] {
        m_delayed.clear();
        m_list->setProperty("sized", 0); // of many rows too: they are full now
    });
    connect(m_cluster, &zoClusterService::stopped, this, soon);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &zoHostNodesPanel::updateButtons);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &zoHostNodesPanel::showReason);
}

QString zoHostNodesPanel::stateText(const zoClusterNodeReport& report)
{
    switch (report.state) {
    case zoClusterNodeReport::State::Connecting:
        return tr("connecting");
    case zoClusterNodeReport::State::Running:
        return tr("running");
    case zoClusterNodeReport::State::Failed:
        return tr("failed: %1").arg(report.reason);
    case zoClusterNodeReport::State::Lost:
        return tr("lost: %1").arg(report.reason);
    }
    return {};
}

void zoHostNodesPanel::refresh()
{
    const QVector<zoClusterNodeReport> reports = m_cluster->nodeReport();
    const int count = reports.size();
    while (m_list->topLevelItemCount() > count)
        delete m_list->topLevelItem(m_list->topLevelItemCount() - 1);
    while (m_list->topLevelItemCount() < count)
        new QTreeWidgetItem(m_list);
    const bool isFirst = m_list->property("sized").toInt() != count;
    QSet<int> changed;
    for (int i = 0; i < count; ++i)
        changed += showReport(m_list->topLevelItem(i), reports.at(i));
    // The reason of a failure is longer than what was there when the columns were sized, and so may be a wait; screens
    // and memory are known no sooner than the node answers.
    constexpr int ManyRows = 200;
    if (!isFirst && count <= ManyRows) {
        fitStateColumn();
        for (const int column : {Version, Screens, Memory, Wait})
            if (changed.contains(column))
                widenColumn(column);
    }
    if (isFirst) {
        for (int column = Id; column < Tile; ++column)
            m_list->resizeColumnToContents(column);
        fitStateColumn();
        m_list->setProperty("sized", count);
    }
    showReason();
    if (count == 0)
        m_summary->setText(tr("No session"));
    else
        m_summary->setText(
            tr("%1 of %2 run")
                .arg(QString::number(m_cluster->runningNodes().size()), QString::number(count)));
    if (m_cluster->isRunning() && !m_waits->isActive())
        m_waits->start();
    else if (!m_cluster->isRunning())
        m_waits->stop();
    updateButtons();
}

// The columns whose text is another now.
QSet<int> zoHostNodesPanel::showReport(QTreeWidgetItem* row, const zoClusterNodeReport& report)
{
    QSet<int> changed;
    const auto show = [row, &changed](int column, const QString& text) {
        if (row->text(column) == text)
            return;
        row->setText(column, text);
        changed.insert(column);
    };
    // What ran ended with its session; what failed says why it does not run.
    const bool ended = !m_cluster->isRunning() && report.state == zoClusterNodeReport::State::Running;
    const QString state = ended ? tr("ended") : stateText(report);
    show(Id, report.id);
    show(State, state);
    // As rich text it is wrapped.
    row->setToolTip(State, QStringLiteral("<qt>%1</qt>").arg(state.toHtmlEscaped()));
    const bool isReason = report.state == zoClusterNodeReport::State::Failed ||
                          report.state == zoClusterNodeReport::State::Lost;
    row->setData(State, s_reasonRole, isReason ? report.reason : QString());
    row->setForeground(
        State, zoReadableColour::on(m_list->palette().color(QPalette::Base),
                                    colourOf(ended ? zoClusterNodeReport::State::Connecting : report.state)));
    show(Version, report.version);
    show(Screens, report.screens.join(QStringLiteral(", ")));
    show(Memory, report.freeMemory < 0 ? QString() : tr("%1 MiB").arg(report.freeMemory / s_mebibyte));
    show(Wait, report.barrierWait < 0 || report.state != zoClusterNodeReport::State::Running
                   ? QString()
                   : tr("%1 ms").arg(double(report.barrierWait) / s_microsecondsPerMillisecond, 0, 'f', 1));
    show(Tile, report.tile);
    return changed;
}

// A long reason would push all other columns out of sight; it stands below the list.
void zoHostNodesPanel::fitStateColumn()
{
    m_list->resizeColumnToContents(State);
    const int most = s_mostStateWidth * m_list->fontMetrics().averageCharWidth();
    m_list->setColumnWidth(State, std::min(m_list->columnWidth(State), most));
}

// Never narrower: no back and forth.
void zoHostNodesPanel::widenColumn(int column)
{
    const int width = m_list->columnWidth(column);
    m_list->resizeColumnToContents(column);
    m_list->setColumnWidth(column, std::max(width, m_list->columnWidth(column)));
}

void zoHostNodesPanel::showReason()
{
    const auto reasonOf = [](const QTreeWidgetItem* row) {
        return row == nullptr ? QString() : row->data(State, s_reasonRole).toString();
    };
    const QTreeWidgetItem* failed = m_list->currentItem();
    for (int i = 0; reasonOf(failed).isEmpty() && i < m_list->topLevelItemCount(); ++i)
        failed = m_list->topLevelItem(i);
    const QString reason = reasonOf(failed);
    m_reason->setVisible(!reason.isEmpty());
    if (!reason.isEmpty())
        m_reason->setText(QStringLiteral("%1: %2").arg(failed->text(Id), reason));
}

QString zoHostNodesPanel::currentNode() const
{
    return m_list->currentItem() != nullptr ? m_list->currentItem()->text(Id) : QString();
}

void zoHostNodesPanel::updateButtons()
{
    const bool rehearses = m_servers != nullptr && m_cluster->isRunning() &&
                           (m_cluster->capabilities() & zoClusterService::Rehearses) != 0;
    const bool runs = m_cluster->runningNodes().contains(currentNode());
    for (QToolButton* button : {m_lose, m_hang, m_delay}) {
        button->setVisible(rehearses);
        button->setEnabled(rehearses && runs);
    }
    m_delay->setChecked(rehearses && runs && m_delayed.contains(currentNode()));
}
