#include "zoHostPreferencesService.h"

#include <QSettings>

#include <algorithm>

namespace
{
QString settingsKey(const QString& key)
{
    return QStringLiteral("Preferences/") + key;
}

// Shares no data with `text`, which may lie in a module that is unloaded earlier.
QString deepCopy(const QString& text)
{
    return QString(text.constData(), text.size());
}
} // namespace

zoHostPreferencesService::zoHostPreferencesService(QSettings* settings, QObject* parent)
    : QObject(parent), m_settings(settings)
{
}

zoHostPreferencesService::~zoHostPreferencesService() = default;

void zoHostPreferencesService::registerPage(const QString& title, QWidget* page,
                                            std::function<void()> setDefaults,
                                            std::function<void()> saveChanges, std::function<void()> show)
{
    if (page == nullptr)
        return;
    // The callbacks live in the module of the page, so they go with the page.
    connect(page, &QObject::destroyed, this, [this](QObject* gone) {
        m_pages.erase(std::remove_if(m_pages.begin(), m_pages.end(),
                                     [gone](const Page& entry) {
                                         return entry.widget.isNull() || entry.widget.data() == gone;
                                     }),
                      m_pages.end());
    });
    m_pages.push_back(
        {deepCopy(title), page, std::move(setDefaults), std::move(saveChanges), std::move(show)});
}

QString zoHostPreferencesService::getString(const QString& key, const QString& defaultValue)
{
    const QString stored = settingsKey(key);
    return m_settings->contains(stored) ? m_settings->value(stored).toString() : defaultValue;
}

void zoHostPreferencesService::setString(const QString& key, const QString& value)
{
    m_settings->setValue(settingsKey(key), deepCopy(value));
}

void zoHostPreferencesService::clearPages()
{
    for (const Page& page : m_pages) {
        if (page.widget)
            disconnect(page.widget, nullptr, this, nullptr);
    }
    m_pages.clear();
}
