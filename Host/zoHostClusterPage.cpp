#include "zoHostClusterPage.h"

#include "zoLocalClusterService.h"

#include <zoPreferencesService.h>

#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

namespace
{
constexpr char s_memoryKey[] = "Local cluster memory per node";
constexpr qint64 s_mebibyte = 1024 * 1024;
constexpr int s_defaultMebibytes = int(zoLocalClusterService::DefaultMemoryPerNode / s_mebibyte);
constexpr int s_maximumMebibytes = 1024 * 1024;
} // namespace

zoHostClusterPage::zoHostClusterPage(zoPreferencesService* preferences, zoLocalClusterService* cluster)
    : m_preferences(preferences), m_cluster(cluster), m_memoryPerNode(new QSpinBox(this))
{
    m_memoryPerNode->setObjectName(QStringLiteral("MemoryPerNode"));
    m_memoryPerNode->setRange(0, s_maximumMebibytes);
    m_memoryPerNode->setSingleStep(64);
    m_memoryPerNode->setSuffix(tr(" MiB"));
    m_memoryPerNode->setSpecialValueText(tr("Do not ask"));
    m_memoryPerNode->setToolTip(tr("A start asks when this machine has less memory available for a node"));
    auto* hint =
        new QLabel(tr("Sessions of this host keep all nodes on this machine. A start asks first when the "
                      "available memory is not enough for all of them."),
                   this);
    hint->setWordWrap(true);
    auto* layout = new QFormLayout(this);
    layout->addRow(hint);
    layout->addRow(tr("&Memory per node:"), m_memoryPerNode);

    m_preferences->registerPage(
        tr("Local cluster"), this, [this] { storeMebibytes(s_defaultMebibytes); },
        [this] { storeMebibytes(m_memoryPerNode->value()); },
        [this] { m_memoryPerNode->setValue(storedMebibytes()); });
    m_cluster->setMemoryPerNode(storedMebibytes() * s_mebibyte);
}

zoHostClusterPage::~zoHostClusterPage() = default;

int zoHostClusterPage::storedMebibytes() const
{
    bool ok = false;
    const int stored = m_preferences->getString(QLatin1String(s_memoryKey), QString()).toInt(&ok);
    return ok ? qBound(0, stored, s_maximumMebibytes) : s_defaultMebibytes;
}

void zoHostClusterPage::storeMebibytes(int mebibytes)
{
    m_preferences->setString(QLatin1String(s_memoryKey), QString::number(mebibytes));
    m_cluster->setMemoryPerNode(mebibytes * s_mebibyte);
}
