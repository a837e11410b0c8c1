#include "zoAssistantSizeFields.h"

#include "zoAssistantNumberField.h"
#include "zoText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace
{
using Kind = zoHPCWallPlan::Kind;
using Unit = zoHPCNumberExpression::Unit;

constexpr double MostTiles = 1000;
constexpr double MostDegrees = 180.0;

struct CaveWall
{
    unsigned wall;
    const char* name;
    const char* text;
};

constexpr CaveWall s_caveWalls[] = {
    {zoHPCWallPlan::LeftWall, "m_leftWall", QT_TRANSLATE_NOOP("zoAssistantSizeFields", "Left")},
    {zoHPCWallPlan::FrontWall, "m_frontWall", QT_TRANSLATE_NOOP("zoAssistantSizeFields", "Front")},
    {zoHPCWallPlan::RightWall, "m_rightWall", QT_TRANSLATE_NOOP("zoAssistantSizeFields", "Right")},
    {zoHPCWallPlan::BackWall, "m_backWall", QT_TRANSLATE_NOOP("zoAssistantSizeFields", "Back")},
    {zoHPCWallPlan::BottomWall, "m_bottomWall", QT_TRANSLATE_NOOP("zoAssistantSizeFields", "Floor")},
    {zoHPCWallPlan::TopWall, "m_topWall", QT_TRANSLATE_NOOP("zoAssistantSizeFields", "Ceiling")},
};

// Of monitors and projectors that are bought for walls.
constexpr const char* s_resolutions[] = {"1920 x 1080", "1920 x 1200", "2560 x 1440", "2560 x 1600",
                                         "3840 x 2160", "4096 x 2160", "1400 x 1050", "1920 x 1536"};

QString textOf(const QSize& pixels)
{
    return zoText("%1 x %2").arg(pixels.width()).arg(pixels.height());
}

// An empty size for a text that is none. Both numbers may be sums, "2*1920 x 1080".
QSize pixelsOf(const QString& text)
{
    // The "x" of "px" separates nothing.
    static const QRegularExpression separator(zoText("(?<![pP])[xX\\x{00d7};]"));
    static const QRegularExpression oneOther(zoText("^\\s*(\\d+)\\s*[*,\\s]\\s*(\\d+)\\s*(?:px)?\\s*$"));
    QStringList parts = text.split(separator);
    const QRegularExpressionMatch other = oneOther.match(text);
    if (other.hasMatch())
        parts = other.capturedTexts().mid(1, 2);
    if (parts.size() != 2)
        return {};
    const auto width = zoHPCNumberExpression::wholeNumber(parts.at(0));
    const auto height = zoHPCNumberExpression::wholeNumber(parts.at(1));
    return width && height && *width >= 0 && *height >= 0 ? QSize(*width, *height) : QSize();
}

QLabel* between(const QString& text)
{
    return new QLabel(text);
}
} // namespace

zoAssistantSizeFields::zoAssistantSizeFields(QWidget* parent)
    : zoAssistantFields(tr("Wall"), parent), m_layout(new QGridLayout(this))
{
    addGrid();
    addSize();
    addCave();
    addCurve();
    m_layout->setColumnStretch(1, 1);
    tighten(*m_layout);
}

zoAssistantSizeFields::~zoAssistantSizeFields() = default;

