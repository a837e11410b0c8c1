#include "zoHPCViewportPanel.h"

#include "ui_zoHPCDisplayForm.h"
#include "zoHPCDisplaySetup.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCPanelFields.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCTreeRows.h"
#include "zoHPCViewportItem.h"

#include <QZODataWidgetMapper.h>

#include <QCoreApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QTreeView>

#include <algorithm>
#include <iterator>

using Eyes = zoHPCDisplayTables::StereoMode::Eyes;

zoHPCViewportPanel::zoHPCViewportPanel(const Ui_zoHPCDisplayGUII& form, QZODataWidgetMapper& mapper,
                                       const zoHPCDisplaySetup& setup, QObject* parent)
    : QObject(parent), m_ui(form), m_setup(setup)
{
    using V = zoHPCViewportItem;
    const auto fill = [](QComboBox* combo, const auto& row) {
        combo->addItem(QCoreApplication::translate("zoHPCDisplayGUII", row.text),
                       QString::fromLatin1(row.value));
    };
    for (const zoHPCDisplayTables::Position& row : zoHPCDisplayTables::Positions)
        fill(form.m_position, row);
    for (const zoHPCDisplayTables::StereoMode& row : zoHPCDisplayTables::Eyes)
        fill(form.m_eye, row);
    zoHPCPanelFields::map(mapper, {{form.m_position, V::Position},
                                   {form.m_viewportX1, V::X1},
                                   {form.m_viewportY1, V::Y1},
                                   {form.m_viewportX2, V::X2},
                                   {form.m_viewportY2, V::Y2},
                                   {form.m_flipX, V::FlipX},
                                   {form.m_flipY, V::FlipY},
                                   {form.m_eye, V::Eye}});
    // After the mapper: the item has the new value when the panel follows it.
    connect(form.m_eye, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &zoHPCViewportPanel::showEyes);
    connect(form.m_mono, &QRadioButton::clicked, this, [this] { chooseEyes(Eyes::Mono); });
    connect(form.m_both, &QRadioButton::clicked, this, [this] { chooseEyes(Eyes::Both); });
    for (QDoubleSpinBox* field : {form.m_viewportX1, form.m_viewportY1, form.m_viewportX2, form.m_viewportY2})
        connect(field, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                &zoHPCViewportPanel::showPixels);
    connect(form.m_planeView, &QTreeView::clicked, this, &zoHPCViewportPanel::projectionChosen);
    connect(form.m_planeView, &QTreeView::activated, this, &zoHPCViewportPanel::projectionChosen);
}

zoHPCViewportPanel::~zoHPCViewportPanel() = default;

void zoHPCViewportPanel::setIsShown(bool isShown)
{
    QTreeView* const view = m_ui.m_planeView;
    if (isShown == (view->model() != nullptr))
        return;
    if (!isShown)
        keepPlace();
    view->setModel(isShown ? m_ui.m_projectionTree->model() : nullptr);
    // View and header each make a selection for each model and keep those that they no longer use.
    const auto selections = view->findChildren<QItemSelectionModel*>();
    for (const QItemSelectionModel* selection : selections) {
        if (selection != view->selectionModel() && selection != view->header()->selectionModel())
            delete selection;
    }
    if (!isShown)
        return;
    zoHPCTreeRows::showFirstColumnOnly(view);
    for (const QPersistentModelIndex& row : qAsConst(m_expanded))
        view->expand(row);
    view->verticalScrollBar()->setValue(m_scroll);
}

// As it was when another viewport is shown.
void zoHPCViewportPanel::keepPlace()
{
    const QTreeView* const view = m_ui.m_planeView;
    m_expanded.clear();
    for (int row = 0; row < view->model()->rowCount(); ++row) {
        const QModelIndex index = view->model()->index(row, 0);
        if (view->isExpanded(index))
            m_expanded << index;
    }
    m_scroll = view->verticalScrollBar()->value();
}

void zoHPCViewportPanel::showProjection()
{
    const zoHPCViewportItem* const viewport = currentViewport();
    QTreeView* const view = m_ui.m_planeView;
    if (!viewport || view->model() == nullptr)
        return;
    const QString name = viewport->getString(zoHPCViewportItem::Projection);
    m_ui.m_planeName->setText(
        name.isEmpty() ? QCoreApplication::translate("zoHPCDisplayGUII",
                                                     "None yet: click the surface that this viewport shows.")
                       : name);

    const QModelIndex shown =
        name.isEmpty() ? QModelIndex()
                       : zoHPCTreeRows::indexOf(m_ui.m_projectionTree, m_setup.projectionOf(*viewport));
    if (view->currentIndex() != shown || !shown.isValid()) {
        view->setCurrentIndex(shown);
        if (!shown.isValid())
            view->clearSelection();
    }
}

