#pragma once

#include <QGenericPlugin>
#include <QObject>

// In a program of the toolkit that is started with QT_QPA_GENERIC_PLUGINS=zofirstwindow: waits until its first main window
// was painted and nothing is left to do, writes what that took and which libraries are there to the file that
// ZO_PROBE_FILE names, and ends the program.
class zoFirstWindowProbe final : public QObject
{
    Q_OBJECT

public:
    zoFirstWindowProbe();
    ~zoFirstWindowProbe() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void lookAgain();

    bool m_isPainted = false;
    int m_events = 0;      // of others, since it looked last
    int m_quietRounds = 0; // of the event loop
};

class zoFirstWindowPlugin final : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "zofirstwindow.json")

public:
    QObject* create(const QString& key, const QString& parameters) override;
};
