#include "zoHPCLegacyDisplays.h"

#include "zoHPCLegacyDisplayWriter.h"
#include "zoHPCLegacyHosts.h"
#include "zoHPCLegacyParameters.h"
#include "zoHPCLegacyRemarks.h"
#include "zoHPCLegacyText.h"
#include "zoText.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>

#include <zoLog.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <locale.h>
#include <stdlib.h>

using Kind = zoHPCLegacyRemark::Kind;

namespace
{
// Windows and viewports of one tile of a power wall by stereo code. Viewport v of window w has eye w + v.
struct WallStereo
{
    const char* code;
    int windows;
    int viewports;
    bool half; // viewports cover the left half of the window
    const char* eyes[2];
};

constexpr WallStereo s_wallStereos[] = {
    {"1", 2, 1, false, {"left", "right"}},
    // The left half alone: files that were converted before show it so, and nothing was ever drawn in the
    // other half.
    {"2", 1, 1, true, {"stereo", nullptr}},
    {"3", 1, 2, false, {"left", "right"}},
};

constexpr WallStereo s_wallMono = {"0", 1, 1, false, {"mono", nullptr}};

const WallStereo& wallStereo(const QString& code)
{
    for (const WallStereo& stereo : s_wallStereos) {
        if (code == QLatin1String(stereo.code))
            return stereo;
    }
    return s_wallMono;
}

// Legacy numbers are written in the C locale, whatever locale the host has set for its own output.
class CLocale final
{
public:
    CLocale() : m_locale(newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr))) {}
    ~CLocale() { freelocale(m_locale); }
    Q_DISABLE_COPY(CLocale)

    locale_t get() const { return m_locale; }

private:
    locale_t m_locale;
};

locale_t cLocale()
{
    static const CLocale s_locale;
    return s_locale.get();
}

double doubleNumber(const char* text)
{
    return strtod_l(text, nullptr, cLocale());
}

// The oldest format kept its planes in single precision; existing walls are calibrated with the rounded
// corners.
double singleNumber(const char* text)
{
    return static_cast<double>(strtof_l(text, nullptr, cLocale()));
}

using Point = zoHPCLegacyDisplayWriter::Point;

// Up to three numbers, separated by blanks, tabs, newlines or commas; what is missing is 0.
Point pointOf(const QStringList& fields, int firstField, double (*number)(const char*))
{
    const char* const separators = " \t\n,";
    QByteArray text = fields.mid(firstField, 3).join(QLatin1Char(' ')).toLatin1();
    char* token = text.data();
    Point point = {0.0, 0.0, 0.0};
    for (double& coordinate : point) {
        token += std::strspn(token, separators);
        if (*token == '\0')
            break;
        char* const end = token + std::strcspn(token, separators);
        const bool last = *end == '\0';
        *end = '\0';
        coordinate = number(token);
        token = last ? end : end + 1;
    }
    return point;
}

// Planes are shared by this text. Six digits and no separator: rooms that were imported before have their
// planes shared in just this way, even where different points happen to read alike.
QByteArray planeKey(const std::array<Point, 3>& points)
{
    QByteArray key;
    for (const Point& point : points) {
        for (const double coordinate : point)
            key += QByteArray::number(coordinate + 0.0, 'g', 6); // + 0.0: no negative zero
    }
    return key;
}
} // namespace

zoHPCLegacyDisplays::zoHPCLegacyDisplays(const zoHPCLegacyParameters& parameters, zoHPCLegacyHosts& hosts,
                                         zoHPCLegacyRemarks& remarks, zoHPCLegacyDisplayWriter& writer)
    : m_parameters(parameters), m_hosts(hosts), m_remarks(remarks), m_writer(writer)
{
}

void zoHPCLegacyDisplays::convert()
{
    switch (m_parameters.mode()) {
    case zoHPCLegacyParameters::Raytracing:
        break;
    case zoHPCLegacyParameters::Powerwall:
        convertPowerwall();
        break;
    case zoHPCLegacyParameters::Custom:
        convertCustom();
        break;
    case zoHPCLegacyParameters::Old:
        convertOld();
        break;
    }
}

