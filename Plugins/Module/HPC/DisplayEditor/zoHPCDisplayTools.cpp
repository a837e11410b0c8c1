#include "zoHPCDisplayTools.h"

#include "ui_zoHPCDisplayForm.h"
#include "zoHPCButtonKeys.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCDisplayTrees.h"
#include "zoHPCKeys.h"
#include "zoHPCLayout.h"
#include "zoHPCLayoutPane.h"
#include "zoHPCProblemsView.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCReview.h"
#include "zoHPCSeveralPanel.h"
#include "zoHPCSurfaceDelegate.h"
#include "zoHPCTreeFilter.h"
#include "zoHPCTreeRows.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowSeries.h"

#include <QApplication>
#include <QCoreApplication>
#include <QHeaderView>
#include <QItemSelection>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QSignalBlocker>

#include <algorithm>

namespace
{
// Beside the columns that hold properties: it is shown, never saved.
constexpr int s_nodeColumn = zoHPCProjectionItem::ColumnCount;

QString projectionText(const QTreeWidgetItem& row)
{
    const zoHPCProjectionType& type =
        zoHPCProjectionType::of(row.data(zoHPCProjectionItem::Type, Qt::EditRole).toString());
    return row.text(zoHPCProjectionItem::Name) + QLatin1Char(' ') + row.text(s_nodeColumn) +
           QLatin1Char(' ') + QCoreApplication::translate("zoHPCDisplayGUII", type.text);
}

QString outputText(const QTreeWidgetItem& row)
{
    QStringList texts{row.text(0)};
    if (const auto* viewport = dynamic_cast<const zoHPCViewportItem*>(&row)) {
        const QString eye = viewport->getString(zoHPCViewportItem::Eye);
        const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(eye);
        texts << eye << viewport->getString(zoHPCViewportItem::Position);
        if (mode)
            texts << QCoreApplication::translate("zoHPCDisplayGUII", mode->text);
    } else if (const auto* window = dynamic_cast<const zoHPCWindowItem*>(&row)) {
        texts << window->getString(zoHPCWindowItem::Width) + QLatin1Char('x') +
                     window->getString(zoHPCWindowItem::Height);
        const QString screen = window->getString(zoHPCWindowItem::Screen);
        for (const zoHPCDisplayTables::ComboRow& one : zoHPCDisplayTables::Screens) {
            if (screen == QLatin1String(one.value))
                texts << QCoreApplication::translate("zoHPCDisplayGUII", "Screen") + QLatin1Char(':') +
                             QCoreApplication::translate("zoHPCDisplayGUII", one.text);
        }
        if (window->getBool(zoHPCWindowItem::FullScreen))
            texts << QCoreApplication::translate("zoHPCDisplayGUII", "Full screen");
    } else if (const auto* display = dynamic_cast<const zoHPCDisplayItem*>(&row)) {
        texts << display->getCameraName() << display->getString(zoHPCDisplayItem::User);
    }
    return texts.join(QLatin1Char(' '));
}
} // namespace

zoHPCDisplayTools::zoHPCDisplayTools(const Parts& parts, QObject* parent) : QObject(parent), m_parts(parts)
{
    for (QTreeWidget* tree : {m_parts.trees.projections(), m_parts.trees.outputs()}) {
        tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
        connect(tree, &QTreeWidget::currentItemChanged, this, [this, tree] { markRows(*tree); });
    }
    createNodeColumn();
    createFilters();
    createDuplicateButton();
    createSeveralPanel();
    createProjectionNote();
    orderTabs();
    zoHPCButtonKeys::addTo(*m_parts.form.m_buttonBox);
}

zoHPCDisplayTools::~zoHPCDisplayTools() = default;

void zoHPCDisplayTools::createFilters()
{
    m_projectionFilter = new zoHPCTreeFilter(m_parts.trees.projections(), projectionText);
    m_projectionFilter->field()->setObjectName(QString::fromLatin1("m_projectionFilter"));
    m_projectionFilter->field()->setAccessibleName(tr("Filter of the projections"));
    m_parts.form.m_projectionSideLayout->insertWidget(0, m_projectionFilter);
    m_outputFilter = new zoHPCTreeFilter(m_parts.trees.outputs(), outputText);
    m_outputFilter->field()->setObjectName(QString::fromLatin1("m_outputFilter"));
    m_outputFilter->field()->setAccessibleName(tr("Filter of windows and viewports"));
    m_parts.form.m_displaySideLayout->insertWidget(0, m_outputFilter);
    connect(&m_findAction, &QAction::triggered, this, &zoHPCDisplayTools::focusFilter);
}

