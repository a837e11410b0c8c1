#pragma once

#include <zoBaseService.h>

#include <QString>

#include <functional>

class QWidget;

// The host's preferences: named texts that outlive the program, and the pages that edit them.
class ZO_KERNEL_EXPORT zoPreferencesService : public zoBaseService
{
public:
    ~zoPreferencesService() override;

    // Adds a page to the preferences dialog. The page is not owned and may be destroyed at any time, which
    // takes it out; the callbacks are called only while the page exists. `show` fills the page from the
    // stored values, `saveChanges` stores what the page shows, `setDefaults` stores the defaults.
    virtual void registerPage(const QString& title, QWidget* page, std::function<void()> setDefaults,
                              std::function<void()> saveChanges, std::function<void()> show) = 0;

    virtual QString getString(const QString& key, const QString& defaultValue) = 0;
    virtual void setString(const QString& key, const QString& value) = 0;
};
