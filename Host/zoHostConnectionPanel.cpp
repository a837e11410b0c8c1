#include "zoHostConnectionPanel.h"

#include "zoParaViewService.h"

#include <zoLog.h>

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QStandardPaths>
#include <QToolButton>

zoHostConnectionPanel::zoHostConnectionPanel(zoParaViewService* cluster, QWidget* parent)
    : QWidget(parent)
    , m_cluster(cluster)
    , m_state(new QLabel(this))
    , m_command(new QLineEdit(this))
    , m_copy(new QToolButton(this))
    , m_start(new QToolButton(this))
    , m_change(new QLabel(this))
    , m_restart(new QToolButton(this))
{
    m_state->setObjectName(QStringLiteral("ConnectionState"));
    m_command->setObjectName(QStringLiteral("ConnectCommand"));
    m_command->setAccessibleName(tr("Command that connects ParaView"));
    m_command->setReadOnly(true);
    m_copy->setObjectName(QStringLiteral("CopyConnectCommand"));
    m_copy->setText(tr("Copy"));
    m_start->setObjectName(QStringLiteral("StartParaView"));
    m_start->setText(tr("Start ParaView"));
    m_start->setToolTip(tr("Starts ParaView on this machine and connects it"));
    m_change->setObjectName(QStringLiteral("RefusedChange"));
    m_change->setWordWrap(true);
    m_restart->setObjectName(QStringLiteral("RestartSession"));
    m_restart->setText(tr("Restart session"));
    m_restart->setToolTip(tr("Stops the session and starts it with the configuration as it is now"));
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(m_state, 0, 0);
    layout->addWidget(m_copy, 0, 1);
    layout->addWidget(m_start, 0, 2);
    layout->addWidget(m_command, 1, 0, 1, 3);
    auto* change = new QHBoxLayout;
    change->addWidget(m_change, 1);
    change->addWidget(m_restart);
    layout->addLayout(change, 2, 0, 1, 3);
    layout->setColumnStretch(0, 1);

    connect(m_copy, &QToolButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(m_command->text()); });
    connect(m_start, &QToolButton::clicked, this, &zoHostConnectionPanel::startClient);
    connect(m_restart, &QToolButton::clicked, this, &zoHostConnectionPanel::restartRequested);
    connect(m_cluster, &zoParaViewService::connectionChanged, this, &zoHostConnectionPanel::refresh);
    connect(m_cluster, &zoClusterService::started, this, &zoHostConnectionPanel::refresh);
    connect(m_cluster, &zoClusterService::stopped, this, &zoHostConnectionPanel::refresh);
    refresh();
}

zoHostConnectionPanel::~zoHostConnectionPanel() = default;

void zoHostConnectionPanel::refresh()
{
    const QString command = m_cluster->connectText();
    m_state->setText(command.isEmpty()        ? tr("No session")
                     : m_cluster->hasClient() ? tr("ParaView is connected")
                                              : tr("Waits for ParaView:"));
    m_command->setText(command);
    m_command->setCursorPosition(0);
    m_copy->setEnabled(!command.isEmpty());
    m_start->setVisible(!QStandardPaths::findExecutable(QStringLiteral("paraview")).isEmpty());
    m_start->setEnabled(!command.isEmpty() && !m_cluster->hasClient());
    const QString change = m_cluster->refusedChange();
    m_change->setText(change.isEmpty() ? QString()
                                       : tr("The configuration changed: %1 needs a new start").arg(change));
    m_change->setVisible(!change.isEmpty());
    m_restart->setVisible(!change.isEmpty());
}

void zoHostConnectionPanel::startClient()
{
    const QStringList command = m_cluster->connectCommand();
    if (!command.isEmpty() && !QProcess::startDetached(command.constFirst(), command.mid(1)))
        zoLog::error(tr("%1 cannot be started").arg(command.constFirst()));
}