void zoHPCDisplayTools::createDuplicateButton()
{
    m_duplicateButton = new QPushButton(tr("Duplicate"));
    m_duplicateButton->setObjectName(QString::fromLatin1("m_duplicateButton"));
    m_duplicateButton->setToolTip(
        tr("Copies the selected windows to the nodes that follow theirs; each copy shows "
           "the tile that follows (Ctrl+D)"));
    m_duplicateButton->setAutoDefault(false);
    m_parts.form.m_displayButtons->addWidget(m_duplicateButton, 1, 1);
    connect(m_duplicateButton, &QPushButton::clicked, this, &zoHPCDisplayTools::duplicate);
    connect(&m_duplicateAction, &QAction::triggered, this, &zoHPCDisplayTools::duplicate);
}

void zoHPCDisplayTools::createSeveralPanel()
{
    m_panel = new zoHPCSeveralPanel(m_parts.form.m_renderNode->model());
    m_parts.form.m_panels->addWidget(m_panel);
    connect(m_panel, &zoHPCSeveralPanel::windowsChanged, this, &zoHPCDisplayTools::setWindows);
    connect(m_panel, &zoHPCSeveralPanel::viewportsChanged, this, &zoHPCDisplayTools::setViewports);
    connect(m_panel, &zoHPCSeveralPanel::nodesChosen, this, &zoHPCDisplayTools::setNodes);
    connect(m_panel, &zoHPCSeveralPanel::duplicateClicked, this, &zoHPCDisplayTools::duplicate);
}

// The fields of projections are those of one row.
void zoHPCDisplayTools::createProjectionNote()
{
    m_projectionNote = new QLabel;
    m_projectionNote->setObjectName(QString::fromLatin1("m_projectionNote"));
    m_projectionNote->setWordWrap(true);
    m_projectionNote->hide();
    m_parts.form.m_projectionPageLayout->insertWidget(0, m_projectionNote);
    const QTreeWidget* const tree = m_parts.trees.projections();
    connect(tree, &QTreeWidget::itemSelectionChanged, this, &zoHPCDisplayTools::showProjectionNote);
    connect(tree, &QTreeWidget::currentItemChanged, this, &zoHPCDisplayTools::showProjectionNote);
    connect(tree, &QTreeWidget::itemChanged, this, &zoHPCDisplayTools::showProjectionNote);
}

void zoHPCDisplayTools::showProjectionNote() const
{
    const zoHPCProjectionItem* const current = m_parts.trees.currentProjection();
    const int count = m_parts.trees.projections()->selectedItems().size();
    m_projectionNote->setVisible(current && count > 1);
    if (current && count > 1)
        m_projectionNote->setText(tr("%1 projections are selected. The fields are those of %2 alone.")
                                      .arg(QString::number(count), current->text(0)));
}

void zoHPCDisplayTools::orderTabs() const
{
    const Ui_zoHPCDisplayGUII& form = m_parts.form;
    QWidget::setTabOrder(m_projectionFilter->field(), form.m_projectionTree);
    QWidget::setTabOrder(form.m_addProjectionButton, m_outputFilter->field());
    QWidget::setTabOrder(m_outputFilter->field(), form.m_displayTree);
    QWidget::setTabOrder(form.m_addViewportButton, m_duplicateButton);
    QWidget::setTabOrder(form.m_flipY, m_panel->firstField());
    // The buttons at the bottom come last. The box of some of them stands for its first one, at a place of its own:
    // the Tab key would go there from the middle of the dialog and never come to the pictures.
    form.m_buttonBox->setFocusProxy(nullptr);
    QWidget* last = m_parts.pane.problemsView()->list();
    for (QWidget* button : {form.m_undoButton, form.m_redoButton}) {
        QWidget::setTabOrder(last, button);
        last = button;
    }
    for (const QDialogButtonBox::StandardButton which :
         {QDialogButtonBox::Ok, QDialogButtonBox::Cancel, QDialogButtonBox::Apply}) {
        QWidget::setTabOrder(last, form.m_buttonBox->button(which));
        last = form.m_buttonBox->button(which);
    }
}

