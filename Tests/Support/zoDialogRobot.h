#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class QDialog;

// Waits for the next modal dialog of the application and handles it, so that a test can call what runs it.
class zoDialogRobot final : public QObject
{
    Q_OBJECT

public:
    // `handle` gets the dialog once it is visible and must close it.
    explicit zoDialogRobot(std::function<void(QDialog*)> handle);
    ~zoDialogRobot() override;

    // How many dialogs came; one robot handles the first only.
    int handled() const;

private:
    void look();

    std::function<void(QDialog*)> m_handle;
    QTimer m_timer;
    int m_handled = 0;
};
