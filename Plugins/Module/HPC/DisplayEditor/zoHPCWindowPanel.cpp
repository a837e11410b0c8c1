#include "zoHPCWindowPanel.h"

#include "ui_zoHPCDisplayForm.h"
#include "zoHPCComboSearch.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCNodeNames.h"
#include "zoHPCPanelFields.h"
#include "zoHPCUniqueNames.h"
#include "zoHPCWindowItem.h"

#include <QZODataWidgetMapper.h>

#include <QCoreApplication>
#include <QSignalBlocker>

#include <utility>
#include <vector>

zoHPCWindowPanel::zoHPCWindowPanel(const Ui_zoHPCDisplayGUII& form, QZODataWidgetMapper& mapper,
                                   QObject* parent)
    : QObject(parent), m_ui(form), m_nodeNames(new zoHPCNodeNames(this))
{
    using W = zoHPCWindowItem;
    for (const zoHPCDisplayTables::ComboRow& row : zoHPCDisplayTables::Screens)
        form.m_screen->addItem(QCoreApplication::translate("zoHPCDisplayGUII", row.text),
                               QString::fromLatin1(row.value));
    form.m_renderNode->setModel(m_nodeNames);
    new zoHPCComboSearch(form.m_renderNode);
    zoHPCPanelFields::map(mapper, {{form.m_renderNode, W::Node},
                                   {form.m_screen, W::Screen},
                                   {form.m_windowX, W::X},
                                   {form.m_windowY, W::Y},
                                   {form.m_windowWidth, W::Width},
                                   {form.m_windowHeight, W::Height},
                                   {form.m_fullScreen, W::FullScreen}});
    connect(form.m_fullScreen, &QCheckBox::toggled, this, &zoHPCWindowPanel::showGeometry);
}

zoHPCWindowPanel::~zoHPCWindowPanel() = default;

void zoHPCWindowPanel::setNodeNames(const QStringList& names)
{
    std::vector<const QString*> hostNames;
    hostNames.reserve(std::size_t(names.size()));
    for (const QString& name : names)
        hostNames.push_back(&name);
    const zoHPCUniqueNames unique(std::move(hostNames));
    QStringList entries;
    entries.reserve(names.size());
    for (std::size_t i = 0; i < unique.count(); ++i)
        entries.append(unique.name(i));
    m_nodes = QSet<QString>(entries.cbegin(), entries.cend());
    // Another choice is no change of the window that the panel shows.
    const QSignalBlocker blocker(m_ui.m_renderNode);
    m_nodeNames->setStringList(entries);
}

void zoHPCWindowPanel::setLayoutSource(const std::function<std::shared_ptr<const zoHPCLayout>()>& source)
{
    m_nodeNames->setLayoutSource(source);
}

void zoHPCWindowPanel::showGeometry()
{
    m_ui.m_geometryGroup->setHidden(m_ui.m_fullScreen->isChecked());
}
