#include "zoAssistantWallDialog.h"

#include "zoAssistantCounts.h"
#include "zoAssistantGapFields.h"
#include "zoAssistantKindBox.h"
#include "zoAssistantNodeFields.h"
#include "zoAssistantPlaneFields.h"
#include "zoAssistantRoomView.h"
#include "zoAssistantSizeFields.h"
#include "zoAssistantViewerFields.h"
#include "zoHPCConfiguration.h"
#include "zoText.h"

#include <zoConfigurationService.h>

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <cmath>

namespace
{
using Plan = zoHPCWallPlan;

constexpr int PartsSpacing = 4; // pixels
constexpr int SignMargin = 8;   // between it and the message, in pixels

QString lengths(const QSizeF& size)
{
    // Groups that are separated would read as a decimal mark does in the fields.
    QLocale locale;
    locale.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    return zoText("%1 x %2").arg(locale.toString(size.width(), 'f', 0),
                                 locale.toString(size.height(), 'f', 0));
}

bool isKnown(const QSizeF& size)
{
    return std::isfinite(size.width()) && std::isfinite(size.height()) && size.width() > 0.0 &&
           size.height() > 0.0;
}
} // namespace

zoAssistantWallDialog::zoAssistantWallDialog(zoConfigurationService* configuration, QWidget* parent)
    : QDialog(parent)
    , m_configuration(configuration)
    , m_kinds(new zoAssistantKindBox)
    , m_viewer(new zoAssistantViewerFields)
    , m_nodes(new zoAssistantNodeFields)
    , m_room(new zoAssistantRoomView)
    , m_measures(new QLabel)
    , m_sign(new QLabel)
    , m_message(new QLabel)
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setObjectName(zoText("zoAssistantWallDialog"));
    setProperty("manualPage", zoText("assistant#new-wall"));
    setWindowTitle(tr("New wall"));
    m_fields = {new zoAssistantSizeFields, new zoAssistantPlaneFields, new zoAssistantGapFields, m_viewer,
                m_nodes};
    createParts();
    layOut();
    connect(m_kinds, &zoAssistantKindBox::kindChosen, this, &zoAssistantWallDialog::changeKind);
    for (zoAssistantFields* fields : m_fields)
        connect(fields, &zoAssistantFields::edited, this, &zoAssistantWallDialog::readFields);
    connect(m_viewer, &zoAssistantViewerFields::pickingChanged, m_room, &zoAssistantRoomView::setPicksPlace);
    connect(m_viewer, &zoAssistantViewerFields::pickingChanged, this, &zoAssistantWallDialog::tell);
    connect(m_room, &zoAssistantRoomView::placePicked, m_viewer, &zoAssistantViewerFields::move);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &zoAssistantWallDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &zoAssistantWallDialog::review);

    Plan plan = Plan::of(Plan::Kind::Tiled);
    plan.hosts = nodesThatAreThere();
    setPlan(plan);
    review();
    resize(sizeHint());
    if (m_configuration)
        connect(m_configuration, &zoConfigurationService::changed, &m_timer, [this] { m_timer.start(); });
    m_nodes->focusHosts();
}

zoAssistantWallDialog::~zoAssistantWallDialog() = default;

QSize zoAssistantWallDialog::sizeHint() const
{
    return QDialog::sizeHint().expandedTo({1220, 660});
}

void zoAssistantWallDialog::createParts()
{
    m_room->setObjectName(zoText("m_room"));
    m_measures->setObjectName(zoText("m_measures"));
    m_measures->setWordWrap(true);
    m_message->setObjectName(zoText("m_message"));
    m_message->setWordWrap(true);
    m_message->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_buttons->setObjectName(zoText("m_buttonBox"));
}

