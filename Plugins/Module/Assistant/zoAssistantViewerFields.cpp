#include "zoAssistantViewerFields.h"

#include "zoAssistantNumberField.h"
#include "zoText.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include <algorithm>

namespace
{
using Kind = zoHPCWallPlan::Kind;
using EyeOrder = zoHPCWallPlan::EyeOrder;

constexpr double MostBetweenEyes = 1000;

struct Order
{
    EyeOrder order;
    const char* text;
};

constexpr Order s_orders[] = {
    {EyeOrder::Alternating, QT_TRANSLATE_NOOP("zoAssistantViewerFields", "left and right by turns")},
    {EyeOrder::SameNode, QT_TRANSLATE_NOOP("zoAssistantViewerFields", "both eyes on one node")},
    {EyeOrder::OwnNodes, QT_TRANSLATE_NOOP("zoAssistantViewerFields", "a node for each eye")},
    {EyeOrder::LeftNodesFirst,
     QT_TRANSLATE_NOOP("zoAssistantViewerFields", "all left ones, then all right ones")},
};
} // namespace

zoAssistantViewerFields::zoAssistantViewerFields(QWidget* parent)
    : zoAssistantFields(tr("Viewer"), parent)
    , m_distance(addLength("m_distance", tr("From the wall to the viewer"), -MostMillimetres))
    , m_right(addLength("m_right",
                        tr("How far the viewer stands to the right of the middle; below 0 to the left"),
                        -MostMillimetres))
    , m_up(addLength("m_up", tr("How far the eyes are above the middle; below 0 under it"), -MostMillimetres))
    , m_distanceLabel(new QLabel(tr("&Distance:")))
    , m_rightLabel(new QLabel)
    , m_upLabel(new QLabel(tr("above it:")))
    , m_standHere(new QPushButton(tr("Stand &here")))
    , m_stereo(new QComboBox)
    , m_eyeSeparation(
          new zoAssistantNumberField(0, MostBetweenEyes, 2, zoAssistantNumberField::Unit::Millimetre))
    , m_eyeSeparationLabel(new QLabel(tr("between the eyes")))
    , m_eyeOrder(new QComboBox)
    , m_eyeOrderLabel(new QLabel(tr("&Windows:")))
{
    m_standHere->setObjectName(zoText("m_standHere"));
    m_standHere->setCheckable(true);
    m_standHere->setAutoDefault(false);
    m_standHere->setToolTip(
        tr("Press it, then click in the picture at the right: the viewer stands at that place"));
    connect(m_standHere, &QPushButton::toggled, this, &zoAssistantViewerFields::pickingChanged);
    m_stereo->setObjectName(zoText("m_stereo"));
    const std::vector<zoHPCWallPlan::StereoMode>& modes = zoHPCWallPlan::stereoModes();
    for (const zoHPCWallPlan::StereoMode& mode : modes)
        m_stereo->addItem(mode.text(), int(mode.mode));
    m_eyeSeparation->setObjectName(zoText("m_eyeSeparation"));
    m_eyeSeparation->setAccessibleName(tr("Distance between the eyes"));
    m_eyeOrder->setObjectName(zoText("m_eyeOrder"));
    m_eyeOrder->setToolTip(tr("Which windows follow each other on the nodes"));
    for (const Order& order : s_orders)
        m_eyeOrder->addItem(tr(order.text), int(order.order));
    for (const QComboBox* combo : {m_stereo, m_eyeOrder})
        connect(combo, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &zoAssistantFields::edited);
    connect(m_eyeSeparation, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &zoAssistantFields::edited);
    layOut();
}

zoAssistantViewerFields::~zoAssistantViewerFields() = default;