void zoHPCDisplayTools::createNodeColumn()
{
    QTreeWidget* const tree = m_parts.trees.projections();
    tree->setColumnCount(s_nodeColumn + 1);
    tree->headerItem()->setText(s_nodeColumn, tr("Node"));
    tree->headerItem()->setToolTip(s_nodeColumn, tr("Nodes whose windows show the surface"));
    tree->header()->setStretchLastSection(false);
    tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    tree->header()->resizeSection(s_nodeColumn, tree->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 9);
    tree->setItemDelegate(new zoHPCSurfaceDelegate(s_nodeColumn, tree));
    m_nodesTimer.setSingleShot(true);
    m_nodesTimer.setInterval(0);
    connect(&m_nodesTimer, &QTimer::timeout, this, &zoHPCDisplayTools::showNodes);
    connect(&m_parts.pane.review(), &zoHPCReview::changed, &m_nodesTimer, [this] { m_nodesTimer.start(); });
    tree->installEventFilter(this);
}

// What changed while the tree was hidden is read once it is seen.
bool zoHPCDisplayTools::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched == m_parts.trees.projections())
        m_nodesTimer.start();
    return QObject::eventFilter(watched, event);
}

void zoHPCDisplayTools::showNodes()
{
    QTreeWidget* const tree = m_parts.trees.projections();
    if (!tree->isVisible())
        return;
    const auto layout = m_parts.pane.review().layout();
    const std::vector<QStringList> nodes = layout->nodesOfProjections();
    bool isChanged = false;
    {
        // Nobody but the view wants to know.
        const QSignalBlocker blocker(tree->model());
        for (size_t i = 0; i < nodes.size(); ++i) {
            zoHPCProjectionItem* const item = layout->projections()[i].item;
            const QString text = nodes[i].join(QLatin1String(", "));
            if (item->text(s_nodeColumn) == text)
                continue;
            isChanged = true;
            item->setText(s_nodeColumn, text);
            item->setToolTip(0, text.isEmpty()
                                    ? QString()
                                    : tr("%1, shown by %2").arg(layout->projections()[i].name(), text));
            item->setToolTip(s_nodeColumn, text);
        }
    }
    if (isChanged)
        tree->viewport()->update();
}

void zoHPCDisplayTools::focusTree() const
{
    QTreeWidget* const projections = m_parts.trees.projections();
    (projections->topLevelItemCount() > 0 ? projections : m_parts.trees.outputs())
        ->setFocus(Qt::OtherFocusReason);
}

void zoHPCDisplayTools::markRows(const QTreeWidget& tree) const
{
    const QList<QTreeWidgetItem*> selected = tree.selectedItems();
    zoHPCPicture::Rows rows(selected.cbegin(), selected.cend());
    if (selected.size() < 2 && tree.currentItem())
        rows = {tree.currentItem()};
    m_parts.pane.setCurrentItems(rows);
}

QWidget* zoHPCDisplayTools::severalPage()
{
    const Selection selected = selection();
    if (selected.rows < 2 || selected.windows.empty())
        return nullptr;
    m_panel->show(selected.windows, selected.viewports);
    return m_panel;
}

void zoHPCDisplayTools::addTo(zoHPCKeys& keys)
{
    keys.add(&m_findAction, int(Qt::CTRL) | Qt::Key_F);
    keys.add(&m_duplicateAction, int(Qt::CTRL) | Qt::Key_D);
}

void zoHPCDisplayTools::setIsRunning(bool running)
{
    m_isRunning = running;
    updateActions();
}

void zoHPCDisplayTools::updateActions()
{
    const bool can = !m_isRunning && m_parts.trees.currentWindow() != nullptr;
    m_duplicateButton->setEnabled(can);
    m_duplicateAction.setEnabled(can);
    m_panel->setCanDuplicate(can);
}

void zoHPCDisplayTools::clearFilters()
{
    m_projectionFilter->field()->clear();
    m_outputFilter->field()->clear();
}

