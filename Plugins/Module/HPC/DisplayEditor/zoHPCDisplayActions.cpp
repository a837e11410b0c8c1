#include "zoHPCDisplayActions.h"

#include "ui_zoHPCDisplayForm.h"
#include "zoHPCDisplayClipboard.h"
#include "zoHPCDisplayTrees.h"
#include "zoHPCKeys.h"
#include "zoHPCProjectionItem.h"

#include <QAction>
#include <QCoreApplication>
#include <QItemSelectionModel>
#include <QKeySequence>

#include <algorithm>

namespace
{
QAction* add(QTreeWidget* tree, const char* text)
{
    auto* action = new QAction(QCoreApplication::translate("zoHPCDisplayGUII", text), tree);
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
    , m_deleteProjection(add(form.m_projectionTree, DELETE))
    , m_copyProjection(add(form.m_projectionTree, COPY))
    , m_pasteProjection(add(form.m_projectionTree, PASTE))
    , m_convertToPlanes(add(form.m_projectionTree, CONVERT))
    , m_deleteDisplay(add(form.m_displayTree, DELETE))
    , m_copyDisplay(add(form.m_displayTree, COPY))
    , m_pasteDisplay(add(form.m_displayTree, PASTE))
{
}

void zoHPCDisplayActions::addTo(zoHPCKeys& keys) const
{
    keys.add(m_ui.m_projectionTree, m_deleteProjection, QKeySequence::Delete);
    keys.add(m_ui.m_projectionTree, m_copyProjection, QKeySequence::Copy);
    keys.add(m_ui.m_projectionTree, m_pasteProjection, QKeySequence::Paste);
    keys.add(m_ui.m_displayTree, m_deleteDisplay, QKeySequence::Delete);
    keys.add(m_ui.m_displayTree, m_copyDisplay, QKeySequence::Copy);
    keys.add(m_ui.m_displayTree, m_pasteDisplay, QKeySequence::Paste);
}

void zoHPCDisplayActions::update(const zoHPCDisplayTrees& trees, const zoHPCDisplayClipboard& clipboard,
                                 bool isRunning)
{
    const zoHPCProjectionItem* const projection = trees.currentProjection();
    const bool isIndependent = projection && !projection->parent();
    const QList<QTreeWidgetItem*> selected = trees.projections()->selectedItems();
    const bool hasIndependent =
        selected.size() > 1 && std::any_of(selected.cbegin(), selected.cend(),
                                           [](const auto* row) { return row->parent() == nullptr; });
    m_deleteProjection->setEnabled((isIndependent || hasIndependent) && !isRunning);
    m_copyProjection->setEnabled(projection != nullptr);
    m_pasteProjection->setEnabled(clipboard.hasProjection() && !isRunning);
    m_convertToPlanes->setEnabled(isIndependent && projection->childCount() > 0 && !isRunning);
    m_ui.m_addProjectionButton->setEnabled(!isRunning);

    const bool hasOutput = trees.currentOutput() != nullptr;
    m_deleteDisplay->setEnabled((hasOutput || trees.outputs()->selectionModel()->hasSelection()) &&
                                !isRunning);
    m_copyDisplay->setEnabled(hasOutput);
    m_pasteDisplay->setEnabled(clipboard.hasOutput() && !isRunning);
    m_ui.m_addDisplayButton->setEnabled(!isRunning);
    m_ui.m_addWindowButton->setEnabled(trees.currentDisplay() && !isRunning);
    m_ui.m_addViewportButton->setEnabled(trees.currentWindow() && !isRunning);
}
