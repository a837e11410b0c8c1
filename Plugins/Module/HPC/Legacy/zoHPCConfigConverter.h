#pragma once

#include "zoHPCLegacyDisplays.h"
#include "zoHPCLegacyHosts.h"
#include "zoHPCLegacyParameters.h"
#include "zoHPCLegacyRemark.h"
#include "zoHPCLegacyRemarks.h"

#include <QCoreApplication>
#include <QList>
#include <QString>

class QDomElement;

// Turns a legacy key/value configuration into the text of a configuration document; lives for one conversion.
class zoHPCConfigConverter final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCConfigConverter)

public:
    using Remark = zoHPCLegacyRemark;

    static constexpr int MaximumWindowsWithoutHost = zoHPCLegacyDisplays::MaximumWindowsWithoutHost;
    static constexpr int MaximumNestedParameters = zoHPCLegacyParameters::MaximumNested;

    zoHPCConfigConverter();
    ~zoHPCConfigConverter();
    Q_DISABLE_COPY(zoHPCConfigConverter)

    // The configuration document, as zoHPCDocumentText writes it, for the whole text of a legacy file. Never
    // fails: what cannot be read is read with defaults, so that there is always a document with its empty
    // sections. Takes time and memory in proportion to the text. A second conversion adds its hosts to those
    // of the first.
    QString convert(const QString& legacyText);

    // Parameters found by the last conversion; 0 means that the text was no legacy configuration.
    int parameterCount() const;

    // Values that the last conversion dropped or changed by rule, in the order in which it met them.
    // Reads the legacy text again to find the places.
    QList<Remark> remarks() const;

private:
    void convertOptions(QDomElement& master, QDomElement& display);

    zoHPCLegacyParameters m_parameters;
    zoHPCLegacyRemarks m_remarks{m_parameters};
    zoHPCLegacyHosts m_hosts{m_parameters, m_remarks};
};