void zoAssistantViewerFields::layOut()
{
    auto* stereoLabel = new QLabel(tr("Ster&eo:"));
    stereoLabel->setBuddy(m_stereo);
    m_distanceLabel->setBuddy(m_distance);
    m_eyeOrderLabel->setBuddy(m_eyeOrder);
    auto* place = new QHBoxLayout;
    place->setSpacing(RowSpacing);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{m_distance, m_rightLabel, m_right, m_upLabel, m_up})
        place->addWidget(widget);
    place->addStretch();
    place->addWidget(m_standHere);
    auto* eyes = new QHBoxLayout;
    eyes->setSpacing(RowSpacing);
    for (QWidget* widget : std::initializer_list<QWidget*>{m_stereo, m_eyeSeparation, m_eyeSeparationLabel})
        eyes->addWidget(widget);
    eyes->addStretch();
    auto* layout = new QGridLayout(this);
    layout->addWidget(m_distanceLabel, 0, 0);
    layout->addLayout(place, 0, 1);
    layout->addWidget(stereoLabel, 1, 0);
    layout->addLayout(eyes, 1, 1);
    layout->addWidget(m_eyeOrderLabel, 2, 0);
    layout->addWidget(m_eyeOrder, 2, 1, Qt::AlignLeft);
    layout->setColumnStretch(1, 1);
    tighten(*layout);
}

zoAssistantNumberField* zoAssistantViewerFields::addLength(const char* name, const QString& toolTip,
                                                           double minimum)
{
    auto* field =
        new zoAssistantNumberField(minimum, MostMillimetres, 1, zoAssistantNumberField::Unit::Millimetre);
    field->setObjectName(QLatin1String(name));
    field->setToolTip(toolTip);
    field->setAccessibleName(toolTip);
    connect(field, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &zoAssistantFields::edited);
    return field;
}

void zoAssistantViewerFields::showPlan(const zoHPCWallPlan& plan)
{
    m_isInside = plan.kind == Kind::Cave || plan.kind == Kind::Planes;
    m_distanceLabel->setText(m_isInside ? tr("Behind the mi&ddle:") : tr("&Distance:"));
    m_rightLabel->setText(m_isInside ? tr("right of it:") : tr("right of the middle:"));
    m_distance->setToolTip(m_isInside ? tr("How far the viewer stands behind the middle; below 0 before it")
                                      : tr("From the wall to the viewer"));
    m_distance->show(plan.viewer.z);
    m_right->show(plan.viewer.x);
    m_up->show(plan.viewer.y);
    // A tiled wall has a distance and no more.
    for (QWidget* widget : std::initializer_list<QWidget*>{m_right, m_rightLabel, m_up, m_upLabel})
        widget->setVisible(plan.kind != Kind::Tiled);
    {
        const QSignalBlocker blocker(m_stereo);
        m_stereo->setCurrentIndex(m_stereo->findData(int(plan.stereo)));
    }
    {
        const QSignalBlocker blocker(m_eyeOrder);
        m_eyeOrder->setCurrentIndex(m_eyeOrder->findData(int(plan.eyeOrder)));
    }
    m_eyeSeparation->show(plan.eyeSeparation);
    const bool isStereo = plan.stereo != zoHPCWallPlan::Stereo::None;
    m_eyeSeparation->setEnabled(isStereo);
    m_eyeSeparationLabel->setEnabled(isStereo);
    const bool hasTwo = plan.stereoMode().eyes.size() > 1;
    m_eyeOrder->setVisible(hasTwo);
    m_eyeOrderLabel->setVisible(hasTwo);
}

void zoAssistantViewerFields::apply(zoHPCWallPlan& plan) const
{
    plan.viewer = {m_right->value(), m_up->value(), m_distance->value()};
    plan.stereo = static_cast<zoHPCWallPlan::Stereo>(m_stereo->currentData().toInt());
    plan.eyeSeparation = m_eyeSeparation->value();
    plan.eyeOrder = static_cast<EyeOrder>(m_eyeOrder->currentData().toInt());
}

bool zoAssistantViewerFields::isPicking() const
{
    return m_standHere->isChecked();
}

void zoAssistantViewerFields::move(double right, double back)
{
    m_standHere->setChecked(false);
    if (m_right->isVisibleTo(this))
        m_right->show(m_right->value() + right);
    // Nobody stands in the wall or behind it.
    m_distance->show(m_isInside ? m_distance->value() + back : std::max(1.0, m_distance->value() + back));
    emit edited();
}
