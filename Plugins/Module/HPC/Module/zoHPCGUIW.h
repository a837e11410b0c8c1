#pragma once

#include "ui_zoHPCGUIW.h"

#include <QMainWindow>
#include <QStringList>
#include <QTimer>

#include <memory>

class QAction;
class zoHPCConfigEditGUIW;
class zoHPCDisplayGUII;
class zoHPCStatusPane;
class zoHPCTreeEditGUIW;
class zoHPCTreeGUIW;

// The cluster window: host tree and node editor side by side, the display-setup dialog, and the configuration
// document with its files. It asks for sessions through its signals and shows the state that it is told.
//
// What a host can know about the document:
// - windowFilePath() is the file that is open, empty when there is none. After each change of it the window
// gets
//   a QEvent::WindowTitleChange.
// - isWindowModified() tells whether the document differs from that file, or without one from its state at
// the
//   last New, Load, Import or Save. It follows a moment after the last change, with a QEvent::ModifiedChange;
//   the property "differs" compares at once.
// - Before New, Load, Import or the cluster service replaces the document, the dynamic property
//   "replacedConfiguration" holds its text for the time of one QDynamicPropertyChangeEvent; then it is reset
//   to an invalid value, with another event, which listeners ignore. Nothing is told when nothing gets lost:
//   because the same document comes again, or because the one that goes is empty or was never touched since
//   the window was built or New was chosen.
class zoHPCGUIW : public QMainWindow, private Ui_zoHPCGUIW
{
    Q_OBJECT
    Q_PROPERTY(bool differs READ differs)
    Q_PROPERTY(QString configuration READ documentText)

public:
    zoHPCGUIW(QWidget* parent, const QString& name);
    ~zoHPCGUIW() override;

    zoHPCTreeGUIW* getTree() const;
    zoHPCTreeEditGUIW* getEditor() const;
    zoHPCDisplayGUII* getDisplayEditor() const;

    QSize sizeHint() const override;
    void setVisible(bool visible) override;

    // Start enabled or, when not, Stop.
    void setStartEnabled(bool enabled);
    // `nodes` are the ids of the nodes of the running session.
    void setIsRunning(bool running, const QStringList& nodes);
    // Shows the action that lets people read the document's text.
    void setAdvanced(bool advanced);

    // The configuration document as text, built from the tree and the displays as they are. A hosts file that
    // the tree is linked with is read first.
    QString getConfigString();
    // Replaces tree and displays. A text that is no document empties both and is reported in the log.
    void setConfigString(const QString& text);
    // The same for a document that takes the place of another one, which is announced first.
    void replaceConfigString(const QString& text);
    // The document's text as it is now. Reads no hosts file and leaves everything as it is.
    QString documentText() const;

    // Whether the document is another one than that of the open file, or than the last New, Load, Import or
    // Save left. A change that was undone by hand is none.
    bool differs() const;
    // To be called after a change of an item's options that no widget and no tree announces.
    void refreshStatusLater();

    // Where the file dialogs open: the directory of the file last loaded or saved, at first the host's
    // samples.
    QString getConfigPath();

public slots:
    void startCluster();
    void stopCluster();
    void displaySetup();
    void importLegacy();
    void updateDisplayState();

    void loadConfig();
    // A file that cannot be opened or read is reported in the log and changes nothing.
    void loadConfig(const QString& fileName);
    void saveConfig();
    void saveAsConfig();
    // Appends ".zhpc" when missing. The old file stays whole until the new one is written completely; a name
    // that cannot be opened changes nothing, a failure after that is reported in the log.
    void saveConfig(const QString& fileName);
    void setDefaultConfig();
    void editConfig();

signals:
    void startTriggered();
    void stopTriggered();
    void speedTestTriggered();
    // Declared for hosts that connect to these two by name; nothing emits them.
    void uploadToGCToggled(bool on);
    void renderingEnabledToggled(bool on);
    void showTilesToggled(bool on);
    void showTestImageToggled(bool on);
    void displayPropertiesChanged();

private:
    void createActions();
    void createMenus();
    void createToolBars();
    void createSplitter();
    void createStatusBar();
    void followChanges();
    void setCurrentFile(const QString& fileName);
    void announceReplacement(const QString& going);
    // Loads both sections; false when the text holds neither.
    bool readText(const QString& text);
    void takeAsSaved();
    void showFile();
    void showDiffers(bool differs);
    void showContents();
    void refreshStatus();

    QAction* m_newAction = nullptr;
    QAction* m_loadAction = nullptr;
    QAction* m_saveAction = nullptr;
    QAction* m_saveAsAction = nullptr;
    QAction* m_startAction = nullptr;
    QAction* m_stopAction = nullptr;
    QAction* m_editConfigAction = nullptr;
    QAction* m_speedTestAction = nullptr;
    QAction* m_showTilesAction = nullptr;
    QAction* m_showTestImageAction = nullptr;
    QAction* m_displaySetupAction = nullptr;
    QAction* m_importLegacyAction = nullptr;
    zoHPCTreeGUIW* m_tree = nullptr;
    zoHPCTreeEditGUIW* m_editor = nullptr;
    zoHPCDisplayGUII* m_displayEditor = nullptr;
    QString m_currentFile;
    QString m_configDirectory;
    QString m_lastConfig;
    QString m_savedText;     // of the file, or of the last New, Load or Import without one
    QString m_untouchedText; // of the window when it was built, or of the last New
    zoHPCStatusPane* m_statusPane = nullptr;
    QTimer m_statusTimer; // context of what it hears: goes before the trees do
    bool m_changedWhileWaiting = false;
    std::unique_ptr<zoHPCConfigEditGUIW>
        m_configDialog; // the last one shown; dialogs of this kind have no parent
};