void zoHPCDisplayTools::focusFilter()
{
    const bool isOutput = m_parts.form.m_displaySide->isAncestorOf(QApplication::focusWidget());
    QLineEdit* const field = (isOutput ? m_outputFilter : m_projectionFilter)->field();
    field->setFocus(Qt::ShortcutFocusReason);
    field->selectAll();
}

// In the order of the tree, each once.
zoHPCDisplayTools::Selection zoHPCDisplayTools::selection() const
{
    const QTreeWidget* const tree = m_parts.trees.outputs();
    const QList<QTreeWidgetItem*> rows = tree->selectedItems();
    const QSet<const QTreeWidgetItem*> selected(rows.cbegin(), rows.cend());
    Selection result;
    result.rows = rows.size();
    if (rows.size() < 2)
        return result;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* const display = tree->topLevelItem(i);
        const bool isWhole = selected.contains(display);
        for (int j = 0; j < display->childCount(); ++j) {
            auto* const window = dynamic_cast<zoHPCWindowItem*>(display->child(j));
            if (!window)
                continue;
            const bool isOwn = isWhole || selected.contains(window);
            const size_t before = result.viewports.size();
            for (int k = 0; k < window->childCount(); ++k) {
                auto* const viewport = dynamic_cast<zoHPCViewportItem*>(window->child(k));
                if (viewport && (isOwn || selected.contains(viewport)))
                    result.viewports.push_back(viewport);
            }
            if (isOwn || result.viewports.size() > before)
                result.windows.push_back(window);
        }
    }
    return result;
}

void zoHPCDisplayTools::setWindows(int column, const QVariant& value)
{
    const Selection selected = selection();
    m_parts.changeOutputs([&] {
        for (zoHPCWindowItem* window : selected.windows) {
            window->setData(column, Qt::EditRole, value);
            window->update();
        }
    });
}

void zoHPCDisplayTools::setViewports(int column, const QVariant& value)
{
    const Selection selected = selection();
    m_parts.changeOutputs([&] {
        for (zoHPCViewportItem* viewport : selected.viewports) {
            viewport->setData(column, Qt::EditRole, value);
            viewport->update();
        }
    });
}

void zoHPCDisplayTools::setNodes(const QString& first)
{
    const Selection selected = selection();
    const std::vector<QString> nodes = zoHPCWindowSeries::nodesFrom(
        *m_parts.pane.review().layout(), first, {selected.windows.begin(), selected.windows.end()});
    m_parts.changeOutputs([&] {
        for (size_t i = 0; i < nodes.size(); ++i) {
            selected.windows[i]->setRenderNode(nodes[i]);
            selected.windows[i]->update();
        }
    });
}

void zoHPCDisplayTools::duplicate()
{
    if (m_isRunning)
        return;
    Selection selected = selection();
    if (selected.windows.empty() && m_parts.trees.currentWindow())
        selected.windows.push_back(m_parts.trees.currentWindow());
    if (selected.windows.empty())
        return;
    zoHPCWindowSeries::Windows copies = zoHPCWindowSeries::after(
        *m_parts.pane.review().layout(), {selected.windows.begin(), selected.windows.end()});
    std::vector<QTreeWidgetItem*> added;
    for (size_t i = 0; i < copies.size();) {
        QTreeWidgetItem* const display = selected.windows[i]->parent();
        QList<QTreeWidgetItem*> children;
        for (; i < copies.size() && selected.windows[i]->parent() == display; ++i) {
            children << copies[i].release();
            added.push_back(children.constLast());
        }
        display->addChildren(children);
    }
    m_parts.link();
    select(added);
}

void zoHPCDisplayTools::select(const std::vector<QTreeWidgetItem*>& windows)
{
    QTreeWidget* const tree = m_parts.trees.outputs();
    QItemSelection rows;
    for (QTreeWidgetItem* window : windows) {
        window->setExpanded(true);
        const QModelIndex index = zoHPCTreeRows::indexOf(tree, window);
        if (!rows.isEmpty() && rows.constLast().parent() == index.parent() &&
            rows.constLast().bottom() + 1 == index.row())
            rows.last() = QItemSelectionRange(rows.constLast().topLeft(), index);
        else
            rows.append(QItemSelectionRange(index));
    }
    tree->setCurrentItem(windows.front(), 0, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    tree->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    tree->scrollToItem(windows.back());
    tree->setFocus(Qt::OtherFocusReason);
}
