#pragma once

#include "zoHostEarlierConfigurations.h"

#include <QDialog>

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QSettings;
class QSplitter;
class QTreeWidget;

// The list of earlier configurations with a look into each, to bring one back.
class zoHostEarlierDialog final : public QDialog
{
    Q_OBJECT

public:
    // Neither is owned; the settings keep size and splitter.
    zoHostEarlierDialog(zoHostEarlierConfigurations* configurations, QSettings* settings,
                        QWidget* parent = nullptr);
    ~zoHostEarlierDialog() override;

    // While a session runs its configuration cannot be replaced.
    void setRunning(bool running);

    void done(int result) override;

signals:
    // Emitted once the dialog has closed.
    void bringBackRequested(const QString& text, const QString& originFile);
    // The same for one that its host could not save.
    void workRequested(const zoHostEarlierConfigurations::Entry& entry, const QString& text);

private:
    void setUpList();
    void setUpPreview();
    void fill();
    void showCurrent();
    void updateButton();
    void bringBack();

    zoHostEarlierConfigurations* m_configurations;
    QSettings* m_settings;
    QVector<zoHostEarlierConfigurations::Entry> m_entries; // by row
    QSplitter* m_splitter;
    QTreeWidget* m_list;
    QLabel* m_summary;
    QPlainTextEdit* m_preview;
    QLabel* m_hint;
    QPushButton* m_bringBack = nullptr; // owned by the buttons
    QString m_flaw;                     // why the current one cannot be brought back; empty: it can
    bool m_running = false;
};
