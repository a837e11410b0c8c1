#include "zoHPCProjectionPanel.h"

#include "ui_zoHPCDisplayForm.h"
#include "zoHPCPanelFields.h"
#include "zoHPCProjectionItem.h"

#include <QZODataWidgetMapper.h>
#include <zoIconManager.h>

#include <QAbstractSpinBox>
#include <QCoreApplication>

#include <initializer_list>

using zoHPCPanelFields::setVisible;

zoHPCProjectionPanel::zoHPCProjectionPanel(const Ui_zoHPCDisplayGUII& form, QObject* parent)
    : QObject(parent), m_ui(form), m_mapper(new QZODataWidgetMapper(this))
{
    fillTypes();
    m_mapper->setModel(m_ui.m_projectionTree->model());
    mapFields();
    using Unit = zoHPCNumberExpression::Unit;
    zoHPCPanelFields::setUnit({m_ui.m_areaWidth, m_ui.m_areaHeight, m_ui.m_distance, m_ui.m_lowerLeftX,
                               m_ui.m_lowerLeftY, m_ui.m_lowerLeftZ, m_ui.m_lowerRightX, m_ui.m_lowerRightY,
                               m_ui.m_lowerRightZ, m_ui.m_upperRightX, m_ui.m_upperRightY, m_ui.m_upperRightZ,
                               m_ui.m_caveWidth, m_ui.m_caveHeight, m_ui.m_caveDepth, m_ui.m_caveCenterX,
                               m_ui.m_caveCenterY, m_ui.m_caveCenterZ},
                              Unit::Millimetre);
    zoHPCPanelFields::setUnit({m_ui.m_leftEdge, m_ui.m_rightEdge, m_ui.m_topEdge, m_ui.m_bottomEdge},
                              Unit::Fraction);
}

zoHPCProjectionPanel::~zoHPCProjectionPanel() = default;

QString zoHPCProjectionPanel::chosenType() const
{
    return m_ui.m_type->currentData().toString();
}

void zoHPCProjectionPanel::setRow(const QModelIndex& row, bool isGenerated)
{
    m_mapper->setCurrentRow(row);
    m_ui.m_generatedHint->setVisible(isGenerated);
    if (m_ui.m_name->isReadOnly() != isGenerated)
        setReadOnly(isGenerated);
    showParameters();
}

void zoHPCProjectionPanel::showParameters()
{
    const zoHPCProjectionType& type = zoHPCProjectionType::of(chosenType());

    m_ui.m_tileLayoutGroup->setVisible(type.tileLayout);
    setVisible({m_ui.m_rowLabel, m_ui.m_row, m_ui.m_columnLabel, m_ui.m_column}, type.tilePlace);
    m_ui.m_overlapUnit->setText(
        *type.overlapUnit ? QCoreApplication::translate("zoHPCDisplayGUII", type.overlapUnit) : QString());
    zoHPCPanelFields::setUnit({m_ui.m_overlapX, m_ui.m_overlapY},
                              type.kind == zoHPCProjectionType::Kind::Wall
                                  ? zoHPCNumberExpression::Unit::Pixel
                                  : zoHPCNumberExpression::Unit::Millimetre);
    m_ui.m_areaGroup->setVisible(type.area);
    m_ui.m_cornersGroup->setVisible(type.corners);
    setVisible({m_ui.m_caveWallsGroup, m_ui.m_caveSizeGroup, m_ui.m_caveCenterGroup}, type.cave);
    setVisible({m_ui.m_distanceLabel, m_ui.m_distance}, type.distance);
    setVisible({m_ui.m_rightOffsetXLabel, m_ui.m_rightOffsetX, m_ui.m_rightOffsetYLabel, m_ui.m_rightOffsetY},
               type.rightOffset);
    m_ui.m_edgesGroup->setVisible(type.edges && m_ui.m_edgeBlending->isChecked());
}

void zoHPCProjectionPanel::focusName()
{
    m_ui.m_name->setFocus(Qt::ShortcutFocusReason); // which selects all of it
}

void zoHPCProjectionPanel::fillTypes()
{
    for (const zoHPCProjectionType& type : zoHPCProjectionType::all())
        m_ui.m_type->addItem(zoIconManager::getIcon(QString::fromLatin1(type.choiceIcon), QString()),
                             QCoreApplication::translate("zoHPCDisplayGUII", type.text),
                             QString::fromLatin1(type.value));
}

void zoHPCProjectionPanel::mapFields()
{
    using P = zoHPCProjectionItem;
    const Ui_zoHPCDisplayGUII& f = m_ui;

    zoHPCPanelFields::map(*m_mapper, {{f.m_name, P::Name},
                                      {f.m_type, P::Type},
                                      {f.m_rightOffsetX, P::RightOffsetX},
                                      {f.m_rightOffsetY, P::RightOffsetY},
                                      {f.m_row, P::Row},
                                      {f.m_column, P::TileColumn},
                                      {f.m_rows, P::Rows},
                                      {f.m_columns, P::Columns},
                                      {f.m_overlapX, P::OverlapX},
                                      {f.m_overlapY, P::OverlapY}});
    zoHPCPanelFields::map(*m_mapper, {{f.m_caveWidth, P::CaveWidth},
                                      {f.m_caveHeight, P::CaveHeight},
                                      {f.m_caveDepth, P::CaveDepth},
                                      {f.m_caveCenterX, P::CaveX},
                                      {f.m_caveCenterY, P::CaveY},
                                      {f.m_caveCenterZ, P::CaveZ},
                                      {f.m_leftWall, P::LeftWall},
                                      {f.m_rightWall, P::RightWall},
                                      {f.m_topWall, P::TopWall},
                                      {f.m_bottomWall, P::BottomWall},
                                      {f.m_frontWall, P::FrontWall},
                                      {f.m_backWall, P::BackWall}});
    zoHPCPanelFields::map(*m_mapper, {{f.m_areaWidth, P::Width},
                                      {f.m_areaHeight, P::Height},
                                      {f.m_distance, P::Distance},
                                      {f.m_lowerLeftX, P::X1},
                                      {f.m_lowerLeftY, P::Y1},
                                      {f.m_lowerLeftZ, P::Z1},
                                      {f.m_lowerRightX, P::X2},
                                      {f.m_lowerRightY, P::Y2},
                                      {f.m_lowerRightZ, P::Z2},
                                      {f.m_upperRightX, P::X3},
                                      {f.m_upperRightY, P::Y3},
                                      {f.m_upperRightZ, P::Z3}});
    zoHPCPanelFields::map(*m_mapper, {{f.m_edgeBlending, P::EdgeBlending},
                                      {f.m_leftEdge, P::LeftEdge},
                                      {f.m_rightEdge, P::RightEdge},
                                      {f.m_topEdge, P::TopEdge},
                                      {f.m_bottomEdge, P::BottomEdge}});
}

// Not disabled: the numbers of a tile are there to be read.
void zoHPCProjectionPanel::setReadOnly(bool isReadOnly)
{
    const QList<QAbstractSpinBox*> numbers = m_ui.m_projectionPage->findChildren<QAbstractSpinBox*>();
    for (QAbstractSpinBox* number : numbers) {
        number->setReadOnly(isReadOnly);
        number->setButtonSymbols(isReadOnly ? QAbstractSpinBox::NoButtons : QAbstractSpinBox::UpDownArrows);
    }
    m_ui.m_name->setReadOnly(isReadOnly);
    for (QWidget* choice : std::initializer_list<QWidget*>{m_ui.m_type, m_ui.m_edgeBlending})
        choice->setEnabled(!isReadOnly);
}
