#include "zoHPCKeys.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
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
    m_entries.push_back({key, action, nullptr, [action] { action->trigger(); }});
}

void zoHPCKeys::add(QWidget* focus, const QKeySequence& key, std::function<void()> run)
{
    focus->installEventFilter(this);
    m_entries.push_back({key, nullptr, focus, std::move(run)});
}

bool zoHPCKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_owner && (event->type() == QEvent::Show || event->type() == QEvent::ParentChange))
        watchWindow();
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
        const bool isReady = entry.action ? entry.action->isEnabled()
                                          : entry.focus && entry.focus == QApplication::focusWidget();
        if (entry.key == pressed && isReady)
            return &entry;
    }
    return nullptr;
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
