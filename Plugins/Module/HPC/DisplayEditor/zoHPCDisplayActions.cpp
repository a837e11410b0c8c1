#include "zoHPCDisplayActions.h"

#include "ui_zoHPCDisplayForm.h"
#include "zoHPCDisplayClipboard.h"
#include "zoHPCDisplayTrees.h"
#include "zoHPCProjectionItem.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>

namespace
{
QAction* add(QTreeWidget* tree, const char* text, QKeySequence::StandardKey key)
{
    auto* action = new QAction(QCoreApplication::translate("zoHPCDisplayGUII", text), tree);
    action->setShortcuts(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    tree->addAction(action);
    return action;
}

constexpr const char* DELETE = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Delete");
constexpr const char* COPY = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Copy");
constexpr const char* PASTE = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Paste");
constexpr const char* CONVERT = QT_TRANSLATE_NOOP("zoHPCDisplayGUII", "Convert to planes");
} // namespace

zoHPCDisplayActions::zoHPCDisplayActions(const Ui_zoHPCDisplayGUII& form)
    : m_ui(form)
    , m_deleteProjection(add(form.m_projectionTree, DELETE, QKeySequence::Delete))
    , m_copyProjection(add(form.m_projectionTree, COPY, QKeySequence::Copy))
    , m_pasteProjection(add(form.m_projectionTree, PASTE, QKeySequence::Paste))
    , m_convertToPlanes(add(form.m_projectionTree, CONVERT, QKeySequence::UnknownKey))
    , m_deleteDisplay(add(form.m_displayTree, DELETE, QKeySequence::Delete))
    , m_copyDisplay(add(form.m_displayTree, COPY, QKeySequence::Copy))
    , m_pasteDisplay(add(form.m_displayTree, PASTE, QKeySequence::Paste))
{
}

void zoHPCDisplayActions::update(const zoHPCDisplayTrees& trees, const zoHPCDisplayClipboard& clipboard,
                                 bool isRunning)
{
    const zoHPCProjectionItem* const projection = trees.currentProjection();
    const bool isIndependent = projection && !projection->parent();
    m_deleteProjection->setEnabled(isIndependent && !isRunning);
    m_copyProjection->setEnabled(projection != nullptr);
    m_pasteProjection->setEnabled(clipboard.hasProjection() && !isRunning);
    m_convertToPlanes->setEnabled(isIndependent && projection->childCount() > 0 && !isRunning);
    m_ui.m_addProjectionButton->setEnabled(!isRunning);

    const bool hasOutput = trees.currentOutput() != nullptr;
    m_deleteDisplay->setEnabled(hasOutput && !isRunning);
    m_copyDisplay->setEnabled(hasOutput);
    m_pasteDisplay->setEnabled(clipboard.hasOutput() && !isRunning);
    m_ui.m_addDisplayButton->setEnabled(!isRunning);
    m_ui.m_addWindowButton->setEnabled(trees.currentDisplay() && !isRunning);
    m_ui.m_addViewportButton->setEnabled(trees.currentWindow() && !isRunning);
}
