#include "zoHPCUndo.h"

#include "zoHPCDisplayGUII.h"
#include "zoHPCFieldLabel.h"
#include "zoHPCKeys.h"
#include "zoHPCStepName.h"
#include "zoHPCTreeEditGUIW.h"
#include "zoHPCTreeGUIW.h"
#include "zoHPCTreeItem.h"
#include "zoHPCTreePlace.h"
#include "zoText.h"

#include <QApplication>
#include <QDataStream>
#include <QEvent>
#include <QGuiApplication>
#include <QIODevice>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTreeWidget>

#include <utility>

namespace
{
// While a field is typed into or a button is held the text of the document is not built for each change (ms).
constexpr int QuietTime = 150;
} // namespace

zoHPCUndo::zoHPCUndo(const Parts& parts, QObject* parent)
    : QObject(parent)
    , m_parts(parts)
    , m_hosts(parts.tree->master()->treeWidget())
    , m_projections(parts.dialog->findChild<QTreeWidget*>(zoText("m_projectionTree")))
    , m_outputs(parts.dialog->findChild<QTreeWidget*>(zoText("m_displayTree")))
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        // A drag or a button that is held is not over.
        if (QGuiApplication::mouseButtons() != Qt::NoButton)
            m_timer.start(QuietTime);
        else
            commit();
    });
    m_placeTimer.setSingleShot(true);
    m_placeTimer.setInterval(0);
    connect(&m_placeTimer, &QTimer::timeout, this, [this] {
        if (!m_isPending)
            m_place = place();
    });
    connect(parts.tree, &zoHPCTreeGUIW::changed, this,
            [this] { noteChange(m_parts.editor->isShowingItem()); });
    connect(parts.editor, &zoHPCTreeEditGUIW::changed, this,
            [this] { noteChange(m_parts.editor->isShowingItem()); });
    connect(parts.dialog, &zoHPCDisplayGUII::changed, this, [this] { noteChange(false); });
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget* old) { leaveField(old); });
    for (QTreeWidget* tree : {m_hosts, m_projections, m_outputs})
        follow(tree);
    parts.dialog->installEventFilter(this);
    createActions();
    reset();
}

zoHPCUndo::~zoHPCUndo()
{
    m_parts.dialog->removeEventFilter(this);
}

void zoHPCUndo::retire()
{
    m_timer.stop();
    m_placeTimer.stop();
    disconnect(qApp, nullptr, this, nullptr);
    m_parts.dialog->removeEventFilter(this);
}