void zoHPCViewportPanel::showPixels()
{
    const zoHPCViewportItem* const viewport = currentViewport();
    const bool isInPixels = viewport && viewport->isInPixels();
    nameCorners(isInPixels);
    const auto* window = viewport ? dynamic_cast<const zoHPCWindowItem*>(viewport->parent()) : nullptr;
    // How large a full-screen window is only its screen knows.
    const bool isKnown = window && (isInPixels || !window->getBool(zoHPCWindowItem::FullScreen));
    zoHPCPanelFields::setVisible({m_ui.m_lowerLeftPixelLabel, m_ui.m_lowerLeftPixel,
                                  m_ui.m_upperRightPixelLabel, m_ui.m_upperRightPixel},
                                 isKnown);
    if (!isKnown)
        return;
    const int width = isInPixels ? 1 : window->getInt(zoHPCWindowItem::Width);
    const int height = isInPixels ? 1 : window->getInt(zoHPCWindowItem::Height);
    const auto corner = [width, height](double x, double y) {
        return QCoreApplication::translate("zoHPCDisplayGUII", "%1, %2")
            .arg(QString::number(qRound64(x * width)), QString::number(qRound64(y * height)));
    };
    m_ui.m_lowerLeftPixel->setText(corner(m_ui.m_viewportX1->value(), m_ui.m_viewportY1->value()));
    m_ui.m_upperRightPixel->setText(corner(m_ui.m_viewportX2->value(), m_ui.m_viewportY2->value()));
}

// The fields hold what the file holds, which need not be fractions.
void zoHPCViewportPanel::nameCorners(bool isInPixels)
{
    const auto text = [](const char* source) {
        return QCoreApplication::translate("zoHPCDisplayGUII", source);
    };
    zoHPCPanelFields::setUnit({m_ui.m_viewportX1, m_ui.m_viewportY1, m_ui.m_viewportX2, m_ui.m_viewportY2},
                              isInPixels ? zoHPCNumberExpression::Unit::Pixel
                                         : zoHPCNumberExpression::Unit::Fraction);
    m_ui.m_viewportX1Label->setText(isInPixels ? text("Lower left") : text("Lower left (fraction)"));
    m_ui.m_viewportX2Label->setText(isInPixels ? text("Upper right") : text("Upper right (fraction)"));
}

void zoHPCViewportPanel::showEyes()
{
    const QString value = m_ui.m_eye->currentData().toString();
    const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(value);
    const auto show = [mode](QRadioButton* choice, Eyes eyes) {
        // A single eye is neither of them, and an exclusive button cannot be switched off.
        choice->setAutoExclusive(false);
        choice->setChecked(mode && mode->eyes == eyes);
        choice->setAutoExclusive(true);
    };
    show(m_ui.m_mono, Eyes::Mono);
    show(m_ui.m_both, Eyes::Both);
}

void zoHPCViewportPanel::chooseEyes(Eyes eyes)
{
    const zoHPCDisplayTables::StereoMode* const mode =
        zoHPCDisplayTables::stereoMode(m_ui.m_eye->currentData().toString());
    // Which of the ways for both eyes was chosen stays.
    if (mode && mode->eyes == eyes)
        return;
    const auto first = std::find_if(std::begin(zoHPCDisplayTables::Eyes), std::end(zoHPCDisplayTables::Eyes),
                                    [eyes](const auto& row) { return row.eyes == eyes; });
    m_ui.m_eye->setCurrentIndex(m_ui.m_eye->findData(QString::fromLatin1(first->value)));
}

void zoHPCViewportPanel::enableCorners()
{
    const bool isCustom = zoHPCDisplayTables::isCustom(m_ui.m_position->currentData().toString());
    for (QDoubleSpinBox* field : {m_ui.m_viewportX1, m_ui.m_viewportY1, m_ui.m_viewportX2, m_ui.m_viewportY2})
        field->setEnabled(isCustom);
}

zoHPCViewportItem* zoHPCViewportPanel::currentViewport() const
{
    return dynamic_cast<zoHPCViewportItem*>(m_ui.m_displayTree->currentItem());
}