void zoAssistantSizeFields::addGrid()
{
    m_columns = addNumber("m_columns", tr("Columns"), 1, MostTiles, 0, Unit::None);
    m_rowCount = addNumber("m_rows", tr("Rows"), 1, MostTiles, 0, Unit::None);
    addRow(tr("&Tiles:"), {m_columns, between(tr("across,")), m_rowCount, between(tr("down"))},
           {Kind::Tiled, Kind::Power, Kind::Cave, Kind::Curved});
    m_pixels = new QComboBox;
    m_pixels->setObjectName(zoText("m_pixels"));
    m_pixels->setEditable(true);
    m_pixels->setInsertPolicy(QComboBox::NoInsert);
    for (const char* resolution : s_resolutions)
        m_pixels->addItem(QLatin1String(resolution));
    m_pixels->setToolTip(tr("Pixels of one tile across and down"));
    connect(m_pixels, &QComboBox::editTextChanged, this, &zoAssistantFields::edited);
    addRow(tr("&Pixels of a tile:"), {m_pixels},
           {Kind::Tiled, Kind::Power, Kind::Cave, Kind::Curved, Kind::Planes});
    m_pitch = addNumber("m_pitch", tr("Width of a pixel. Needed for gaps in millimetres alone"), 0, 1000, 4,
                        Unit::Millimetre);
    m_pitch->setSpecialValueText(tr("not known"));
    addRow(tr("Si&ze of a pixel:"), {m_pitch}, {Kind::Tiled});
}

void zoAssistantSizeFields::addSize()
{
    m_width = addNumber("m_width", tr("Width of the picture, frames of monitors not counted"), 0,
                        MostMillimetres, 2, Unit::Millimetre);
    m_height = addNumber("m_height", tr("Height of the picture, frames of monitors not counted"), 0,
                         MostMillimetres, 2, Unit::Millimetre);
    m_sizeOf = new QComboBox;
    m_sizeOf->setObjectName(zoText("m_sizeOf"));
    m_sizeOf->addItem(tr("the whole wall"), int(zoHPCWallPlan::SizeOf::Wall));
    m_sizeOf->addItem(tr("one tile"), int(zoHPCWallPlan::SizeOf::Tile));
    m_sizeOf->setToolTip(tr("What has this size"));
    connect(m_sizeOf, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &zoAssistantFields::edited);
    addRow(tr("&Size:"), {m_width, between(tr("x")), m_height, m_sizeOf}, {Kind::Power, Kind::Curved});
}

void zoAssistantSizeFields::addCave()
{
    m_caveWidth = addNumber("m_caveWidth", tr("Width"), 0, MostMillimetres, 1, Unit::Millimetre);
    m_caveHeight = addNumber("m_caveHeight", tr("Height"), 0, MostMillimetres, 1, Unit::Millimetre);
    m_caveDepth = addNumber("m_caveDepth", tr("Depth"), 0, MostMillimetres, 1, Unit::Millimetre);
    addRow(tr("&Size:"), {m_caveWidth, between(tr("x")), m_caveHeight, between(tr("x")), m_caveDepth},
           {Kind::Cave});
    std::vector<QWidget*> boxes;
    for (const CaveWall& wall : s_caveWalls) {
        auto* box = new QCheckBox(tr(wall.text));
        box->setObjectName(QLatin1String(wall.name));
        connect(box, &QCheckBox::toggled, this, &zoAssistantFields::edited);
        m_caveWalls.push_back(box);
        boxes.push_back(box);
    }
    addRow(tr("Walls:"), boxes, {Kind::Cave});
}

void zoAssistantSizeFields::addCurve()
{
    m_radius = makeNumber("m_radius", tr("Radius of the circle through the corners of the tiles"), 0,
                          MostMillimetres, 1, Unit::Millimetre);
    m_angle = makeNumber("m_angle", tr("Angle between neighbouring columns"), 0, MostDegrees, 3, Unit::None);
    m_angle->setSuffix(zoText(" \u00b0"));
    connect(m_radius, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this] {
        m_curvature = zoHPCWallPlan::Curvature::Radius;
        emit edited();
    });
    connect(m_angle, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this] {
        m_curvature = zoHPCWallPlan::Curvature::Angle;
        emit edited();
    });
    addRow(tr("&Radius:"), {m_radius, between(tr("or")), m_angle, between(tr("from column to column"))},
           {Kind::Curved});
}

void zoAssistantSizeFields::addRow(const QString& label, const std::vector<QWidget*>& widgets,
                                   const std::vector<Kind>& kinds)
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(RowSpacing);
    for (QWidget* widget : widgets)
        layout->addWidget(widget);
    layout->addStretch();
    auto* title = new QLabel(label);
    title->setBuddy(widgets.front());
    const int number = int(m_rows.size());
    m_layout->addWidget(title, number, 0);
    m_layout->addWidget(row, number, 1);
    m_rows.push_back({title, row, kinds});
}

