#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

class QCommandLinkButton;
class QLabel;
class QVBoxLayout;
class zoAssistantRoomView;
class zoConfigurationService;

// The assistant's page in the host: what it can do, and what is open now.
class zoAssistantPanel final : public QWidget
{
    Q_OBJECT

public:
    // What a task needs of the host's configuration.
    enum class Needs { Reading, Replacing };

    // The service may be null, and may go.
    explicit zoAssistantPanel(zoConfigurationService* configuration, QWidget* parent = nullptr);
    ~zoAssistantPanel() override;

    // A button with this object name below the others. While the host does not offer what it needs it is disabled and
    // its tool tip says why.
    void addTask(const char* name, const QString& title, const QString& description, const QString& icon,
                 Needs needs, const std::function<void()>& start);

    // Nothing that goes on outside reaches it any more; its buttons do nothing.
    void retire();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void refresh();
    void showOpen();
    QString hindranceOf(Needs needs) const;

    struct Task
    {
        QCommandLinkButton* button;
        Needs needs;
    };

    QPointer<zoConfigurationService> m_configuration;
    std::vector<Task> m_tasks;
    QTimer m_timer; // until what is open is read again
    QVBoxLayout* m_buttons;
    QLabel* m_hindrance;
    QLabel* m_open;
    zoAssistantRoomView* m_room;
};
