#include "zoConfigurationText.h"

#include <zoClusterTags.h>
#include <zoHPCConfiguration.h>
#include <zoHPCDocumentText.h>

#include <QCoreApplication>
#include <QDomDocument>

bool zoConfigurationText::read(const QString& text, zoHPCConfiguration& configuration, QString& reason)
{
    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    if (!zoHPCDocumentText::parse(text, document, refusal)) {
        reason =
            refusal.reason.isEmpty()
                ? QCoreApplication::translate("zoServerSetup", "the configuration is empty")
                : QCoreApplication::translate("zoServerSetup", "line %1, column %2: %3")
                      .arg(QString::number(refusal.line), QString::number(refusal.column), refusal.reason);
        return false;
    }
    if (document.documentElement().tagName() != zoClusterTags::Cluster) {
        reason = QCoreApplication::translate("zoServerSetup",
                                             "no cluster configuration: its root element is \"%1\"")
                     .arg(document.documentElement().tagName());
        return false;
    }
    configuration.read(document);
    return true;
}
