#include "zoClusterComparison.h"

#include "zoAttributeValue.h"
#include "zoComparedDocument.h"
#include "zoDisplayComparison.h"
#include "zoHostComparison.h"
#include "zoProjectionComparison.h"

#include <zoClusterTags.h>

#include <QCoreApplication>

zoClusterComparison::zoClusterComparison(const zoComparedDocument& from, const zoComparedDocument& to)
    : m_isSame(zoAttributeValue::isSame(from.root(), to.root()))
{
    const QString booking = zoClusterTags::BookingAttribute;
    const QString bookingBefore = from.root().attribute(booking);
    const QString bookingAfter = to.root().attribute(booking);
    if (bookingBefore != bookingAfter)
        m_differences.add(QStringLiteral("booking-changed"),
                          QCoreApplication::translate("zoClusterComparison", "booking changed from %1 to %2")
                              .arg(zoDifferences::shown(bookingBefore), zoDifferences::shown(bookingAfter)),
                          {zoDifferences::change(zoClusterTags::Cluster, booking, from.root(), to.root())});
    zoHostComparison hosts(m_differences);
    hosts.compare(from, to);
    zoProjectionComparison(m_differences).compare(from, to);
    zoDisplayComparison(m_differences, hosts.renamedNodes()).compare(from, to);
}
