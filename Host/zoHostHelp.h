#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class QWidget;
class zoHostManualWindow;
class zoHostModules;

// F1 anywhere in the host, its dialogs and those of its modules: the manual, at the page of what has the focus.
//
// A widget or one around it says its page with the property "manualPage" ("problems#empty-network"). A module's window
// may have the property "manualPages" instead: a map from object names to pages.
class zoHostHelp final : public QObject
{
    Q_OBJECT

public:
    zoHostHelp(const zoHostModules* modules, QWidget* window); // both outlive it; the window is the parent
    ~zoHostHelp() override;

    QString pageOf(const QWidget* widget) const; // the first page for a widget that nothing is said of

public slots:
    // The page of what has the focus.
    void show();
    void showPage(const QString& page);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; // of the application

private:
    QString ownPageOf(const QWidget* widget) const;

    const zoHostModules* m_modules;
    QWidget* m_window;
    QPointer<zoHostManualWindow> m_manual;
};