void zoHPCUndo::createActions()
{
    connect(&m_undoAction, &QAction::triggered, this, &zoHPCUndo::undo);
    connect(&m_redoAction, &QAction::triggered, this, &zoHPCUndo::redo);
    QPushButton* const undoButton = m_parts.dialog->undoButton();
    QPushButton* const redoButton = m_parts.dialog->redoButton();
    connect(undoButton, &QPushButton::clicked, &m_undoAction, &QAction::trigger);
    connect(redoButton, &QPushButton::clicked, &m_redoAction, &QAction::trigger);
    auto* keys = new zoHPCKeys(m_parts.dialog);
    keys->add(&m_undoAction, int(Qt::CTRL) | Qt::Key_Z);
    keys->add(&m_redoAction, Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
    keys->takeFromFields();
}

void zoHPCUndo::follow(QTreeWidget* tree)
{
    connect(tree, &QTreeWidget::currentItemChanged, this, &zoHPCUndo::notePlace);
    connect(tree, &QTreeWidget::itemSelectionChanged, this, &zoHPCUndo::notePlace);
    connect(tree, &QTreeWidget::itemExpanded, this, &zoHPCUndo::notePlace);
    connect(tree, &QTreeWidget::itemCollapsed, this, &zoHPCUndo::notePlace);
    connect(tree->verticalScrollBar(), &QScrollBar::valueChanged, this, &zoHPCUndo::notePlace);
    connect(tree->horizontalScrollBar(), &QScrollBar::valueChanged, this, &zoHPCUndo::notePlace);
}

void zoHPCUndo::reset()
{
    m_timer.stop();
    m_isPending = false;
    m_openField = nullptr;
    const QString text = m_parts.text();
    m_windowSteps.reset(text);
    m_dialogSteps.reset(text);
    m_place = place();
    updateActions();
}

void zoHPCUndo::setRunning(bool running)
{
    m_isRunning = running;
    updateActions();
}

const QString& zoHPCUndo::text()
{
    commit();
    return active().text();
}

void zoHPCUndo::noteChange(bool isMerelyShown)
{
    if (m_isRestoring)
        return;
    QWidget* const field = focusedField();
    m_isMerelyShown = isMerelyShown && (m_isMerelyShown || !m_isPending);
    const bool isFirst = !std::exchange(m_isPending, true);
    m_field = field;
    const bool isHeld =
        zoHPCFieldLabel::isTypedInto(field) || QGuiApplication::mouseButtons() != Qt::NoButton;
    m_timer.start(isHeld ? QuietTime : 0);
    if (isFirst)
        updateActions();
}

void zoHPCUndo::notePlace()
{
    if (!m_isRestoring && !m_isPending)
        m_placeTimer.start();
}

void zoHPCUndo::leaveField(const QWidget* field)
{
    if (field == nullptr || (field != m_openField && field != m_field))
        return;
    commit();
    active().close();
    m_openField = nullptr;
}

void zoHPCUndo::commit()
{
    if (!m_isPending || m_isRestoring)
        return;
    m_timer.stop();
    m_isPending = false;
    const QString text = m_parts.text();
    if (text == active().text())
        m_place = place();
    else if (m_isMerelyShown)
        active().absorb(text);
    else
        record(text, QString());
    m_isMerelyShown = false;
    updateActions();
}

void zoHPCUndo::record(const QString& text, const QString& name)
{
    zoHPCHistory& steps = active();
    const QByteArray before = std::exchange(m_place, place());
    if (m_place == before)
        m_place = before; // one text in memory
    const QString label = m_field ? zoHPCFieldLabel::of(*m_field) : QString();
    const auto nameOf = [&label](const zoHPCTextDelta& delta) { return zoHPCStepName(delta, label).text(); };
    const bool isTyped = zoHPCFieldLabel::isTypedInto(m_field);
    if (isTyped && m_field == m_openField && steps.extend(text, m_place, nameOf))
        return;
    zoHPCHistory::Step step;
    step.delta = zoHPCTextDelta::between(steps.text(), text);
    const zoHPCStepName stepName(step.delta, label);
    step.name = name.isEmpty() ? stepName.text() : name;
    step.isStructural = stepName.isStructural();
    step.placeBefore = before;
    step.placeAfter = m_place;
    steps.record(std::move(step), text);
    if (!isTyped)
        steps.close();
    m_openField = isTyped ? m_field : nullptr;
}

bool zoHPCUndo::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_parts.dialog && !event->spontaneous()) {
        if (event->type() == QEvent::Show && !m_isDialogOpen)
            openDialog();
        else if (event->type() == QEvent::Hide && m_isDialogOpen)
            closeDialog();
    }
    return QObject::eventFilter(watched, event);
}

void zoHPCUndo::openDialog()
{
    m_timer.stop();
    m_isPending = false;
    m_isDialogOpen = true;
    m_openField = nullptr;
    m_dialogSteps.reset(m_parts.text());
    m_place = place();
    updateActions();
}

void zoHPCUndo::closeDialog()
{
    m_timer.stop();
    m_isPending = false;
    m_isDialogOpen = false;
    m_openField = nullptr;
    m_field = nullptr;
    const QString text = m_parts.text();
    m_dialogSteps.reset(text);
    m_place = place();
    if (text != m_windowSteps.text())
        record(text, tr("Change display setup"));
    updateActions();
}

