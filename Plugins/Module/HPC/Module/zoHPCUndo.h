#pragma once

#include "zoHPCHistory.h"

#include <QAction>
#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class QPushButton;
class QTreeWidget;
class zoHPCDisplayGUII;
class zoHPCTreeEditGUIW;
class zoHPCTreeGUIW;

// Undo and redo of the cluster window: listens to the trees and the editor, and makes a step of what changed
// whenever a person did something. What is typed into one field is one step. The display setup has steps of its own
// while it is open; once it is closed they are one step of the window.
class zoHPCUndo final : public QObject
{
    Q_OBJECT

public:
    // What it works on; nothing is owned, all outlive it.
    struct Parts
    {
        zoHPCTreeGUIW* tree;
        zoHPCTreeEditGUIW* editor;
        zoHPCDisplayGUII* dialog;
        // The configuration as it is.
        std::function<QString()> text;
        // Makes it that of `to`, from that of `from`; calls `showPlace` once the rows are there.
        std::function<void(const QString& from, const QString& to, const std::function<void()>& showPlace)>
            restore;
    };

    explicit zoHPCUndo(const Parts& parts, QObject* parent = nullptr);
    ~zoHPCUndo() override;

    // Nothing that goes on outside of the window reaches it any more.
    void retire();
    // Another configuration: there is nothing to go back to.
    void reset();
    // What changed until now is a step.
    void commit();
    // The configuration as it is, without being written anew when nothing changed.
    const QString& text();
    // While a session runs rows neither come nor go: steps that would let them wait until it ends.
    void setRunning(bool running);

    // Of the window, or of the display setup while that is open. Enabled while there is such a step; its text is
    // the name of the step.
    QAction* undoAction() { return &m_undoAction; }
    QAction* redoAction() { return &m_redoAction; }
    bool isDialogOpen() const { return m_isDialogOpen; }
    // Not while the display setup is open or a session runs.
    bool mayReplace() const { return !m_isRestoring && !m_isDialogOpen && !m_isRunning; }
    // Another configuration as a step of the window with this name, when it may be replaced.
    void replace(const QString& text, const QString& name);
    void undo();
    void redo();

    const zoHPCHistory& steps() const { return m_isDialogOpen ? m_dialogSteps : m_windowSteps; }

signals:
    // Of one of the actions.
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    zoHPCHistory& active() { return m_isDialogOpen ? m_dialogSteps : m_windowSteps; }
    void createActions();
    void follow(QTreeWidget* tree);
    void noteChange(bool isMerelyShown);
    void notePlace();
    void leaveField(const QWidget* field);
    void record(const QString& text, const QString& name);
    void openDialog();
    void closeDialog();
    void restore(bool isUndo);
    bool isPossible(const zoHPCHistory::Step* step) const;
    QByteArray place() const;
    void showPlace(const QByteArray& place) const;
    void updateActions();
    static void show(const QAction& action, QPushButton& button);
    // The field of the window or the dialog that has the focus; null when none has it.
    QWidget* focusedField() const;

    Parts m_parts;
    QTreeWidget* m_hosts;
    QTreeWidget* m_projections;
    QTreeWidget* m_outputs;
    zoHPCHistory m_windowSteps;
    zoHPCHistory m_dialogSteps;
    QAction m_undoAction;
    QAction m_redoAction;
    QTimer m_timer{this};          // until what changed is a step
    QTimer m_placeTimer{this};     // until a person has come to another place
    QByteArray m_place;            // before what changes now
    QPointer<QWidget> m_field;     // what is changed now is changed in it
    QPointer<QWidget> m_openField; // the last step goes on while it has the focus
    bool m_isPending = false;
    bool m_isMerelyShown = false;
    bool m_isRestoring = false;
    bool m_isDialogOpen = false;
    bool m_isRunning = false;
};
