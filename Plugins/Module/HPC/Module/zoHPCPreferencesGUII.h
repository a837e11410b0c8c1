#pragma once

#include <QWidget>

#include <memory>

class Ui_zoHPCPreferencesGUII;

// The page of the module in the host's preferences: which cluster configuration is loaded at start.
class zoHPCPreferencesGUII final : public QWidget
{
    Q_OBJECT

public:
    // Registers the page with the host's preferences service; without one the page stands alone.
    explicit zoHPCPreferencesGUII(QWidget* parent = nullptr);
    ~zoHPCPreferencesGUII() override;

public slots:
    void clickedBrowse();

private:
    void showStored();
    void storeShown();
    void storeDefaults();

    const std::unique_ptr<Ui_zoHPCPreferencesGUII> m_ui;
};

extern "C" {
// Entry of the preferences page: creates it at the first call. The page is destroyed with its parent where
// the host gave it one, else when the library is unloaded.
Q_DECL_EXPORT void initPreferencesPlugin();
}
