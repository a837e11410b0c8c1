#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QAction;
class QDialog;
class zoAssistantPanel;
class zoConfigurationService;

// The module object of the assistant: registers its panel with the host and opens its dialogs. One per process, created
// by initPlugin(). The host may invoke its slots by name; they do nothing where nobody is there to answer, and while one
// of its dialogs is open.
class zoAssistant final : public QObject
{
    Q_OBJECT

public:
    zoAssistant();
    ~zoAssistant() override;

public slots:
    void newWall();
    void measuredRoom();
    void report();
    void printReport();

private:
    void createPanel();
    void createAction();
    bool mayOpen() const;
    void open(QDialog* dialog);

    QPointer<zoConfigurationService> m_configuration; // of the host, which may have none
    QPointer<zoAssistantPanel> m_panel;               // owned by the host's main window
    QPointer<QDialog> m_dialog;                       // likewise; the one that is open
    QString m_measurements;                           // what was typed last
    QAction* m_action = nullptr;
};
