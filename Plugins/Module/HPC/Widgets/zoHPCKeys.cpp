#include "zoHPCKeys.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QScopedValueRollback>
#include <QWidget>

#include <utility>

namespace
{
QKeySequence sequenceOf(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers =
        event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return QKeySequence(event.key() | int(modifiers));
}

void trigger(const QPointer<QAction>& action)
{
    if (action)
        action->trigger();
}
} // namespace

zoHPCKeys::zoHPCKeys(QWidget* owner) : QObject(owner), m_owner(owner)
{
    owner->installEventFilter(this);
    // A combo box searches its rows for every key that has a character, and Ctrl+S has one.
    const QList<QComboBox*> combos = owner->findChildren<QComboBox*>();
    for (QComboBox* combo : combos)
        combo->installEventFilter(this);
}

void zoHPCKeys::add(QAction* action, const QKeySequence& key)
{
    action->setShortcut(key);
    // Of no widget that ever has the focus: shown in menus and given to nobody.
    action->setShortcutContext(Qt::WidgetShortcut);
    m_entries.push_back(
        {key, action, nullptr, [pointer = QPointer<QAction>(action)] { trigger(pointer); }, false});
}

void zoHPCKeys::add(QAbstractItemView* view, QAction* action, QKeySequence::StandardKey key)
{
    view->installEventFilter(this);
    view->viewport()->installEventFilter(this);
    // X11 has Ctrl+D for the character behind the cursor of a text: no row is deleted by that.
    const QKeySequence characterKey(int(Qt::CTRL) | Qt::Key_D);
    const QList<QKeySequence> keys = QKeySequence::keyBindings(key);
    for (const QKeySequence& one : keys) {
        if (one != characterKey)
            m_entries.push_back(
                {one, action, view, [pointer = QPointer<QAction>(action)] { trigger(pointer); }, true});
    }
}

void zoHPCKeys::add(QWidget* focus, const QKeySequence& key, std::function<void()> run)
{
    focus->installEventFilter(this);
    m_entries.push_back({key, nullptr, focus, std::move(run), true});
}

void zoHPCKeys::takeFromFields()
{
    const QList<QLineEdit*> lines = m_owner->findChildren<QLineEdit*>();
    for (QLineEdit* line : lines) {
        if (!line->property("keepsOwnUndo").toBool())
            line->installEventFilter(this);
    }
    const QList<QAbstractSpinBox*> numbers = m_owner->findChildren<QAbstractSpinBox*>();
    for (QAbstractSpinBox* number : numbers)
        number->installEventFilter(this);
}

bool zoHPCKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_owner && (event->type() == QEvent::Show || event->type() == QEvent::ParentChange))
        watchWindow();
    if (event->type() == QEvent::ContextMenu)
        return showMenu(watched, *static_cast<QContextMenuEvent*>(event));
    if (event->type() != QEvent::KeyPress || m_isAsking)
        return false;
    auto* press = static_cast<QKeyEvent*>(event);
    const Entry* entry = entryFor(*press);
    if (entry == nullptr)
        return false;
    if (watched != m_window) {
        // On its way to the window: past a view or a combo box, which would search its rows for it.
        const bool isField = watched != m_owner && qobject_cast<QWidget*>(watched)->window() == m_window;
        if (isField)
            press->ignore();
        return isField;
    }
    if (!isTakenByOthers(*press) && !press->isAutoRepeat()) {
        const std::function<void()> run = entry->run;
        run(); // may end this window
    }
    press->accept();
    return true;
}

const zoHPCKeys::Entry* zoHPCKeys::entryFor(const QKeyEvent& event) const
{
    if (!m_owner->isVisible())
        return nullptr;
    const QKeySequence pressed = sequenceOf(event);
    for (const Entry& entry : m_entries) {
        const bool hasFocus = entry.focus && entry.focus == QApplication::focusWidget();
        const bool isReady = (!entry.needsFocus || hasFocus) && (!entry.action || entry.action->isEnabled());
        if (entry.key == pressed && isReady)
            return &entry;
    }
    return nullptr;
}

// A view's actions have their shortcuts while its menu shows them, and not while it has the focus: that would make
// a key of the host ambiguous.
bool zoHPCKeys::showMenu(const QObject* watched, const QContextMenuEvent& event) const
{
    std::vector<QPointer<QAction>> shown;
    QPointer<QWidget> view;
    for (const Entry& entry : m_entries) {
        if (!entry.action || !entry.focus || (watched != entry.focus && watched->parent() != entry.focus))
            continue;
        view = entry.focus;
        if (entry.action->shortcut().isEmpty()) {
            entry.action->setShortcut(entry.key);
            entry.action->setShortcutContext(Qt::WidgetShortcut);
            shown.emplace_back(entry.action);
        }
    }
    if (!view)
        return false;
    QMenu::exec(view->actions(), event.globalPos(), nullptr, view);
    for (const QPointer<QAction>& action : shown) {
        if (action)
            action->setShortcut(QKeySequence());
    }
    return true;
}

bool zoHPCKeys::isTakenByOthers(const QKeyEvent& event)
{
    const QScopedValueRollback<bool> asking(m_isAsking, true);
    QKeyEvent copy(event.type(), event.key(), event.modifiers(), event.nativeScanCode(),
                   event.nativeVirtualKey(), event.nativeModifiers(), event.text(), event.isAutoRepeat(),
                   ushort(event.count()));
    QCoreApplication::sendEvent(m_window, &copy);
    return copy.isAccepted();
}

void zoHPCKeys::watchWindow()
{
    QWidget* window = m_owner->window();
    if (window == m_window)
        return;
    if (m_window && m_window != m_owner)
        m_window->removeEventFilter(this);
    m_window = window;
    window->installEventFilter(this);
}
