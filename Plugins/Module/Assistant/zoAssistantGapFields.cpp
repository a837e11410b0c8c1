#include "zoAssistantGapFields.h"

#include "zoAssistantNumberField.h"
#include "zoText.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

#include <cmath>

namespace
{
constexpr double MostPixels = 100000;
// Of tiles of usual sizes, so that choosing "overlap" or "frames" is a beginning that can be seen.
constexpr double UsualOverlap = 120; // pixels
constexpr double UsualBezel = 8;     // pixels
} // namespace

zoAssistantGapFields::zoAssistantGapFields(QWidget* parent)
    : zoAssistantFields(tr("Between tiles"), parent), m_gap(new QComboBox)
{
    m_gap->setObjectName(zoText("m_gap"));
    m_gap->addItem(tr("Nothing"), int(Gap::None));
    m_gap->addItem(tr("Overlap, blended"), int(Gap::Overlap));
    m_gap->addItem(tr("Frames of monitors"), int(Gap::Bezel));
    m_gap->setAccessibleName(title());
    auto* layout = new QGridLayout(this);
    layout->addWidget(m_gap, 0, 0, 2, 1);
    layout->setColumnStretch(6, 1);
    tighten(*layout);
    m_across = addAxis(0, "across", tr("across"));
    m_down = addAxis(1, "down", tr("down"));
    connect(m_gap, QOverload<int>::of(&QComboBox::activated), this, [this] {
        const bool isEmpty = m_across.pixels->value() == 0.0 && m_down.pixels->value() == 0.0;
        if (gap() != Gap::None && isEmpty) {
            m_unit = zoHPCWallPlan::Unit::Pixels;
            const double usual = gap() == Gap::Overlap ? UsualOverlap : UsualBezel;
            m_across.pixels->show(usual);
            m_down.pixels->show(usual);
        }
        enable();
        emit edited();
    });
    enable();
}

zoAssistantGapFields::~zoAssistantGapFields() = default;

zoAssistantGapFields::Axis zoAssistantGapFields::addAxis(int row, const char* name, const QString& label)
{
    using Unit = zoAssistantNumberField::Unit;
    Axis axis;
    axis.label = new QLabel(label);
    axis.pixels = new zoAssistantNumberField(0, MostPixels, 2, Unit::Pixel);
    axis.millimetres = new zoAssistantNumberField(0, MostMillimetres, 2, Unit::Millimetre);
    axis.pixels->setObjectName(zoText("m_%1Pixels").arg(QLatin1String(name)));
    axis.millimetres->setObjectName(zoText("m_%1Millimetres").arg(QLatin1String(name)));
    axis.pixels->setAccessibleName(tr("Between tiles %1, in pixels").arg(label));
    axis.millimetres->setAccessibleName(tr("Between tiles %1, in millimetres").arg(label));
    axis.label->setBuddy(axis.pixels);
    connect(axis.pixels, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this] {
        m_unit = zoHPCWallPlan::Unit::Pixels;
        emit edited();
    });
    connect(axis.millimetres, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this] {
        m_unit = zoHPCWallPlan::Unit::Millimetres;
        emit edited();
    });
    auto* const layout = static_cast<QGridLayout*>(this->layout());
    layout->addWidget(axis.label, row, 1);
    layout->addWidget(axis.pixels, row, 2);
    layout->addWidget(new QLabel(zoText("=")), row, 3);
    layout->addWidget(axis.millimetres, row, 4);
    return axis;
}

zoAssistantGapFields::Gap zoAssistantGapFields::gap() const
{
    return static_cast<Gap>(m_gap->currentData().toInt());
}

void zoAssistantGapFields::enable()
{
    const bool isGap = gap() != Gap::None;
    for (const Axis& axis : {m_across, m_down}) {
        axis.label->setEnabled(isGap);
        axis.pixels->setEnabled(isGap);
        axis.millimetres->setEnabled(isGap && m_hasSize);
        axis.millimetres->setToolTip(m_hasSize ? QString() : tr("Needs the size of a pixel"));
    }
}

bool zoAssistantGapFields::areFor(const zoHPCWallPlan& plan) const
{
    return plan.hasGrid() && plan.kind != zoHPCWallPlan::Kind::Cave;
}

void zoAssistantGapFields::showPlan(const zoHPCWallPlan& plan)
{
    const QSizeF pixelSize = plan.pixelSize();
    m_hasSize = pixelSize.width() > 0.0 && pixelSize.height() > 0.0 && std::isfinite(pixelSize.width()) &&
                std::isfinite(pixelSize.height());
    const double said = plan.overlap.across != 0.0 ? plan.overlap.across : plan.overlap.down;
    if (said != 0.0) {
        const QSignalBlocker blocker(m_gap);
        m_gap->setCurrentIndex(m_gap->findData(int(said > 0.0 ? Gap::Overlap : Gap::Bezel)));
    }
    m_unit = plan.overlapUnit;
    // What was said stands as it is, also where there is but one column or row.
    const bool isPixels = m_unit == zoHPCWallPlan::Unit::Pixels;
    const zoHPCWallPlan::Overlap pixels = isPixels ? plan.overlap : plan.overlapPixels();
    const zoHPCWallPlan::Overlap millimetres = isPixels ? plan.overlapMillimetres() : plan.overlap;
    const auto shown = [](double value) { return std::isfinite(value) ? std::abs(value) : 0.0; };
    m_across.pixels->show(shown(pixels.across));
    m_down.pixels->show(shown(pixels.down));
    m_across.millimetres->show(shown(millimetres.across));
    m_down.millimetres->show(shown(millimetres.down));
    enable();
}

void zoAssistantGapFields::apply(zoHPCWallPlan& plan) const
{
    const bool isPixels = m_unit == zoHPCWallPlan::Unit::Pixels;
    const double sign = gap() == Gap::None ? 0.0 : gap() == Gap::Overlap ? 1.0 : -1.0;
    plan.overlapUnit = m_unit;
    plan.overlap.across = sign * (isPixels ? m_across.pixels : m_across.millimetres)->value();
    plan.overlap.down = sign * (isPixels ? m_down.pixels : m_down.millimetres)->value();
}
