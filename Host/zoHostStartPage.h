#pragma once

#include <QWidget>

class QCheckBox;
class QCommandLinkButton;
class QListWidget;
class QListWidgetItem;
class zoHostRecentFiles;

// What a person sees who starts the host without a configuration: the ways to get one, the samples, and the files that
// were open last.
class zoHostStartPage final : public QWidget
{
    Q_OBJECT

public:
    explicit zoHostStartPage(zoHostRecentFiles* recent, QWidget* parent = nullptr); // recent not owned
    ~zoHostStartPage() override;

    // Not offered at first.
    void setOffersNewWall(bool on);
    void setShownAtStart(bool on);
    // While a session runs nothing may take the place of its configuration.
    void setOpenEnabled(bool enabled);
    // Gives the focus to the first offer.
    void focusFirst();

signals:
    void newWallRequested();
    void emptyRequested();
    void openRequested();
    void sampleChosen(const QString& fileName); // to be opened as a copy without a name
    void recentChosen(const QString& fileName);
    void manualRequested();
    void shownAtStartChanged(bool on);

private:
    QWidget* createActions();
    QWidget* createLists();
    void fillSamples();
    void fillRecent();

    zoHostRecentFiles* m_recentFiles;
    QCommandLinkButton* m_newWall = nullptr;
    QCommandLinkButton* m_open = nullptr;
    QCommandLinkButton* m_empty = nullptr;
    QListWidget* m_samples = nullptr;
    QListWidget* m_recent = nullptr;
    QCheckBox* m_shownAtStart;
    QWidget* m_body = nullptr;
};
