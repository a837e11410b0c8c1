#include "zoClusterComparison.h"

#include "zoDisplayComparison.h"
#include "zoHostComparison.h"
#include "zoProjectionComparison.h"

#include <zoClusterTags.h>

#include <QCoreApplication>
#include <QDomDocument>
#include <QDomElement>

zoClusterComparison::zoClusterComparison(const QDomDocument& before, const QDomDocument& after)
{
    const QDomElement rootBefore = before.documentElement();
    const QDomElement rootAfter = after.documentElement();
    const QString bookingBefore = rootBefore.attribute(zoClusterTags::BookingAttribute);
    const QString bookingAfter = rootAfter.attribute(zoClusterTags::BookingAttribute);
    if (bookingBefore != bookingAfter)
        m_differences.add(QStringLiteral("booking-changed"),
                          QCoreApplication::translate("zoClusterComparison", "booking changed from %1 to %2")
                              .arg(zoDifferences::shown(bookingBefore), zoDifferences::shown(bookingAfter)));
    zoHostComparison(m_differences).compare(rootBefore, rootAfter);
    zoProjectionComparison(m_differences).compare(rootBefore, rootAfter);
    zoDisplayComparison(m_differences).compare(rootBefore, rootAfter);
}
