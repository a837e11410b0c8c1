#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QToolButton;
class zoParaViewService;

// How a person's ParaView connects to the running session: the command to copy, a button that starts it here, and what
// a changed configuration would need.
class zoHostConnectionPanel final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHostConnectionPanel(zoParaViewService* cluster,
                                   QWidget* parent = nullptr); // outlives the panel
    ~zoHostConnectionPanel() override;

signals:
    void restartRequested();

private:
    void refresh();
    void startClient();

    zoParaViewService* m_cluster;
    QLabel* m_state;
    QLineEdit* m_command;
    QToolButton* m_copy;
    QToolButton* m_start;
    QLabel* m_change;
    QToolButton* m_restart;
};
