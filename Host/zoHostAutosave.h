#pragma once

#include <QObject>
#include <QSet>
#include <QTimer>

class zoHostEarlierConfigurations;
class zoHostMainWindow;
class zoPreferencesService;

// Keeps what is not saved among the earlier configurations, again and again while a person works, so that a crash
// costs no more than the last seconds. What is saved or given up is not kept any longer.
class zoHostAutosave final : public QObject
{
    Q_OBJECT

public:
    static constexpr int DefaultSeconds = 30;

    // Both outlive it. Zero seconds: never by itself.
    zoHostAutosave(zoHostMainWindow* window, zoHostEarlierConfigurations* earlier, int seconds,
                   QObject* parent = nullptr);
    ~zoHostAutosave() override;

    // The preference "Autosave seconds".
    static int storedSeconds(zoPreferencesService* preferences);
    static void storeSeconds(zoPreferencesService* preferences, int seconds);

    // From now on; zero: never by itself.
    void setSeconds(int seconds);
    bool isOn() const { return m_timer.isActive(); }
    int seconds() const { return m_timer.isActive() ? m_timer.interval() / 1000 : 0; } // for tests

    // Now. What is kept already is not written again; a disk that takes nothing is told of once.
    void keep();

private:
    void forgetSaved();
    void forgetAll();

    zoHostMainWindow* m_window;
    zoHostEarlierConfigurations* m_earlier;
    QTimer m_timer;
    bool m_hasFailed = false; // and the log says so
};
