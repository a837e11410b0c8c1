#include "zoAssistantKindBox.h"

#include "zoText.h"

#include <zoIconManager.h>

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QToolButton>

#include <algorithm>

namespace
{
using Kind = zoHPCWallPlan::Kind;

struct Picture
{
    Kind kind;
    const char* name; // of the button
    const char* icon;
    const char* text;
    const char* toolTip;
};

constexpr int IconSize = 40;

constexpr Picture s_pictures[] = {
    {Kind::Tiled, "m_tiled", "Wall/Tiled", QT_TRANSLATE_NOOP("zoAssistantKindBox", "Tiled wall"),
     QT_TRANSLATE_NOOP("zoAssistantKindBox", "Monitors or projectors side by side that show one picture")},
    {Kind::Power, "m_power", "Wall/Power", QT_TRANSLATE_NOOP("zoAssistantKindBox", "Power wall"),
     QT_TRANSLATE_NOOP("zoAssistantKindBox",
                       "One flat wall of a size in millimetres, for viewers who are tracked")},
    {Kind::Cave, "m_cave", "Wall/Cave", QT_TRANSLATE_NOOP("zoAssistantKindBox", "Cave"),
     QT_TRANSLATE_NOOP("zoAssistantKindBox", "Walls of a room around the viewer")},
    {Kind::Curved, "m_curved", "Wall/Curved", QT_TRANSLATE_NOOP("zoAssistantKindBox", "Curved wall"),
     QT_TRANSLATE_NOOP("zoAssistantKindBox", "Columns of monitors on an arc around the viewer")},
    {Kind::Planes, "m_planes", "Wall/Planes", QT_TRANSLATE_NOOP("zoAssistantKindBox", "Free planes"),
     QT_TRANSLATE_NOOP("zoAssistantKindBox", "Screens that stand anywhere in the room")},
};

// Of a chosen one, which is bold.
int widthOf(QToolButton* button)
{
    const QFont plain = button->font();
    QFont bold = plain;
    bold.setBold(true);
    button->setFont(bold);
    const int width = button->sizeHint().width();
    button->setFont(plain);
    return width;
}
} // namespace

zoAssistantKindBox::zoAssistantKindBox(QWidget* parent) : QWidget(parent), m_buttons(new QButtonGroup(this))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    int width = 0;
    for (const Picture& picture : s_pictures) {
        auto* button = new QToolButton;
        button->setObjectName(QLatin1String(picture.name));
        button->setIcon(zoIconManager::getIcon(QLatin1String(picture.icon), QString()));
        button->setIconSize({IconSize, IconSize});
        button->setText(tr(picture.text));
        button->setToolTip(tr(picture.toolTip));
        button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        // On a dark desktop a pressed button alone hardly differs from the others.
        connect(button, &QToolButton::toggled, button, [button](bool isChosen) {
            QFont font = button->font();
            font.setBold(isChosen);
            button->setFont(font);
        });
        m_buttons->addButton(button, int(picture.kind));
        layout->addWidget(button);
        width = std::max(width, widthOf(button));
    }
    layout->addStretch();
    // All alike, and as wide as the chosen one: none moves when another one is chosen.
    const QList<QAbstractButton*> buttons = m_buttons->buttons();
    for (QAbstractButton* button : buttons)
        button->setFixedWidth(width);
    setAccessibleName(tr("Kind of wall"));
    setKind(Kind::Tiled);
    connect(m_buttons, &QButtonGroup::idClicked, this, &zoAssistantKindBox::kindChosen);
}

zoAssistantKindBox::~zoAssistantKindBox() = default;

zoHPCWallPlan::Kind zoAssistantKindBox::kind() const
{
    return static_cast<Kind>(m_buttons->checkedId());
}

void zoAssistantKindBox::setKind(zoHPCWallPlan::Kind kind)
{
    m_buttons->button(int(kind))->setChecked(true);
}
