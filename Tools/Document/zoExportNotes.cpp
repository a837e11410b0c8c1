#include "zoExportNotes.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCProjectionType.h"
#include "zoHPCRenderSetup.h"
#include "zoHPCTreeItem.h"
#include "zoHPCViewportItem.h"

#include <QSet>

namespace
{
using P = zoHPCProjectionItem;
} // namespace

zoExportNotes::zoExportNotes(const zoHPCRenderSetup& setup) : m_setup(setup)
{
    noteDisplays();
    noteGateways();
    noteProjections();
    noteViewports();
}

void zoExportNotes::noteDisplays()
{
    QSet<const QTreeWidgetItem*> known;
    for (const zoHPCLayout::Window& window : m_setup.layout().windows()) {
        const auto* display = dynamic_cast<const zoHPCDisplayItem*>(window.item->parent());
        if (display == nullptr || known.contains(display))
            continue;
        const QString name = tr("display %1").arg(window.display);
        const double separation = display->getDouble(zoHPCDisplayItem::EyeSeparation);
        if (separation != m_setup.eyeSeparation())
            note(window.item,
                 tr("the eye separation of %1 mm of %2 is not written: there is one for all, %3 mm")
                     .arg(QString::number(separation), name, QString::number(m_setup.eyeSeparation())));
        if (display->getBool(zoHPCDisplayItem::HardwareSync))
            note(window.item, tr("the hardware sync of %1 is not written").arg(name));
        if (!display->getCameraName().isEmpty())
            note(window.item,
                 tr("the camera \"%1\" of %2 is not written").arg(display->getCameraName(), name));
        known.insert(display);
    }
}

void zoExportNotes::noteGateways()
{
    for (const zoHPCLayout::Node& node : m_setup.layout().nodes()) {
        if (node.item->childCount() > 0)
            note(node.item,
                 tr("the gateway \"%1\" is not written: the hosts behind it must be reached directly")
                     .arg(node.item->hostName()));
    }
}

void zoExportNotes::noteProjections()
{
    QSet<int> shown;
    for (const zoHPCLayout::Viewport& viewport : m_setup.layout().viewports()) {
        if (viewport.projection != zoHPCLayout::None)
            shown.insert(m_setup.layout().projections()[std::size_t(viewport.projection)].top);
    }
    for (std::size_t i = 0; i < m_setup.layout().projections().size(); ++i) {
        const P& item = *m_setup.layout().projections()[i].item;
        if (!shown.contains(int(i)))
            continue;
        const QString name = item.getString(P::Name);
        if (item.getBool(P::EdgeBlending))
            note(&item, tr("the edge blending of \"%1\" is not written").arg(name));
        const bool isInPixels = zoHPCProjectionType::of(item.projectionType()).isInPixels;
        if (!m_setup.rightEyeOffset(int(i)).isNull())
            note(&item, tr("the right-eye offset of \"%1\" is not written").arg(name));
        if (isInPixels)
            note(&item, tr("\"%1\" has pixels instead of a size: a pixel is taken for %2 mm (--pixel-pitch)")
                            .arg(name, QString::number(m_setup.pixelPitch())));
    }
}

// In the order of the viewports, shown or not.
void zoExportNotes::noteViewports()
{
    auto picture = m_setup.pictures().begin();
    auto leftOut = m_setup.leftOut().begin();
    for (std::size_t i = 0; i < m_setup.layout().viewports().size(); ++i) {
        const zoHPCLayout::Viewport& viewport = m_setup.layout().viewports()[i];
        if (leftOut != m_setup.leftOut().end() && leftOut->viewport == int(i))
            note(viewport.item, (leftOut++)->text);
        if (picture == m_setup.pictures().end() || picture->viewport != int(i))
            continue;
        const QString name = m_setup.nameOf(viewport);
        const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(picture->eye);
        const bool isMono = mode != nullptr && mode->eyes == zoHPCDisplayTables::StereoMode::Eyes::Mono;
        if (!picture->eye.isEmpty() && !isMono)
            note(viewport.item, tr("the eye \"%1\" of %2 is not written").arg(picture->eye, name));
        if (picture->flipX || picture->flipY)
            note(viewport.item, tr("the flip of %1 is not written").arg(name));
        ++picture;
    }
}

void zoExportNotes::note(const QTreeWidgetItem* item, const QString& text)
{
    m_notes.push_back({item, text});
}
