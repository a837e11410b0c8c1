#pragma once

#include <QDialog>
#include <QPointer>

#include <vector>

class QListWidget;
class QStackedWidget;
class zoHostPreferencesService;

// Edit > Preferences: the pages of the host and its modules. Shows the pages while it is open and gives them
// back, unowned, when it is destroyed.
class zoHostPreferencesDialog final : public QDialog
{
    Q_OBJECT

public:
    zoHostPreferencesDialog(zoHostPreferencesService* service, QWidget* parent); // service not owned
    ~zoHostPreferencesDialog() override;

    void accept() override;

private:
    void apply();
    void restoreDefaults();

    zoHostPreferencesService* m_service;
    QListWidget* m_titles;
    QStackedWidget* m_stack;
    std::vector<QPointer<QWidget>> m_shown;
};
