#include "zoAssistantPanel.h"

#include "zoAssistantCounts.h"
#include "zoAssistantRoomView.h"
#include "zoHPCLayout.h"
#include "zoHPCProblems.h"
#include "zoText.h"

#include <zoConfigurationService.h>
#include <zoIconManager.h>

#include <QCommandLinkButton>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <QVariant>

namespace
{
// Large configurations are read for a while: not at each key (ms).
constexpr int QuietTime = 200;
constexpr int ButtonsWidth = 380;
} // namespace

zoAssistantPanel::zoAssistantPanel(zoConfigurationService* configuration, QWidget* parent)
    : QWidget(parent)
    , m_configuration(configuration)
    , m_buttons(new QVBoxLayout)
    , m_hindrance(new QLabel)
    , m_open(new QLabel)
    , m_room(new zoAssistantRoomView)
{
    setObjectName(zoText("Assistant"));
    setProperty("manualPage", zoText("assistant"));
    setWindowTitle(tr("Assistant"));
    m_hindrance->setObjectName(zoText("m_hindrance"));
    m_hindrance->setWordWrap(true);
    m_open->setObjectName(zoText("m_open"));
    m_open->setWordWrap(true);
    m_room->setObjectName(zoText("m_room"));
    auto* column = new QWidget;
    column->setMaximumWidth(ButtonsWidth);
    auto* left = new QVBoxLayout(column);
    left->setContentsMargins(0, 0, 0, 0);
    left->addLayout(m_buttons);
    left->addWidget(m_hindrance);
    left->addStretch();
    auto* right = new QVBoxLayout;
    right->addWidget(m_open);
    right->addWidget(m_room, 1);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(column, 1);
    layout->addLayout(right, 2);
    m_timer.setSingleShot(true);
    m_timer.setInterval(QuietTime);
    connect(&m_timer, &QTimer::timeout, this, &zoAssistantPanel::showOpen);
    if (configuration != nullptr) {
        connect(configuration, &zoConfigurationService::changed, this, &zoAssistantPanel::refresh);
        connect(configuration, &QObject::destroyed, this, &zoAssistantPanel::refresh);
    }
    refresh();
}

zoAssistantPanel::~zoAssistantPanel() = default;

void zoAssistantPanel::addTask(const char* name, const QString& title, const QString& description,
                               const QString& icon, Needs needs, const std::function<void()>& start)
{
    auto* button = new QCommandLinkButton(title, description);
    button->setObjectName(QLatin1String(name));
    button->setAutoDefault(true); // takes Return, as buttons of dialogs do
    button->setIcon(zoIconManager::getIcon(icon, QString()));
    connect(button, &QCommandLinkButton::clicked, this, start);
    m_buttons->addWidget(button);
    m_tasks.push_back({button, needs});
    refresh();
}

void zoAssistantPanel::retire()
{
    m_timer.stop();
    if (m_configuration)
        disconnect(m_configuration, nullptr, this, nullptr);
    m_configuration = nullptr;
    for (const Task& task : m_tasks)
        disconnect(task.button, nullptr, this, nullptr);
    hide();
    setEnabled(false);
}

void zoAssistantPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    showOpen();
}

// Why nothing can be done that needs this; empty when it can.
QString zoAssistantPanel::hindranceOf(Needs needs) const
{
    if (!m_configuration)
        return tr("This host tells no module which configuration is open.");
    if (needs == Needs::Reading)
        return m_configuration->text().isEmpty() ? tr("No configuration is open.") : QString();
    const QString obstacle = m_configuration->obstacle();
    return obstacle.isEmpty() ? QString() : tr("%1: the configuration stays as it is.").arg(obstacle);
}

void zoAssistantPanel::refresh()
{
    QString shown;
    for (const Task& task : m_tasks) {
        const QString hindrance = hindranceOf(task.needs);
        task.button->setEnabled(hindrance.isEmpty());
        task.button->setToolTip(hindrance);
        if (!hindrance.isEmpty())
            shown = hindrance;
    }
    m_hindrance->setText(shown);
    m_hindrance->setVisible(!shown.isEmpty());
    if (isVisible())
        m_timer.start();
}

void zoAssistantPanel::showOpen()
{
    m_timer.stop();
    const QString text = m_configuration ? m_configuration->text() : QString();
    m_room->showConfiguration(text);
    m_room->setVisible(!text.isEmpty());
    if (text.isEmpty()) {
        m_open->setText(tr("No configuration is open."));
        return;
    }
    const zoHPCLayout& layout = m_room->layoutOfRoom();
    const QString file = m_configuration->fileName();
    const QString name = file.isEmpty() ? tr("Not saved yet") : QFileInfo(file).fileName();
    const auto count = [](const auto& list) { return int(list.size()); };
    m_open->setText(zoText("<b>%1</b><br>%2")
                        .arg(name.toHtmlEscaped(),
                             QStringList{zoAssistantCounts::nodes(count(layout.nodes())),
                                         zoAssistantCounts::windows(count(layout.windows())),
                                         zoAssistantCounts::problems(count(zoHPCProblems::find(layout)))}
                                 .join(zoText(", "))));
}