void zoAssistantWallDialog::layOut()
{
    auto* left = new QVBoxLayout;
    left->setSpacing(PartsSpacing);
    left->addWidget(m_kinds);
    for (zoAssistantFields* fields : m_fields)
        left->addWidget(fields);
    left->addStretch(0);
    auto* right = new QVBoxLayout;
    right->addWidget(m_room, 1);
    right->addWidget(m_measures);
    auto* below = new QHBoxLayout;
    below->addWidget(m_sign, 0, Qt::AlignTop);
    below->addWidget(m_message, 1);
    below->addWidget(m_buttons, 0, Qt::AlignBottom);
    auto* layout = new QGridLayout(this);
    layout->addLayout(left, 0, 0);
    layout->addLayout(right, 0, 1);
    layout->addLayout(below, 1, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setHorizontalSpacing(12);
}

// Hosts text of the configuration that is open; empty while it has the one node that stands for none.
QString zoAssistantWallDialog::nodesThatAreThere() const
{
    zoHPCConfiguration open;
    if (!m_configuration || !open.readText(m_configuration->text()))
        return {};
    const QStringList names = open.hosts().getNodeNames();
    if (names.isEmpty() || names == QStringList(zoText("localhost")))
        return {};
    return open.hosts().getHostsString().simplified();
}

void zoAssistantWallDialog::setPlan(const zoHPCWallPlan& plan)
{
    m_plan = plan;
    m_kinds->setKind(plan.kind);
    showPlan();
    m_timer.start();
}

// What is not of one kind alone stays.
void zoAssistantWallDialog::changeKind()
{
    const Plan before = m_plan;
    const auto isFlat = [](Plan::Kind kind) {
        return kind == Plan::Kind::Tiled || kind == Plan::Kind::Power;
    };
    Plan plan = Plan::of(m_kinds->kind());
    if (before.kind == plan.kind)
        return;
    plan.hosts = before.hosts;
    plan.name = before.name;
    plan.windowsPerNode = before.windowsPerNode;
    plan.eyeSeparation = before.eyeSeparation;
    plan.eyeOrder = before.eyeOrder;
    if (before.stereo != Plan::of(before.kind).stereo)
        plan.stereo = before.stereo;
    if (before.tilePixels != Plan::of(before.kind).tilePixels)
        plan.tilePixels = before.tilePixels;
    if (isFlat(before.kind) && isFlat(plan.kind)) {
        plan.columns = before.columns;
        plan.rows = before.rows;
        plan.overlap = before.overlap;
        plan.overlapUnit = before.overlapUnit;
        plan.viewer.z = before.viewer.z;
    }
    setPlan(plan);
}

void zoAssistantWallDialog::readFields()
{
    for (const zoAssistantFields* fields : m_fields)
        fields->apply(m_plan);
    showPlan();
    m_timer.start();
}

void zoAssistantWallDialog::showPlan()
{
    // First those that go: the dialog must not grow for a moment, and stay so.
    for (zoAssistantFields* fields : m_fields)
        fields->setHidden(fields->isHidden() || !fields->areFor(m_plan));
    for (zoAssistantFields* fields : m_fields) {
        fields->showPlan(m_plan);
        fields->setVisible(fields->areFor(m_plan));
    }
}

void zoAssistantWallDialog::review()
{
    m_timer.stop();
    m_result = zoHPCWallBuilder::build(m_plan);
    m_room->showConfiguration(m_result.isGood() ? m_result.text : zoHPCWallBuilder::sketch(m_plan));
    m_measures->setText(measures());
    tell();
}

void zoAssistantWallDialog::tell()
{
    QPushButton* ok = m_buttons->button(QDialogButtonBox::Ok);
    const QString obstacle = m_configuration ? m_configuration->obstacle() : QString();
    ok->setEnabled(m_configuration && obstacle.isEmpty() && m_result.isGood());
    if (m_viewer->isPicking()) {
        m_sign->setVisible(false);
        m_message->setText(tr("Click in the picture where the viewer stands."));
    } else if (!m_configuration) {
        tellFlaw(tr("This host lets no module change the configuration."));
    } else if (!obstacle.isEmpty()) {
        tellFlaw(tr("%1.").arg(obstacle));
    } else if (m_plan.hosts.trimmed().isEmpty() && m_result.mistakes.size() <= 1) {
        tellFlaw(
            tr("Nodes: their names are missing, such as %1.").arg(zoAssistantNodeFields::example(m_plan)));
    } else if (!m_result.isGood()) {
        const zoHPCWallBuilder::Mistake& first = m_result.mistakes.front();
        tellFlaw(tr("%1: %2").arg(labelOf(first.field), first.text));
    } else if (!m_result.warnings.empty()) {
        const zoHPCWallBuilder::Mistake& first = m_result.warnings.front();
        tellFlaw(tr("%1: %2").arg(labelOf(first.field), first.text));
    } else {
        m_sign->setVisible(false);
        m_message->setText(tr("The configuration will have no problems. Undo brings the present one back."));
    }
}

void zoAssistantWallDialog::tellFlaw(const QString& text)
{
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    const bool mayGoOn = m_result.isGood() && m_buttons->button(QDialogButtonBox::Ok)->isEnabled();
    m_sign->setPixmap(
        style()
            ->standardIcon(mayGoOn ? QStyle::SP_MessageBoxInformation : QStyle::SP_MessageBoxWarning)
            .pixmap(size));
    m_sign->setFixedWidth(size + SignMargin);
    m_sign->setVisible(true);
    m_message->setText(text);
}

QString zoAssistantWallDialog::measures() const
{
    QStringList parts;
    if (m_plan.hasGrid() && m_plan.kind != Plan::Kind::Cave && isKnown(m_plan.totalPixels()))
        parts << tr("%1 pixels").arg(lengths(m_plan.totalPixels()));
    if (m_plan.kind == Plan::Kind::Power || m_plan.kind == Plan::Kind::Curved) {
        if (isKnown(m_plan.wallSize()))
            parts << tr("wall %1 mm").arg(lengths(m_plan.wallSize()));
        if (isKnown(m_plan.tileSize()))
            parts << tr("tile %1 mm").arg(lengths(m_plan.tileSize()));
    }
    if (isKnown(m_plan.pixelSize()))
        parts << tr("a pixel %1 mm").arg(QLocale().toString(m_plan.pixelSize().width(), 'f', 2));
    parts << zoAssistantCounts::windows(m_plan.windowCount());
    return parts.join(zoText(", "));
}

// long: one row for each field
QString zoAssistantWallDialog::labelOf(Plan::Field field)
{
    switch (field) {
    case Plan::Field::Tiles:
        return tr("Tiles");
    case Plan::Field::TilePixels:
        return tr("Pixels of a tile");
    case Plan::Field::Size:
    case Plan::Field::CaveSize:
        return tr("Size");
    case Plan::Field::PixelPitch:
        return tr("Size of a pixel");
    case Plan::Field::Overlap:
        return tr("Between tiles");
    case Plan::Field::Viewer:
        return tr("Viewer");
    case Plan::Field::Curvature:
        return tr("Radius");
    case Plan::Field::CaveWalls:
        return tr("Walls");
    case Plan::Field::Planes:
        return tr("Screens");
    case Plan::Field::Stereo:
        return tr("Stereo");
    case Plan::Field::EyeSeparation:
        return tr("Distance between the eyes");
    case Plan::Field::EyeOrder:
        return tr("Windows");
    case Plan::Field::Hosts:
        return tr("Nodes");
    case Plan::Field::WindowsPerNode:
        return tr("Windows on each node");
    case Plan::Field::Name:
        return tr("Name of the wall");
    }
    return {};
}

void zoAssistantWallDialog::accept()
{
    // What was typed last counts.
    if (m_timer.isActive())
        review();
    if (!m_buttons->button(QDialogButtonBox::Ok)->isEnabled() || !m_configuration)
        return;
    QString refusal;
    if (m_configuration->replace(m_result.text, tr("New wall"), &refusal))
        QDialog::accept();
    else
        tellFlaw(refusal);
}
