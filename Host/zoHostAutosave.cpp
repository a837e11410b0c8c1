#include "zoHostAutosave.h"

#include "zoHostDocument.h"
#include "zoHostEarlierConfigurations.h"
#include "zoHostFileGuard.h"
#include "zoHostMainWindow.h"

#include <zoLog.h>
#include <zoPreferencesService.h>

namespace
{
constexpr char s_secondsKey[] = "Autosave seconds";
constexpr int s_mostSeconds = 24 * 60 * 60;
} // namespace

zoHostAutosave::zoHostAutosave(zoHostMainWindow* window, zoHostEarlierConfigurations* earlier, int seconds,
                               QObject* parent)
    : QObject(parent), m_window(window), m_earlier(earlier)
{
    connect(&m_timer, &QTimer::timeout, this, &zoHostAutosave::keep);
    connect(window->document(), &zoHostDocument::changed, this, &zoHostAutosave::forgetSaved);
    connect(window, &zoHostMainWindow::closing, this, &zoHostAutosave::forgetAll);
    setSeconds(seconds);
}

zoHostAutosave::~zoHostAutosave() = default;

int zoHostAutosave::storedSeconds(zoPreferencesService* preferences)
{
    bool ok = false;
    const int seconds = preferences->getString(QLatin1String(s_secondsKey), QString()).toInt(&ok);
    return ok ? qBound(0, seconds, s_mostSeconds) : DefaultSeconds;
}

void zoHostAutosave::storeSeconds(zoPreferencesService* preferences, int seconds)
{
    preferences->setString(QLatin1String(s_secondsKey), QString::number(seconds));
}

void zoHostAutosave::setSeconds(int seconds)
{
    if (seconds > 0)
        m_timer.start(seconds * 1000);
    else
        m_timer.stop();
}

void zoHostAutosave::keep()
{
    const zoHostDocument* document = m_window->document();
    const QList<QWidget*> windows = m_window->moduleWindows();
    QString reason;
    for (int place = 0; place < windows.size(); ++place) {
        const QWidget* const window = windows.at(place);
        if (document->differs(window))
            m_earlier->keepRunning(place, document->text(window), window->windowFilePath(), reason,
                                   m_window->guard()->sumOf(window->windowFilePath()));
        else
            m_earlier->forgetRunning(place);
    }
    if (!reason.isEmpty() && !m_hasFailed)
        zoLog::error(tr("Changes that are not saved cannot be kept for the case of a crash: %1. Save them.")
                         .arg(reason));
    m_hasFailed = !reason.isEmpty();
}

void zoHostAutosave::forgetSaved()
{
    const QList<QWidget*> windows = m_window->moduleWindows();
    for (int place = 0; place < windows.size(); ++place) {
        if (m_earlier->hasRunning(place) && !m_window->document()->differs(windows.at(place)))
            m_earlier->forgetRunning(place);
    }
}

void zoHostAutosave::forgetAll()
{
    m_timer.stop();
    for (int place = 0; place < m_window->moduleWindows().size(); ++place)
        m_earlier->forgetRunning(place);
}