void zoHPCUndo::replace(const QString& text, const QString& name)
{
    if (!mayReplace())
        return;
    commit();
    m_windowSteps.close();
    m_openField = nullptr;
    m_field = nullptr;
    {
        const QScopedValueRollback<bool> restoring(m_isRestoring, true);
        m_parts.restore(m_windowSteps.text(), text, [] {});
    }
    // As it is now: what the editor cannot show it has replaced.
    const QString now = m_parts.text();
    if (now != m_windowSteps.text())
        record(now, name);
    updateActions();
}

void zoHPCUndo::undo()
{
    restore(true);
}

void zoHPCUndo::redo()
{
    restore(false);
}

void zoHPCUndo::restore(bool isUndo)
{
    if (m_isRestoring)
        return;
    commit();
    zoHPCHistory& steps = active();
    const zoHPCHistory::Step* const step = isUndo ? steps.undoStep() : steps.redoStep();
    if (!isPossible(step))
        return;
    const QByteArray there = isUndo ? step->placeBefore : step->placeAfter;
    const QString from = steps.text();
    isUndo ? steps.undo() : steps.redo();
    {
        const QScopedValueRollback<bool> restoring(m_isRestoring, true);
        m_openField = nullptr;
        m_parts.restore(from, steps.text(), [this, &there] { showPlace(there); });
        // What the editor cannot show it has replaced.
        const QString text = m_parts.text();
        if (text != steps.text())
            steps.absorb(text);
    }
    m_place = place();
    updateActions();
}

bool zoHPCUndo::isPossible(const zoHPCHistory::Step* step) const
{
    return step != nullptr && !(m_isRunning && step->isStructural);
}

QByteArray zoHPCUndo::place() const
{
    QByteArray all;
    QDataStream stream(&all, QIODevice::WriteOnly);
    if (m_isDialogOpen)
        stream << zoHPCTreePlace::of(*m_projections) << zoHPCTreePlace::of(*m_outputs);
    else
        stream << zoHPCTreePlace::of(*m_hosts);
    return all;
}

void zoHPCUndo::showPlace(const QByteArray& place) const
{
    QDataStream stream(place);
    QByteArray one;
    if (!m_isDialogOpen) {
        stream >> one;
        zoHPCTreePlace::restore(*m_hosts, one);
        return;
    }
    QByteArray other;
    stream >> one >> other;
    // The tree with the selection last: it is the one that the panel follows.
    if (zoHPCTreePlace::isSelected(one)) {
        zoHPCTreePlace::restore(*m_outputs, other);
        zoHPCTreePlace::restore(*m_projections, one);
    } else {
        zoHPCTreePlace::restore(*m_projections, one);
        zoHPCTreePlace::restore(*m_outputs, other);
    }
}

void zoHPCUndo::updateActions()
{
    const zoHPCHistory::Step* const undoStep = active().undoStep();
    const zoHPCHistory::Step* const redoStep = active().redoStep();
    // What was just changed has no name before it is a step.
    m_undoAction.setEnabled(m_isPending || isPossible(undoStep));
    m_undoAction.setText(m_isPending || undoStep == nullptr ? QString() : undoStep->name);
    m_redoAction.setEnabled(!m_isPending && isPossible(redoStep));
    m_redoAction.setText(redoStep ? redoStep->name : QString());
    show(m_undoAction, *m_parts.dialog->undoButton());
    show(m_redoAction, *m_parts.dialog->redoButton());
    emit changed();
}

void zoHPCUndo::show(const QAction& action, QPushButton& button)
{
    button.setEnabled(action.isEnabled());
    const QString key = action.shortcut().toString(QKeySequence::NativeText);
    button.setToolTip(action.text().isEmpty() ? key : tr("%1 (%2)").arg(action.text(), key));
}

QWidget* zoHPCUndo::focusedField() const
{
    QWidget* const focus = QApplication::focusWidget();
    if (focus == nullptr || qobject_cast<QTreeWidget*>(focus) != nullptr)
        return nullptr;
    const QWidget* const form = m_isDialogOpen ? static_cast<QWidget*>(m_parts.dialog) : m_parts.editor;
    return form->isAncestorOf(focus) ? focus : nullptr;
}