// Written all the same, for whoever reads the file by other means; the next save leaves it out.
void zoHPCLegacyDisplays::addOffsetRemark(int offset, const char* parameter)
{
    if (offset != 0)
        m_remarks.add(
            Kind::DroppedOffset,
            tr("The offset %1 of the wall has no counterpart; check where its windows stand.").arg(offset),
            QLatin1String(parameter));
}

void zoHPCLegacyDisplays::convertPowerwall()
{
    const int xOffset = m_remarks.intParameter("zoClusterPWXOffset", "0");
    const int yOffset = m_remarks.intParameter("zoClusterPWYOffset", "0");
    const int width = m_remarks.intParameter("zoClusterPWXRes", "1280");
    const int height = m_remarks.intParameter("zoClusterPWYRes", "1024");
    const int overlap = m_remarks.intParameter("zoClusterPWXOverlap", "0");
    const int rows = m_remarks.intParameter("zoClusterPWRows", "1");
    const int columns = m_remarks.intParameter("zoClusterPWCols", "1");
    const WallStereo& stereo = wallStereo(m_parameters.value("zoClusterPWStereoMode", "0"));

    // The legacy format knows one overlap, which holds in both directions.
    m_writer.addWall(zoText("wall"), width, height, xOffset, yOffset, rows, columns, overlap, overlap);
    if (overlap != 0)
        m_remarks.add(Kind::CopiedOverlap, tr("The overlap %1 was taken for both directions.").arg(overlap),
                      zoText("zoClusterPWXOverlap"));
    addOffsetRemark(xOffset, "zoClusterPWXOffset");
    addOffsetRemark(yOffset, "zoClusterPWYOffset");
    if (stereo.half)
        m_remarks.add(Kind::HalfStereo, tr("The viewports cover the left half of their windows only."),
                      zoText("zoClusterPWStereoMode"));

    const qint64 tiles = rows > 0 && columns > 0 ? qint64(rows) * columns : 0;
    const int limit = std::max<int>(MaximumWindowsWithoutHost, m_hosts.count());
    const double right = stereo.half ? width / 2 : width;
    int k = 0;
    for (qint64 tile = 0; tile < tiles; ++tile) {
        if (k > limit - stereo.windows) {
            zoLog::error("%s",
                         qUtf8Printable(
                             tr("Legacy wall of %1 x %2 tiles: only the first %3 windows were converted.")
                                 .arg(QString::number(rows), QString::number(columns), QString::number(k))));
            m_remarks.add(Kind::CutWall,
                          tr("The wall has %1 x %2 tiles; only its first %3 windows were converted.")
                              .arg(QString::number(rows), QString::number(columns), QString::number(k)),
                          rows > columns ? zoText("zoClusterPWRows") : zoText("zoClusterPWCols"));
            break;
        }
        const QString tileName = zoText("wall row:%1 col:%2").arg(tile / columns + 1).arg(tile % columns + 1);
        for (int w = 0; w < stereo.windows; ++w, ++k) {
            const QDomElement window = m_writer.addWindow(m_hosts.name(k), QString(), m_hosts.xPosition(k),
                                                          m_hosts.yPosition(k), width, height);
            for (int v = 0; v < stereo.viewports; ++v)
                m_writer.addViewport(window, tileName, 0.0, 0.0, right, height,
                                     QLatin1String(stereo.eyes[w + v]), 0);
        }
    }
    m_hosts.addRemarks(k);
}

void zoHPCLegacyDisplays::convertCustom()
{
    const QStringList pipes = m_parameters.pipes();
    int emptyWindows = 0;
    int firstEmptyWindow = 0;
    m_planes.clear();
    for (int i = 0; i < pipes.size(); ++i) {
        m_remarks.setEntry(i);
        const QStringList fields = zoHPCLegacyText::parts(pipes.at(i), ' ');
        const int width = m_remarks.intField(fields.value(3));
        const int height = m_remarks.intField(fields.value(4));
        const QDomElement window =
            m_writer.addWindow(m_hosts.name(i), QString(), m_remarks.intField(fields.value(1)),
                               m_remarks.intField(fields.value(2)), width, height);
        if ((width == 0 || height == 0) && ++emptyWindows == 1)
            firstEmptyWindow = i;

        const QStringList descriptors = zoHPCLegacyText::parts(fields.mid(5).join(QLatin1Char(' ')), '|');
        for (const QString& descriptor : descriptors)
            convertView(window, descriptor, width, height);
    }
    addCustomRemarks(int(pipes.size()), emptyWindows, firstEmptyWindow);
}