zoAssistantNumberField* zoAssistantSizeFields::makeNumber(const char* name, const QString& toolTip,
                                                          double minimum, double maximum, int decimals,
                                                          Unit unit)
{
    auto* field = new zoAssistantNumberField(minimum, maximum, decimals, unit);
    field->setObjectName(QLatin1String(name));
    field->setToolTip(toolTip);
    field->setAccessibleName(toolTip);
    return field;
}

zoAssistantNumberField* zoAssistantSizeFields::addNumber(const char* name, const QString& toolTip,
                                                         double minimum, double maximum, int decimals,
                                                         Unit unit)
{
    zoAssistantNumberField* const field = makeNumber(name, toolTip, minimum, maximum, decimals, unit);
    connect(field, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &zoAssistantFields::edited);
    return field;
}

// First those that go, so that there is never more than one kind has.
void zoAssistantSizeFields::showRows(Kind kind)
{
    for (const bool isShown : {false, true}) {
        for (const Row& row : m_rows) {
            if ((std::find(row.kinds.begin(), row.kinds.end(), kind) != row.kinds.end()) != isShown)
                continue;
            row.label->setVisible(isShown);
            row.widget->setVisible(isShown);
        }
    }
}

void zoAssistantSizeFields::showPlan(const zoHPCWallPlan& plan)
{
    showRows(plan.kind);
    m_columns->show(plan.columns);
    m_rowCount->show(plan.rows);
    if (pixelsOf(m_pixels->currentText()) != plan.tilePixels && !plan.tilePixels.isEmpty()) {
        const QSignalBlocker blocker(m_pixels);
        m_pixels->setEditText(textOf(plan.tilePixels));
    }
    m_pitch->show(plan.pixelPitch);
    m_width->show(plan.size.width());
    m_height->show(plan.size.height());
    {
        const QSignalBlocker blocker(m_sizeOf);
        m_sizeOf->setCurrentIndex(m_sizeOf->findData(int(plan.sizeOf)));
    }
    m_caveWidth->show(plan.caveSize.x);
    m_caveHeight->show(plan.caveSize.y);
    m_caveDepth->show(plan.caveSize.z);
    for (std::size_t i = 0; i < m_caveWalls.size(); ++i) {
        const QSignalBlocker blocker(m_caveWalls[i]);
        m_caveWalls[i]->setChecked((plan.caveWalls & s_caveWalls[i].wall) != 0);
    }
    m_curvature = plan.curvature;
    const double radius = plan.curveRadius();
    const double angle = plan.curveAngle();
    m_radius->show(std::isfinite(radius) ? radius : 0.0);
    m_angle->show(std::isfinite(angle) ? angle : 0.0);
}

void zoAssistantSizeFields::apply(zoHPCWallPlan& plan) const
{
    plan.columns = int(m_columns->value());
    plan.rows = int(m_rowCount->value());
    plan.tilePixels = pixelsOf(m_pixels->currentText());
    plan.pixelPitch = m_pitch->value();
    plan.size = {m_width->value(), m_height->value()};
    plan.sizeOf = static_cast<zoHPCWallPlan::SizeOf>(m_sizeOf->currentData().toInt());
    plan.caveSize = {m_caveWidth->value(), m_caveHeight->value(), m_caveDepth->value()};
    plan.caveWalls = 0;
    for (std::size_t i = 0; i < m_caveWalls.size(); ++i)
        plan.caveWalls |= m_caveWalls[i]->isChecked() ? s_caveWalls[i].wall : 0U;
    plan.curvature = m_curvature;
    if (m_curvature == zoHPCWallPlan::Curvature::Radius)
        plan.radius = m_radius->value();
    else
        plan.columnAngle = m_angle->value();
}
