#include "zoAssistantPlaneFields.h"

#include "zoAssistantPlaneDelegate.h"
#include "zoHPCWallMistakes.h"
#include "zoText.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>

namespace
{
constexpr int MinimumHeight = 96; // of the table, with two rows

enum Column { Name, Width, Height, X, Y, Z, Yaw, Tilt, ColumnCount };

struct Title
{
    const char* text;
    const char* toolTip;
};

constexpr Title s_titles[ColumnCount] = {
    {QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "Name"),
     QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "Numbered when it is empty")},
    {QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "Width"), QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "mm")},
    {QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "Height"),
     QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "mm")},
    {"x", QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "Middle of the screen, mm to the right")},
    {"y", QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "Middle of the screen, mm upward")},
    {"z", QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "Middle of the screen, mm toward the viewer's back")},
    {QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "Turned"),
     QT_TRANSLATE_NOOP("zoAssistantPlaneFields",
                       "Degrees: 0 faces the viewer, 90 stands at the left hand, -90 at the right hand")},
    {QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "Tilted"),
     QT_TRANSLATE_NOOP("zoAssistantPlaneFields", "Degrees: 0 stands upright, 90 lies on the floor")},
};
} // namespace

zoAssistantPlaneFields::zoAssistantPlaneFields(QWidget* parent)
    : zoAssistantFields(tr("Screens (mm, degrees)"), parent)
    , m_table(new QTableWidget(0, ColumnCount))
    , m_remove(new QPushButton(tr("Re&move")))
{
    m_table->setObjectName(zoText("m_planes"));
    m_table->setAccessibleName(tr("Screens"));
    for (int column = 0; column < ColumnCount; ++column) {
        auto* title = new QTableWidgetItem(tr(s_titles[column].text));
        title->setToolTip(tr(s_titles[column].toolTip));
        m_table->setHorizontalHeaderItem(column, title);
    }
    using Unit = zoHPCNumberExpression::Unit;
    const auto edit = [this](int column, const zoAssistantPlaneDelegate::Column& numbers) {
        m_table->setItemDelegateForColumn(column, new zoAssistantPlaneDelegate(numbers, m_table));
    };
    for (const int column : {Width, Height})
        edit(column, {Unit::Millimetre, 0.0, MostMillimetres, 2});
    for (const int column : {X, Y, Z})
        edit(column, {Unit::Millimetre, -MostMillimetres, MostMillimetres, 2});
    for (const int column : {Yaw, Tilt})
        edit(column, {Unit::None, -zoHPCWallMistakes::MostDegrees, zoHPCWallMistakes::MostDegrees, 3});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->setTabKeyNavigation(false);
    // Takes the room that others leave; the dialog fits on small screens.
    m_table->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    m_table->setMinimumHeight(MinimumHeight);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    auto* adding = new QPushButton(tr("&Add"));
    adding->setObjectName(zoText("m_addPlane"));
    m_remove->setObjectName(zoText("m_removePlane"));
    for (QPushButton* button : {adding, m_remove})
        button->setAutoDefault(false);
    auto* layout = new QGridLayout(this);
    layout->addWidget(m_table, 0, 0, 3, 1);
    layout->addWidget(adding, 0, 1);
    layout->addWidget(m_remove, 1, 1);
    layout->setRowStretch(2, 1);
    tighten(*layout);
    connect(adding, &QPushButton::clicked, this, &zoAssistantPlaneFields::add);
    connect(m_remove, &QPushButton::clicked, this, &zoAssistantPlaneFields::remove);
    connect(m_table, &QTableWidget::cellChanged, this, &zoAssistantFields::edited);
}

zoAssistantPlaneFields::~zoAssistantPlaneFields() = default;

bool zoAssistantPlaneFields::areFor(const zoHPCWallPlan& plan) const
{
    return plan.kind == zoHPCWallPlan::Kind::Planes;
}

void zoAssistantPlaneFields::showPlan(const zoHPCWallPlan& plan)
{
    zoHPCWallPlan shown = plan;
    apply(shown);
    if (shown != plan) {
        const QSignalBlocker blocker(m_table);
        m_table->setRowCount(int(plan.planes.size()));
        for (int row = 0; row < m_table->rowCount(); ++row)
            showPlane(row, plan.planes[std::size_t(row)]);
    }
    m_remove->setEnabled(m_table->rowCount() > 1);
}

void zoAssistantPlaneFields::apply(zoHPCWallPlan& plan) const
{
    plan.planes.clear();
    for (int row = 0; row < m_table->rowCount(); ++row)
        plan.planes.push_back(planeOf(row));
}

// To the right of the last one, with its size.
void zoAssistantPlaneFields::add()
{
    zoHPCWallPlan::Plane plane;
    const int row = m_table->rowCount();
    if (row > 0) {
        plane = planeOf(row - 1);
        plane.name.clear();
        plane.center.x += plane.size.width();
    }
    {
        const QSignalBlocker blocker(m_table);
        m_table->insertRow(row);
        showPlane(row, plane);
    }
    m_table->setCurrentCell(row, Width);
    emit edited();
}

void zoAssistantPlaneFields::remove()
{
    const int row = m_table->currentRow() >= 0 ? m_table->currentRow() : m_table->rowCount() - 1;
    if (m_table->rowCount() < 2)
        return;
    {
        const QSignalBlocker blocker(m_table);
        m_table->removeRow(row);
    }
    emit edited();
}

void zoAssistantPlaneFields::showPlane(int row, const zoHPCWallPlan::Plane& plane)
{
    const auto show = [this, row](int column, const QVariant& value) {
        auto* item = new QTableWidgetItem;
        item->setData(Qt::EditRole, value);
        m_table->setItem(row, column, item);
    };
    show(Name, plane.name);
    show(Width, plane.size.width());
    show(Height, plane.size.height());
    show(X, plane.center.x);
    show(Y, plane.center.y);
    show(Z, plane.center.z);
    show(Yaw, plane.yaw);
    show(Tilt, plane.tilt);
}

zoHPCWallPlan::Plane zoAssistantPlaneFields::planeOf(int row) const
{
    const auto value = [this, row](int column) {
        const QTableWidgetItem* item = m_table->item(row, column);
        return item != nullptr ? item->data(Qt::EditRole) : QVariant();
    };
    zoHPCWallPlan::Plane plane;
    plane.name = value(Name).toString();
    plane.size = {value(Width).toDouble(), value(Height).toDouble()};
    plane.center = {value(X).toDouble(), value(Y).toDouble(), value(Z).toDouble()};
    plane.yaw = value(Yaw).toDouble();
    plane.tilt = value(Tilt).toDouble();
    return plane;
}
