#include "zoHostClusterPage.h"

#include "zoLocalClusterService.h"

#include <zoPreferencesService.h>

#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

namespace
{
const char MemoryKey[] = "Local cluster memory per node";
constexpr qint64 Mebibyte = 1024 * 1024;
constexpr int DefaultMebibytes = int(zoLocalClusterService::DefaultMemoryPerNode / Mebibyte);
constexpr int MaximumMebibytes = 1024 * 1024;
} // namespace

zoHostClusterPage::zoHostClusterPage(zoPreferencesService* preferences, zoLocalClusterService* cluster)
    : m_preferences(preferences), m_cluster(cluster), m_memoryPerNode(new QSpinBox(this))
{
    m_memoryPerNode->setObjectName(QStringLiteral("MemoryPerNode"));
    m_memoryPerNode->setRange(0, MaximumMebibytes);
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
        tr("Local cluster"), this, [this] { storeMebibytes(DefaultMebibytes); },
        [this] { storeMebibytes(m_memoryPerNode->value()); },
        [this] { m_memoryPerNode->setValue(storedMebibytes()); });
    m_cluster->setMemoryPerNode(storedMebibytes() * Mebibyte);
}

zoHostClusterPage::~zoHostClusterPage() = default;

int zoHostClusterPage::storedMebibytes() const
{
    bool ok = false;
    const int stored = m_preferences->getString(QLatin1String(MemoryKey), QString()).toInt(&ok);
    return ok ? qBound(0, stored, MaximumMebibytes) : DefaultMebibytes;
}

void zoHostClusterPage::storeMebibytes(int mebibytes)
{
    m_preferences->setString(QLatin1String(MemoryKey), QString::number(mebibytes));
    m_cluster->setMemoryPerNode(mebibytes * Mebibyte);
}
