#include "zoHPCManualPages.h"

namespace
{
constexpr struct
{
    const char* name;
    const char* page;
} s_pages[] = {
    {"m_centralWidget", "windows#hpc-cluster"},
    {"m_masterPage", "windows#options"},
    {"m_networkPage", "windows#network"},
    {"m_nodePage", "windows#compute-node"},
    {"zoHPCConfigEditGUIW", "windows#cluster-config"},
    {"zoHPCDisplayGUII", "windows#display-setup"},
    {"m_projectionPage", "windows#projection"},
    {"m_displayPage", "windows#display"},
    {"m_windowPage", "windows#window"},
    {"m_viewportPage", "windows#viewport"},
    {"m_abortButton", "starting"},
    {"zoHPCPreferencesGUII", "windows#preferences"},
};
} // namespace

QVariantMap zoHPCManualPages::byObjectName()
{
    QVariantMap pages;
    for (const auto& row : s_pages)
        pages.insert(QString::fromLatin1(row.name), QString::fromLatin1(row.page));
    return pages;
}
