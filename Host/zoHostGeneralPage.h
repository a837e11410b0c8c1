#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QSpinBox;
class zoPreferencesService;

// The preferences page "General": language, what is open at the start, how often unsaved work is kept, the unit of
// lengths.
class zoHostGeneralPage final : public QWidget
{
    Q_OBJECT

public:
    // Registers itself; the service outlives it.
    explicit zoHostGeneralPage(zoPreferencesService* preferences);
    ~zoHostGeneralPage() override;

    // Makes the stored unit that of the process.
    static void useUnit(zoPreferencesService* preferences);

signals:
    void autosaveSecondsChanged(int seconds);

private:
    void show();
    void save();
    void restoreDefaults();

    zoPreferencesService* m_preferences;
    QComboBox* m_language;
    QCheckBox* m_reopensLast;
    QCheckBox* m_showsStartPage;
    QSpinBox* m_autosave;
    QComboBox* m_unit;
};
