#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QHash>
#include <QString>

class QDomElement;
class zoHPCLegacyDisplayWriter;
class zoHPCLegacyHosts;
class zoHPCLegacyParameters;
class zoHPCLegacyRemarks;

// Turns the display layout of a legacy configuration into projections, windows and viewports.
class zoHPCLegacyDisplays final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCConfigConverter)

public:
    // A wall gets no more windows than this unless its list of hosts is longer: a damaged file with a million
    // rows must not fill the memory.
    static constexpr int MaximumWindowsWithoutHost = 16384;

    // All outlive this.
    zoHPCLegacyDisplays(const zoHPCLegacyParameters& parameters, zoHPCLegacyHosts& hosts,
                        zoHPCLegacyRemarks& remarks, zoHPCLegacyDisplayWriter& writer);

    void convert();

private:
    void convertPowerwall();
    void addOffsetRemark(int offset, const char* parameter);
    void convertCustom();
    void convertView(const QDomElement& window, const QString& descriptor, int width, int height);
    void addCustomRemarks(int pipes, int emptyWindows, int firstEmptyWindow);
    void convertOld();

    const zoHPCLegacyParameters& m_parameters;
    zoHPCLegacyHosts& m_hosts;
    zoHPCLegacyRemarks& m_remarks;
    zoHPCLegacyDisplayWriter& m_writer;
    QHash<QByteArray, QString> m_planes; // names of the projections of the custom layout
};
