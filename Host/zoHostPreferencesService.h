#pragma once

#include <zoPreferencesService.h>

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <vector>

class QSettings;

// The preferences of the host: texts in its settings, and the pages of the preferences dialog.
class zoHostPreferencesService final : public QObject, public zoPreferencesService
{
    Q_OBJECT

public:
    struct Page
    {
        QString title;
        QPointer<QWidget> widget; // not owned
        std::function<void()> setDefaults;
        std::function<void()> saveChanges;
        std::function<void()> show;
    };

    explicit zoHostPreferencesService(QSettings* settings, QObject* parent = nullptr); // settings not owned
    ~zoHostPreferencesService() override;

    void registerPage(const QString& title, QWidget* page, std::function<void()> setDefaults,
                      std::function<void()> saveChanges, std::function<void()> show) override;
    QString getString(const QString& key, const QString& defaultValue) override;
    void setString(const QString& key, const QString& value) override;

    // In the order of registration; a page that was destroyed is no longer among them.
    const std::vector<Page>& pages() const { return m_pages; }
    // Forgets all pages, so that no code of a module is referred to any more.
    void clearPages();

private:
    QSettings* m_settings;
    std::vector<Page> m_pages;
};
