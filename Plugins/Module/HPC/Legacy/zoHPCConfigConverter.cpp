#include "zoHPCConfigConverter.h"

#include "zoHPCDocumentText.h"
#include "zoHPCLegacyDisplayWriter.h"
#include "zoHPCOption.h"
#include "zoText.h"

#include <QDomDocument>
#include <QDomElement>

#include <zoClusterTags.h>

#include <algorithm>
#include <iterator>

namespace
{
// What a legacy compression level becomes; levels that are not listed become nothing.
struct Compression
{
    const char* level;
    const char* scene; // null: no attribute
    const char* image;
};

constexpr Compression s_compressions[] = {
    {"1", "fast", "lossless"},
    {"2", "best", "lossyfast"},
    {"3", nullptr, "lossybest"},
};
} // namespace

zoHPCConfigConverter::zoHPCConfigConverter() = default;

zoHPCConfigConverter::~zoHPCConfigConverter() = default;

QString zoHPCConfigConverter::convert(const QString& legacyText)
{
    m_remarks.clear();
    QDomDocument document;
    QDomElement cluster = document.createElement(zoClusterTags::Cluster);
    QDomElement master = document.createElement(zoClusterTags::Master);
    QDomElement network = document.createElement(zoClusterTags::Network);
    QDomElement display = document.createElement(zoClusterTags::Display);
    master.appendChild(network);
    cluster.appendChild(master);
    cluster.appendChild(display);
    document.appendChild(cluster);

    m_parameters.read(legacyText);
    if (m_parameters.count() == 0)
        m_remarks.add(Remark::Kind::NoParameters, tr("The text holds no legacy parameter."), QString());
    convertOptions(master, display);
    zoHPCLegacyDisplayWriter writer(cluster, display);
    const double zeroParallax = m_remarks.doubleParameter("zoClusterZeroParallax", "1500");
    writer.setWallOptions(m_parameters.isOn("zoEdgeBlendingEnabled"), zeroParallax);
    m_hosts.convert();
    zoHPCLegacyDisplays(m_parameters, m_hosts, m_remarks, writer).convert();
    m_remarks.addUnreadFields();
    // With its empty attributes: a window without a host has an empty node.
    return zoHPCDocumentText::toText(document, zoHPCDocumentText::EmptyAttributes::Keep,
                                     [&](const QDomElement& element, zoHPCDocumentWriter& text) {
                                         if (element == network)
                                             m_hosts.writeNodes(text);
                                     });
}

int zoHPCConfigConverter::parameterCount() const
{
    return m_parameters.count();
}

QList<zoHPCConfigConverter::Remark> zoHPCConfigConverter::remarks() const
{
    return m_remarks.withPlaces();
}

void zoHPCConfigConverter::convertOptions(QDomElement& master, QDomElement& display)
{
    const QString level = m_parameters.value("zoClusterNetworkCompression", "0");
    const auto compression =
        std::find_if(std::begin(s_compressions), std::end(s_compressions),
                     [&level](const Compression& c) { return level == QLatin1String(c.level); });
    if (compression != std::end(s_compressions)) {
        if (compression->scene)
            master.setAttribute(zoHPCOption::SceneCompression, QLatin1String(compression->scene));
        master.setAttribute(zoHPCOption::ImageCompression, QLatin1String(compression->image));
    } else if (level != QLatin1String("0")) {
        m_remarks.add(Remark::Kind::UnknownCompression,
                      tr("The compression level \"%1\" is not known.").arg(level),
                      zoText("zoClusterNetworkCompression"));
    }

    const QString superSampling = m_parameters.value("zoClusterSortFirstStillFrameSupersamplingFactor", "0");
    if (superSampling != QLatin1String("0"))
        master.setAttribute(zoHPCOption::StillFrameSupersampling, superSampling);

    display.setAttribute(zoText("eyeseparation"), m_parameters.value("zoClusterEyeSeparation", "65"));
}
