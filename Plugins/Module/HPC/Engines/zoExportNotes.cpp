#include "zoExportNotes.h"

#include "zoEngineFiles.h"
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

zoExportNotes::zoExportNotes(const zoHPCRenderSetup& setup, const Targets& targets)
    : m_setup(setup), m_targets(targets)
{
    noteDisplays();
    noteFullScreen();
    noteHosts();
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
                     .arg(QString::number(separation), name, QString::number(m_setup.eyeSeparation())),
                 m_targets.release.hasViewers() ? 0U : ParaView);
        if (display->getBool(zoHPCDisplayItem::HardwareSync))
            note(window.item, tr("the hardware sync of %1 is not written").arg(name), ParaView);
        if (!display->getCameraName().isEmpty())
            note(window.item,
                 tr("the camera \"%1\" of %2 is not written").arg(display->getCameraName(), name));
        known.insert(display);
    }
}

// Once for all windows: walls are made of them.
void zoExportNotes::noteFullScreen()
{
    QSet<int> windows;
    int first = -1;
    for (const zoHPCRenderSetup::Picture& picture : m_setup.pictures()) {
        if (!picture.isFullScreen)
            continue;
        windows.insert(picture.window);
        first = first < 0 ? picture.window : first;
    }
    if (first >= 0)
        note(m_setup.layout().windows()[std::size_t(first)].item,
             tr("full screen (%1 windows) is not written: they open in their size at their place")
                 .arg(windows.size()),
             ParaView);
}

void zoExportNotes::noteHosts()
{
    QSet<QString> known;
    for (const zoHPCRenderSetup::Picture& picture : m_setup.pictures()) {
        const QString name = zoEngineFiles::equalizerName(picture.host);
        if (name != picture.host && !known.contains(picture.host))
            note(m_setup.layout().nodes()[std::size_t(picture.node)].item,
                 tr("the host name \"%1\" is written as \"%2\"").arg(picture.host, name), Equalizer);
        known.insert(picture.host);
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
        if (!picture->eye.isEmpty() && !isMono) {
            const bool isInParaView =
                m_targets.release.hasViewers() && zoEngineFiles::paraViewStereo(picture->eye) != nullptr;
            const bool isInEqualizer = zoEngineFiles::hasEqualizerEye(m_setup, picture->eye);
            note(viewport.item, tr("the eye \"%1\" of %2 is not written").arg(picture->eye, name),
                 (isInParaView ? 0U : ParaView) | (isInEqualizer ? 0U : Equalizer));
        }
        if (picture->flipX || picture->flipY)
            note(viewport.item, tr("the flip of %1 is not written").arg(name));
        ++picture;
    }
}

void zoExportNotes::note(const QTreeWidgetItem* item, const QString& text, unsigned engines)
{
    const unsigned written = (m_targets.paraView ? ParaView : 0U) | (m_targets.equalizer ? Equalizer : 0U);
    const unsigned missing = engines & written;
    if (missing == 0U)
        return;
    // The other one has it.
    const bool isOne = missing != written;
    m_notes.push_back({item, !isOne                ? text
                             : missing == ParaView ? tr("for ParaView: %1").arg(text)
                                                   : tr("for Equalizer: %1").arg(text)});
}
