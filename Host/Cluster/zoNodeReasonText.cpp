#include "zoNodeReasonText.h"

#include <zoNodeReason.h>

#include <QCoreApplication>

QString zoNodeReasonText::of(const QString& reason, const QString& detail)
{
    QString text;
    if (reason == QLatin1String(zoNodeReason::NoAnswer))
        text = QCoreApplication::translate("zoNodeReasonText", "it does not answer");
    else if (reason == QLatin1String(zoNodeReason::Silent))
        text = QCoreApplication::translate("zoNodeReasonText", "it stopped answering");
    else if (reason == QLatin1String(zoNodeReason::InUse))
        text = QCoreApplication::translate("zoNodeReasonText", "a server already runs on it");
    else if (reason == QLatin1String(zoNodeReason::Ended))
        text = QCoreApplication::translate("zoNodeReasonText", "its server ended");
    else if (reason == QLatin1String(zoNodeReason::Network))
        text = QCoreApplication::translate("zoNodeReasonText", "its network cannot be reached");
    if (text.isEmpty())
        return detail;
    return detail.isEmpty() ? text : text + QStringLiteral(": ") + detail;
}