void zoHPCLegacyDisplays::convertView(const QDomElement& window, const QString& descriptor, int width,
                                      int height)
{
    const QStringList view = zoHPCLegacyText::parts(descriptor, ' ');
    const bool isLeft = zoHPCLegacyText::firstPart(view.value(6), ';') == QLatin1String("1");
    QString eye = isLeft ? zoText("left") : zoText("right");
    if (zoHPCLegacyText::withoutQuotes(view.at(0)).toLower() == QLatin1String("stereo")) {
        // A stereo view is listed once for each eye; the other descriptor stands for both.
        if (isLeft)
            return;
        eye = zoText("stereo");
    }

    const std::array<Point, 3> points = {pointOf(view, 7, doubleNumber), pointOf(view, 10, doubleNumber),
                                         pointOf(view, 13, doubleNumber)};
    QString& plane = m_planes[planeKey(points)];
    if (plane.isEmpty()) {
        plane = zoText("projection%1").arg(m_planes.size());
        m_writer.addPlane(plane, points);
    }
    // Rectangles may lie anywhere on a larger desktop. The far edges are wrapped by their last pixel, so that
    // an edge at the window's size stays there; a window without an area makes them invalid.
    m_writer.addViewport(window, plane, std::fmod(m_remarks.doubleField(view.value(2)), width),
                         std::fmod(m_remarks.doubleField(view.value(3)), height),
                         std::fmod(m_remarks.doubleField(view.value(4)) - 1.0, width) + 1.0,
                         std::fmod(m_remarks.doubleField(view.value(5)) - 1.0, height) + 1.0, eye, 0);
}

void zoHPCLegacyDisplays::addCustomRemarks(int pipes, int emptyWindows, int firstEmptyWindow)
{
    const QStringList dropped = m_parameters.pipeNamesFrom(pipes);
    if (!dropped.isEmpty()) {
        m_remarks.add(Kind::DroppedPipes,
                      tr("There is no zoClusterPipe%1, so %2 pipes with higher numbers were dropped.")
                          .arg(QString::number(pipes), QString::number(dropped.size())),
                      dropped.constFirst());
    }
    if (emptyWindows > 0)
        m_remarks.add(Kind::EmptyWindow, tr("%1 windows have no width or no height.").arg(emptyWindows),
                      m_parameters.entryName(firstEmptyWindow));
    m_hosts.addRemarks(pipes);
}

void zoHPCLegacyDisplays::convertOld()
{
    const bool passive = m_parameters.isOn("zoClusterPassiveStereo");
    const bool active = m_parameters.isOn("zoClusterActiveStereo");
    const QStringList entries = zoHPCLegacyText::parts(m_parameters.value("zoClusterHosts", ""), ',');
    QStringList eyes(zoText("mono"));
    if (active)
        eyes = QStringList(zoText("stereo"));
    else if (passive)
        eyes = QStringList{zoText("left"), zoText("right")};

    for (int i = 0; i < entries.size(); ++i) {
        const QStringList fields = zoHPCLegacyText::parts(entries.at(i), ' ');
        const QString plane = zoText("projection%1").arg(i + 1);
        m_writer.addPlane(plane, {{pointOf(fields, 9, singleNumber), pointOf(fields, 12, singleNumber),
                                   pointOf(fields, 15, singleNumber)}});
        const QDomElement window =
            m_writer.addWindow(m_hosts.name(i), QString(), m_remarks.intField(fields.value(1)),
                               m_remarks.intField(fields.value(2)), m_remarks.intField(fields.value(3)),
                               m_remarks.intField(fields.value(4)));
        const double x1 = m_remarks.doubleField(fields.value(5));
        const double y1 = m_remarks.doubleField(fields.value(6));
        const double x2 = m_remarks.doubleField(fields.value(7));
        const double y2 = m_remarks.doubleField(fields.value(8));
        for (const QString& eye : qAsConst(eyes))
            m_writer.addViewport(window, plane, x1, y1, x2, y2, eye, 0);
    }
    m_hosts.addRemarks(int(entries.size()));
}
