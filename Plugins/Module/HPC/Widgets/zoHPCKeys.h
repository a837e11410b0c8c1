#pragma once

#include <QKeySequence>
#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

class QAbstractItemView;
class QAction;
class QContextMenuEvent;
class QKeyEvent;
class QWidget;

// The keys of a window of the module, for presses that nobody else takes: neither the widget with the focus nor
// the host, by whatever way that takes keys. No shortcut of Qt does that: one that a host has, too, works for
// neither. A key that is held is one press.
class zoHPCKeys final : public QObject
{
    Q_OBJECT

public:
    // For presses in the whole window of which `owner`, which becomes the parent, is a part while it is shown.
    explicit zoHPCKeys(QWidget* owner);

    // The shortcut triggers the action, when that is enabled; menus show it.
    void add(QAction* action, const QKeySequence& key);
    // The same for an action of the view's context menu, while the view has the focus.
    void add(QAbstractItemView* view, QAction* action, QKeySequence::StandardKey key);
    // While `focus` has the focus. A view that would search its rows for the key does not get it.
    void add(QWidget* focus, const QKeySequence& key, std::function<void()> run);
    // Text fields would take some of the keys for themselves, as for the undo of their own: those that are there now
    // leave them to the window, except those with the property "keepsOwnUndo".
    void takeFromFields();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entry
    {
        QKeySequence key;
        QPointer<QAction> action;
        QPointer<QWidget> focus;
        std::function<void()> run;
        bool needsFocus;
    };

    const Entry* entryFor(const QKeyEvent& event) const;
    bool showMenu(const QObject* watched, const QContextMenuEvent& event) const;
    bool isTakenByOthers(const QKeyEvent& event);
    void watchWindow();

    QWidget* m_owner;
    QPointer<QWidget> m_window; // where presses arrive that no widget took
    std::vector<Entry> m_entries;
    bool m_isAsking = false;
};
