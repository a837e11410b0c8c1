#pragma once

#include "zoHPCConfigurationFiles.h"
#include "zoHPCReplacedOptions.h"

#include <QMainWindow>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>

class QAction;
class Ui_zoHPCGUIW;
class zoHPCConfigEditGUIW;
class zoHPCDisplayGUII;
class zoHPCRenderNodes;
class zoHPCStatusPane;
class zoHPCTreeEditGUIW;
class zoHPCTreeGUIW;
class zoHPCTreeItem;
class zoHPCUndo;

// The cluster window: host tree and node editor side by side, the display-setup dialog, and the configuration
// with its files. It asks for sessions through its signals and shows the state that it is told.
//
// What a host can know about the configuration:
//
// - windowFilePath() is the file that is open, empty when there is none. After each change of it the window gets
//   a QEvent::WindowTitleChange.
//
// - isWindowModified() tells whether the configuration differs from that file, or without one from its state at
//   the last New, Load, Import or Save. It follows a moment after the last change, with a QEvent::ModifiedChange;
//   the property "differs" compares at once. The property "configuration" is the text.
//
// - When a file is read, the dynamic property "readFile" holds its path for the time of one
//   QDynamicPropertyChangeEvent; then it is reset.
//
// - Before New, Load, Import or the cluster service replaces the configuration, the dynamic property
//   "replacedConfiguration" holds its text for the time of one QDynamicPropertyChangeEvent; then it is reset to
//   an invalid value, with another event, which listeners ignore. Nothing is announced when nothing gets lost:
//   because the same configuration comes again, or because the one that goes is empty or was never touched since
//   the window was built or New was chosen.
//
// - The dynamic properties "undoStep" and "redoStep" hold the names of the steps that the slots undo() and redo()
//   would take, "Delete projection Wall"; they are empty when there is none, as while the display setup is open.
//   Each change of one is a QDynamicPropertyChangeEvent. New, Load, Import and a configuration that the cluster
//   service brings begin without steps.
//
// - The dynamic property "revision" is a number that rises a moment after the configuration changed, with a
//   QDynamicPropertyChangeEvent.
class zoHPCGUIW : public QMainWindow
{
    Q_OBJECT
    Q_PROPERTY(bool differs READ differs)
    Q_PROPERTY(QString configuration READ documentText)

public:
    zoHPCGUIW(QWidget* parent, const QString& name);
    ~zoHPCGUIW() override;

    zoHPCTreeGUIW* getTree() const;
    zoHPCTreeEditGUIW* getEditor() const;
    zoHPCDisplayGUII* getDisplayEditor() const; // for hosts and tests
    zoHPCUndo* undoSteps() const;

    QSize sizeHint() const override;
    void setVisible(bool visible) override;

    // Start enabled or, when not, Stop.
    void setStartEnabled(bool enabled);
    // `nodes` are the ids of the nodes of the running session.
    void setIsRunning(bool running, const QStringList& nodes);
    // Shows the action that lets people read the document's text.
    void setAdvanced(bool advanced);

    // The configuration as text, built from the tree and the displays as they are. A hosts file that the tree is
    // linked with is read first.
    QString getConfigString();
    // Replaces tree and displays. A text that is no document empties both and is reported in the log.
    void setConfigString(const QString& text);
    // The same for a configuration that takes the place of another one, which is announced first. Returns
    // documentText().
    QString replaceConfigString(const QString& text);
    // The configuration as text as it is now. Reads no hosts file and leaves everything as it is.
    QString documentText() const;

    // Whether the configuration is another one than that of the open file, or than the last New, Load, Import or
    // Save left. A change that was undone by hand is none.
    bool differs() const;

    // Where the file dialogs open: the directory of the file last loaded or saved, at first the host's samples.
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
    // Appends ".zhpc" when missing. The old file stays whole until the new one is written completely; a name that
    // cannot be opened changes nothing, a failure after that is reported in the log.
    void saveConfig(const QString& fileName);
    void setDefaultConfig();
    void editConfig();

    // One step back and forth. What was selected, expanded and in view comes back with it. While a session runs the
    // service gets the configuration once. Without such a step they do nothing.
    void undo();
    void redo();
    // Another configuration in place of this one, which stays open as its file: one step with this name, "New wall".
    // False, and nothing changes, when the text is no configuration, while a session runs and while the display setup
    // is open.
    bool replaceConfiguration(const QString& text, const QString& step);

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
    void createKeys();
    void createMenus();
    void createToolBars();
    void createSplitter();
    void createStatusBar();
    void followChanges();
    // Announces that the configuration goes, unless the same one comes; returns its text.
    QString announceReplacement(const QString& coming);
    // Loads both sections; false when the text holds neither.
    bool readText(const QString& text);
    void replaceContents(const std::function<void()>& replace);
    void createUndo();
    void restoreText(const QString& from, const QString& to, const std::function<void()>& showPlace);
    void showSteps();
    void takeAsSaved(const QString& text);
    // The same after reading a configuration, which differs from what was read where the node editor replaced
    // values that it cannot show. `text` is that of now.
    void takeAsRead(const QString& text);
    QString textBeforeReplacing();
    void showFile();
    void showDiffers(bool differs);
    void showContents();
    void announceRevision();
    void refreshStatus();
    void refreshStatusLater();

    const std::unique_ptr<Ui_zoHPCGUIW> m_ui;
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
    zoHPCUndo* m_undo = nullptr;
    std::unique_ptr<zoHPCRenderNodes> m_renderNodes;
    zoHPCConfigurationFiles m_files;
    QString m_lastConfig;                   // the text last built, read or applied
    bool m_isReplacing = false;             // tree and displays are being replaced
    zoHPCReplacedOptions m_replacedOptions; // since tree and displays were replaced
    zoHPCStatusPane* m_statusPane = nullptr;
    QTimer m_statusTimer{this}; // context of what it hears: goes before the trees do
    bool m_changedWhileWaiting = false;
    QString m_announcedText; // the one that "revision" counted last
    // The last one shown; dialogs of this kind have no parent.
    std::unique_ptr<zoHPCConfigEditGUIW> m_configDialog;
};
