#include "zoParaViewReader.h"

#include "zoConfigurationText.h"
#include "zoWallArrangement.h"

#include <zoEngineFiles.h>
#include <zoExportNotes.h>
#include <zoHPCItemsById.h>
#include <zoHPCTreeItem.h>

#include <algorithm>

namespace
{
// Without the number of its screen.
QString serverOf(const QString& display)
{
    const int dot = display.indexOf(QLatin1Char('.'), display.lastIndexOf(QLatin1Char(':')));
    return dot < 0 ? display : display.left(dot);
}
} // namespace

bool zoParaViewReader::read(const QString& text, const zoParaViewSetup::Request& request,
                            zoParaViewSetup& setup, QString& reason)
{
    zoParaViewReader reader(request);
    if (!zoConfigurationText::read(text, reader.m_configuration, reason))
        return false;
    zoHPCTreeItem* const master = reader.m_configuration.hosts().master();
    reader.m_render =
        std::make_unique<zoHPCRenderSetup>(reader.m_configuration.displays(), master, request.pixelPitch);
    zoHPCItemsById ids;
    ids.enter({master}, [&](zoHPCTreeItem* item, int entry) { reader.m_ids.insert(item, ids.id(entry)); });
    reader.readMachines();
    reader.readGateways();
    reader.readNotes();
    setup = std::move(reader.m_setup);
    return true;
}

void zoParaViewReader::readMachines()
{
    std::vector<zoEngineFiles::Place> places = zoEngineFiles::paraViewPlaces(*m_render);
    const std::vector<zoHPCRenderSetup::Picture>& pictures = m_render->pictures();
    const bool isRehearsal = !m_request.rehearsal.isEmpty();
    const zoWallArrangement arrangement(*m_render);
    // Nothing is enlarged: a wall that fits stands in its own size.
    const QSizeF whole(arrangement.size());
    const double scale = std::min(
        {1.0, m_request.rehearsal.width() / whole.width(), m_request.rehearsal.height() / whole.height()});
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        const zoHPCRenderSetup::Picture& picture = pictures[i];
        zoEngineFiles::Place& place = places[i];
        if (isRehearsal) {
            const QRectF wanted = arrangement.place(int(i));
            place.display.clear();
            place.geometry = QRectF(wanted.topLeft() * scale, wanted.size() * scale).toAlignedRect();
        } else if (!place.display.isEmpty() && !m_request.display.isEmpty() &&
                   m_request.hostsHere.contains(picture.host)) {
            place.display = serverOf(m_request.display) + QLatin1Char('.') + QString::number(picture.screen);
        }
        m_setup.machines.push_back({m_ids.value(m_render->layout().nodes()[std::size_t(picture.node)].item),
                                    picture.host,
                                    place.display,
                                    picture.projection,
                                    {}});
    }
    readNetwork();
    if (pictures.empty())
        return;
    m_setup.pvx = zoEngineFiles::paraView(*m_render, zoParaViewRelease(), places);
    int at = m_setup.pvx.indexOf("<Machine ");
    for (zoParaViewSetup::Machine& machine : m_setup.machines) {
        const int next = m_setup.pvx.indexOf("<Machine ", at + 1);
        machine.text = m_setup.pvx.mid(at, next < 0 ? -1 : next - at);
        at = next;
    }
}

void zoParaViewReader::readNetwork()
{
    const zoHPCTreeItem* network = nullptr;
    for (const zoHPCRenderSetup::Picture& picture : m_render->pictures()) {
        const zoHPCTreeItem* const own =
            m_render->layout().nodes()[std::size_t(picture.node)].item->getParent();
        if (network != nullptr && own != network)
            return;
        network = own;
    }
    if (network == nullptr)
        return;
    network->forEachOption([this](const QString& name, const QString& value) {
        if (!value.isEmpty())
            m_setup.network.insert(name, value);
    });
}

void zoParaViewReader::readNotes()
{
    zoExportNotes::Targets targets;
    targets.paraView = true;
    const zoExportNotes notes(*m_render, targets);
    for (const zoExportNotes::Note& note : notes.notes()) {
        if (!m_setup.notes.contains(note.text))
            m_setup.notes << note.text;
    }
    for (const zoHPCLayout::Network& network : m_render->layout().networks()) {
        if (network.enabled && network.enabledNodes > 0 && network.item->isEncrypted())
            m_setup.notes << tr("%1 is encrypted in the configuration; what ParaView sends is not")
                                 .arg(m_ids.value(network.item));
    }
}

void zoParaViewReader::readGateways()
{
    for (const zoHPCLayout::Network& network : m_render->layout().networks()) {
        const zoHPCTreeItem* const above = network.item->getParent();
        if (network.enabled && network.enabledNodes > 0 && above != nullptr && above->isNode())
            m_setup.gateways << m_ids.value(above);
    }
}

extern "C" Q_DECL_EXPORT bool zoReadParaViewSetupEntry(const QString& document,
                                                       const zoParaViewSetup::Request& request,
                                                       zoParaViewSetup& setup, QString& reason)
{
    return zoParaViewReader::read(document, request, setup, reason);
}
