#include "zoHPCConfigConverter.h"

#include "zoHPCDocumentText.h"
#include "zoHPCElementScanner.h"
#include "zoHPCOption.h"
#include "zoText.h"

#include <zoLog.h>

#include <QHash>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <locale.h>
#include <stdlib.h>

namespace
{
const char* const ForwardsKey = "forwards=";

// What a legacy compression level becomes; levels that are not listed become nothing.
struct Compression
{
    const char* level;
    const char* scene; // null: no attribute
    const char* image;
};

constexpr Compression s_compressions[] = {
    {"1", "fast", "lossless"},
    {"2", "best", "lossyfast"},
    {"3", nullptr, "lossybest"},
};

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

using Point = std::array<double, 3>;

// Up to three numbers parted by blanks, tabs, newlines or commas; what is missing is 0.
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

// Parts of a text, empty ones included: part n is what section(separator, n, n) gives, found in one pass.
QStringList parts(const QString& text, char separator)
{
    return text.split(QLatin1Char(separator));
}

QString firstPart(const QString& text, char separator)
{
    return text.left(text.indexOf(QLatin1Char(separator)));
}

QString withoutQuotes(QString text)
{
    return text.remove(QLatin1Char('"'));
}

QString decoded(const QString& base64)
{
    const QByteArray bytes = QByteArray::fromBase64(base64.toLatin1().constData());
    return bytes.isNull() ? QString() : QString::fromUtf8(bytes.constData()); // ends at the first NUL
}

// A parameter of a legacy file and where the text of its element, descendants included, stands.
struct Key
{
    QDomElement element;
    int textBegin;
    int textEnd;
};

// All parameters in document order; `text` receives the whole text of the document. One walk for all of them:
// asking each element for its text would visit an inner element once per outer one.
std::vector<Key> keysOf(const QDomDocument& legacy, QString& text)
{
    std::vector<Key> keys;
    std::vector<std::size_t> open;
    bool tooDeep = false;
    const auto isKey = [](const QDomNode& node) {
        return node.isElement() && node.nodeName() == QLatin1String("key");
    };
    const QDomNode root = legacy.documentElement();
    QDomNode node = root;
    while (!node.isNull()) {
        if (isKey(node)) {
            if (open.size() < std::size_t(zoHPCConfigConverter::MaximumNestedParameters)) {
                keys.push_back({node.toElement(), int(text.size()), int(text.size())});
                open.push_back(keys.size() - 1);
            } else {
                tooDeep = true;
            }
        } else if (node.isText() || node.isCDATASection()) {
            text += node.nodeValue();
        }

        if (node.isElement() && node.hasChildNodes()) {
            node = node.firstChild();
            continue;
        }
        for (;;) {
            if (!open.empty() && keys[open.back()].element == node) {
                keys[open.back()].textEnd = int(text.size());
                open.pop_back();
            }
            if (node == root) {
                node = QDomNode();
                break;
            }
            const QDomNode next = node.nextSibling();
            if (!next.isNull()) {
                node = next;
                break;
            }
            node = node.parentNode();
        }
    }
    if (tooDeep) {
        zoLog::error(zoHPCConfigConverter::tr("Legacy parameters inside more than %1 others were ignored.")
                         .arg(zoHPCConfigConverter::MaximumNestedParameters));
    }
    return keys;
}
} // namespace

zoHPCConfigConverter::zoHPCConfigConverter() = default;

zoHPCConfigConverter::~zoHPCConfigConverter() = default;

QString zoHPCConfigConverter::Remark::kindName(Kind kind)
{
    switch (kind) {
    case Kind::NoParameters:
        return zoText("no-parameters");
    case Kind::UnreadNumber:
        return zoText("unread-number");
    case Kind::UnknownCompression:
        return zoText("unknown-compression");
    case Kind::NumberedHosts:
        return zoText("numbered-hosts");
    case Kind::DroppedForwards:
        return zoText("dropped-forwards");
    case Kind::ShiftedHosts:
        return zoText("shifted-hosts");
    case Kind::DroppedPipes:
        return zoText("dropped-pipes");
    case Kind::CopiedOverlap:
        return zoText("copied-overlap");
    case Kind::HalfStereo:
        return zoText("half-stereo");
    case Kind::MissingHosts:
        return zoText("missing-hosts");
    case Kind::UnusedHosts:
        return zoText("unused-hosts");
    case Kind::EmptyWindow:
        return zoText("empty-window");
    case Kind::CutWall:
        return zoText("cut-wall");
    }
    return QString();
}

QString zoHPCConfigConverter::convert(const QString& legacyText)
{
    m_legacyText = legacyText;
    m_remarks.clear();
    m_entry = 0;
    m_forwardsParameter.clear();
    m_unreadFields = 0;
    m_unreadParameter.clear();
    m_document = QDomDocument();
    m_clusterElement = m_document.createElement(zoText("cluster"));
    m_masterElement = m_document.createElement(zoText("master"));
    m_networkElement = m_document.createElement(zoText("network"));
    m_displayElement = m_document.createElement(zoText("display"));
    m_masterElement.appendChild(m_networkElement);
    m_clusterElement.appendChild(m_masterElement);
    m_clusterElement.appendChild(m_displayElement);
    m_document.appendChild(m_clusterElement);

    parseConfig(legacyText);
    parseMode();
    parseOptions();
    parseHosts();
    switch (m_mode) {
    case Raytracing:
        break;
    case Powerwall:
        parsePowerwall();
        break;
    case Custom:
        parseCustom();
        break;
    case Old:
        parseOld();
        break;
    }
    if (m_unreadFields > 0) {
        remark(Remark::Kind::UnreadNumber,
               tr("%1 fields of the window layout are missing or no numbers; they were read as 0.")
                   .arg(m_unreadFields),
               m_unreadParameter);
    }
    // With its empty attributes: a window without a host has an empty node.
    return zoHPCDocumentText::toText(m_document, zoHPCDocumentText::EmptyAttributes::Keep);
}

void zoHPCConfigConverter::parseConfig(const QString& legacyText)
{
    m_parameters.clear();
    QDomDocument legacy;
    zoHPCDocumentText::parse(legacyText, legacy);
    QString text;
    const std::vector<Key> keys = keysOf(legacy, text);
    for (const Key& key : keys) {
        const QString value = text.mid(key.textBegin, key.textEnd - key.textBegin);
        const bool encoded = key.element.attribute(zoText("type")) == QLatin1String("QString");
        m_parameters.insert(key.element.attribute(zoText("name")), encoded ? decoded(value) : value);
    }
    if (m_parameters.isEmpty())
        remark(Remark::Kind::NoParameters, tr("The text holds no legacy parameter."), QString());
}

void zoHPCConfigConverter::parseMode()
{
    const QString type = parameter("zoClusterProjectionType", "");
    if (type == QLatin1String("Custom"))
        m_mode = Custom;
    else if (type == QLatin1String("Raytracing"))
        m_mode = Raytracing;
    else if (type == QLatin1String("Powerwall"))
        m_mode = Powerwall;
    else if (!parameter("zoClusterHosts", "").isEmpty())
        m_mode = Old;
    else if (parameter("zoClusterPWEnable", "") == QLatin1String("1"))
        m_mode = Powerwall;
    else
        m_mode = Custom;
}

QStringList zoHPCConfigConverter::parsePipes()
{
    QStringList pipes;
    for (int i = 0;; ++i) {
        const auto pipe = m_parameters.constFind(zoText("zoClusterPipe%1").arg(i));
        if (pipe == m_parameters.constEnd())
            return pipes;
        pipes.append(pipe.value());
    }
}

void zoHPCConfigConverter::parseOptions()
{
    const QString level = parameter("zoClusterNetworkCompression", "0");
    const auto compression =
        std::find_if(std::begin(s_compressions), std::end(s_compressions),
                     [&level](const Compression& c) { return level == QLatin1String(c.level); });
    if (compression != std::end(s_compressions)) {
        if (compression->scene)
            m_masterElement.setAttribute(zoHPCOption::SceneCompression, QLatin1String(compression->scene));
        m_masterElement.setAttribute(zoHPCOption::ImageCompression, QLatin1String(compression->image));
    } else if (level != QLatin1String("0")) {
        remark(Remark::Kind::UnknownCompression, tr("The compression level \"%1\" is not known.").arg(level),
               zoText("zoClusterNetworkCompression"));
    }

    const QString superSampling = parameter("zoClusterSortFirstStillFrameSupersamplingFactor", "0");
    if (superSampling != QLatin1String("0"))
        m_masterElement.setAttribute(zoHPCOption::StillFrameSupersampling, superSampling);

    m_displayElement.setAttribute(zoText("eyeseparation"), parameter("zoClusterEyeSeparation", "65"));

    const QString zeroParallax = parameter("zoClusterZeroParallax", "1500");
    bool isNumber = false;
    m_zeroParallax = zeroParallax.toDouble(&isNumber);
    if (!isNumber)
        remarkNumber("zoClusterZeroParallax", zeroParallax);
    m_edgeBlending = parameter("zoEdgeBlendingEnabled", "0") == QLatin1String("1");
}

void zoHPCConfigConverter::parseHosts()
{
    switch (m_mode) {
    case Raytracing:
        addHosts(m_networkElement, parameter("zoClusterSortFirstServers", ""));
        break;
    case Powerwall:
        addHosts(m_networkElement, parameter("zoClusterPWServers", ""));
        break;
    case Custom: {
        const QStringList pipes = parsePipes();
        for (m_entry = 0; m_entry < pipes.size(); ++m_entry)
            addHosts(m_networkElement, parsePipeHost(pipes.at(m_entry)));
        break;
    }
    case Old: {
        const QStringList entries = parts(parameter("zoClusterHosts", ""), ',');
        for (const QString& entry : entries) {
            const QString host = withoutQuotes(firstPart(entry, ' '));
            // Entries and windows of this layout are paired by their index: an entry without a host keeps its
            // place.
            if (host.isEmpty())
                addHost(m_networkElement, host, 0, 0);
            else
                addHosts(m_networkElement, host);
        }
        break;
    }
    }
    numberEqualHosts();
}

void zoHPCConfigConverter::addHosts(QDomElement& parent, const QString& hosts)
{
    const QString forwardsKey = QLatin1String(ForwardsKey);
    const int forwards = hosts.indexOf(forwardsKey);
    if (forwards >= 0) {
        QDomElement node = addNode(parent, firstPart(hosts, '['));
        QDomElement network = m_document.createElement(zoText("network"));
        node.appendChild(network);

        const int begin = forwards + forwardsKey.size();
        const int end = hosts.indexOf(forwardsKey, begin);
        QString innerHosts = hosts.mid(begin, end < 0 ? -1 : end - begin);
        innerHosts.remove(QLatin1Char(']')).replace(QLatin1Char('|'), QLatin1Char(' '));
        // Goes at most two levels deep: the inner text ends before the next "forwards=", so it can only hold
        // one that came up when its brackets went, and then it has no brackets left.
        addHosts(network, innerHosts);
        if (parameter("zoClusterInfiniband", "0") == QLatin1String("1"))
            network.setAttribute(zoHPCOption::NetworkType, zoText("infiniband"));

        if (m_forwardsParameter.isEmpty())
            m_forwardsParameter = entryParameter(m_entry);
        if (end >= 0) {
            remark(Remark::Kind::DroppedForwards,
                   tr("Host \"%1\": what follows its second list of forwarded hosts was dropped.")
                       .arg(node.attribute(zoText("name"))),
                   entryParameter(m_entry));
        }
        return;
    }

    const QStringList entries = hosts.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& entry : entries) {
        QString attributes = entry.section(QLatin1Char('['), 1, 1);
        attributes.chop(1); // the closing bracket, which nobody checks
        int xPosition = 0;
        int yPosition = 0;
        const QStringList items = parts(attributes, ',');
        for (const QString& item : items) {
            const QString key = item.section(QLatin1Char('='), 0, 0);
            if (key == QLatin1String("xpos"))
                xPosition = toInt(item.section(QLatin1Char('='), 1, 1));
            else if (key == QLatin1String("ypos"))
                yPosition = toInt(item.section(QLatin1Char('='), 1, 1));
        }
        addHost(parent, firstPart(entry, '['), xPosition, yPosition);
    }
}

void zoHPCConfigConverter::addHost(QDomElement& parent, const QString& name, int xPosition, int yPosition)
{
    m_hostXPositions.push_back(xPosition);
    m_hostYPositions.push_back(yPosition);
    addNode(parent, name);
}

QDomElement zoHPCConfigConverter::addNode(QDomElement& parent, const QString& name)
{
    QDomElement node = m_document.createElement(zoText("node"));
    node.setAttribute(zoText("name"), name);
    m_hostNames.append(name);
    m_hostEntries.push_back(m_entry);
    parent.appendChild(node);
    return node;
}

QString zoHPCConfigConverter::parsePipeHost(const QString& pipe)
{
    return withoutQuotes(firstPart(pipe, ' '));
}

// One name that is there twice numbers the whole list: the windows of imported files name their nodes so. The
// nodes of the tree keep their names.
void zoHPCConfigConverter::numberEqualHosts()
{
    QHash<QString, int> counts;
    for (const QString& name : qAsConst(m_hostNames))
        ++counts[name];
    const auto equal = std::find_if(m_hostNames.cbegin(), m_hostNames.cend(),
                                    [&counts](const QString& name) { return counts.value(name) != 1; });
    if (equal == m_hostNames.cend())
        return;
    const QString name = *equal;
    const int entry = m_hostEntries[std::size_t(equal - m_hostNames.cbegin())];
    for (int i = 0; i < m_hostNames.size(); ++i)
        m_hostNames[i] = name + QLatin1Char(' ') + QString::number(i + 1);
    remark(Remark::Kind::NumberedHosts,
           tr("Several hosts have the name \"%1\", so all windows name their "
              "nodes \"%1 1\", \"%1 2\" and so on.")
               .arg(name),
           entryParameter(entry));
}

void zoHPCConfigConverter::parsePowerwall()
{
    const int xOffset = intParameter("zoClusterPWXOffset", "0");
    const int yOffset = intParameter("zoClusterPWYOffset", "0");
    const int width = intParameter("zoClusterPWXRes", "1280");
    const int height = intParameter("zoClusterPWYRes", "1024");
    const int overlap = intParameter("zoClusterPWXOverlap", "0");
    const int rows = intParameter("zoClusterPWRows", "1");
    const int columns = intParameter("zoClusterPWCols", "1");
    const WallStereo& stereo = wallStereo(parameter("zoClusterPWStereoMode", "0"));

    // The legacy format knows one overlap, which holds in both directions.
    addWall(zoText("wall"), width, height, xOffset, yOffset, rows, columns, overlap, overlap);
    if (overlap != 0)
        remark(Remark::Kind::CopiedOverlap, tr("The overlap %1 was taken for both directions.").arg(overlap),
               zoText("zoClusterPWXOverlap"));
    if (stereo.half)
        remark(Remark::Kind::HalfStereo, tr("The viewports cover the left half of their windows only."),
               zoText("zoClusterPWStereoMode"));

    const qint64 tiles = rows > 0 && columns > 0 ? qint64(rows) * columns : 0;
    const int limit = std::max(MaximumWindowsWithoutHost, int(m_hostNames.size()));
    const double right = stereo.half ? width / 2 : width;
    int k = 0;
    for (qint64 tile = 0; tile < tiles; ++tile) {
        if (k > limit - stereo.windows) {
            zoLog::error(tr("Legacy wall of %1 x %2 tiles: only the first %3 windows were converted.")
                             .arg(QString::number(rows), QString::number(columns), QString::number(k)));
            remark(Remark::Kind::CutWall,
                   tr("The wall has %1 x %2 tiles; only its first %3 windows were converted.")
                       .arg(QString::number(rows), QString::number(columns), QString::number(k)),
                   rows > columns ? zoText("zoClusterPWRows") : zoText("zoClusterPWCols"));
            break;
        }
        const QString tileName = zoText("wall row:%1 col:%2").arg(tile / columns + 1).arg(tile % columns + 1);
        for (int w = 0; w < stereo.windows; ++w, ++k) {
            const QDomElement window =
                addWindow(m_hostNames.value(k), QString(), position(m_hostXPositions, k),
                          position(m_hostYPositions, k), width, height);
            for (int v = 0; v < stereo.viewports; ++v)
                addViewport(window, tileName, 0.0, 0.0, right, height, QLatin1String(stereo.eyes[w + v]), 0);
        }
    }
    remarkWindows(k);
}

void zoHPCConfigConverter::parseCustom()
{
    const QStringList pipes = parsePipes();
    int counter = 1;
    int emptyWindows = 0;
    int firstEmptyWindow = 0;
    QHash<QByteArray, QString> planes;
    for (int i = 0; i < pipes.size(); ++i) {
        m_entry = i;
        const QStringList fields = parts(pipes.at(i), ' ');
        const int width = toInt(fields.value(3));
        const int height = toInt(fields.value(4));
        const QDomElement window = addWindow(m_hostNames.value(i), QString(), toInt(fields.value(1)),
                                             toInt(fields.value(2)), width, height);
        if ((width == 0 || height == 0) && ++emptyWindows == 1)
            firstEmptyWindow = i;

        const QStringList descriptors = parts(fields.mid(5).join(QLatin1Char(' ')), '|');
        for (const QString& descriptor : descriptors) {
            const QStringList view = parts(descriptor, ' ');
            const bool isLeft = firstPart(view.value(6), ';') == QLatin1String("1");
            QString eye = isLeft ? zoText("left") : zoText("right");
            if (withoutQuotes(view.at(0)).toLower() == QLatin1String("stereo")) {
                // A stereo view is listed once for each eye; the other descriptor stands for both.
                if (isLeft)
                    continue;
                eye = zoText("stereo");
            }

            const std::array<Point, 3> points = {pointOf(view, 7, doubleNumber),
                                                 pointOf(view, 10, doubleNumber),
                                                 pointOf(view, 13, doubleNumber)};
            QString& plane = planes[planeKey(points)];
            if (plane.isEmpty()) {
                plane = zoText("projection%1").arg(counter++);
                addPlane(plane, points);
            }
            // Rectangles may lie anywhere on a larger desktop. The far edges are wrapped by their last pixel,
            // so that an edge at the window's size stays there; a window without an area makes them no
            // numbers.
            addViewport(window, plane, std::fmod(toDouble(view.value(2)), width),
                        std::fmod(toDouble(view.value(3)), height),
                        std::fmod(toDouble(view.value(4)) - 1.0, width) + 1.0,
                        std::fmod(toDouble(view.value(5)) - 1.0, height) + 1.0, eye, 0);
        }
    }

    const QStringList dropped = droppedPipes(pipes.size());
    if (!dropped.isEmpty()) {
        remark(Remark::Kind::DroppedPipes,
               tr("There is no zoClusterPipe%1, so %2 pipes with higher numbers were dropped.")
                   .arg(QString::number(pipes.size()), QString::number(dropped.size())),
               dropped.constFirst());
    }
    if (emptyWindows > 0)
        remark(Remark::Kind::EmptyWindow, tr("%1 windows have no width or no height.").arg(emptyWindows),
               entryParameter(firstEmptyWindow));
    remarkWindows(int(pipes.size()));
}

void zoHPCConfigConverter::parseOld()
{
    const bool passive = parameter("zoClusterPassiveStereo", "0") == QLatin1String("1");
    const bool active = parameter("zoClusterActiveStereo", "0") == QLatin1String("1");
    const QStringList entries = parts(parameter("zoClusterHosts", ""), ',');
    QStringList eyes(zoText("mono"));
    if (active)
        eyes = QStringList(zoText("stereo"));
    else if (passive)
        eyes = QStringList{zoText("left"), zoText("right")};

    for (int i = 0; i < entries.size(); ++i) {
        const QStringList fields = parts(entries.at(i), ' ');
        const QString plane = zoText("projection%1").arg(i + 1);
        addPlane(plane, {{pointOf(fields, 9, singleNumber), pointOf(fields, 12, singleNumber),
                          pointOf(fields, 15, singleNumber)}});
        const QDomElement window =
            addWindow(m_hostNames.value(i), QString(), toInt(fields.value(1)), toInt(fields.value(2)),
                      toInt(fields.value(3)), toInt(fields.value(4)));
        const double x1 = toDouble(fields.value(5));
        const double y1 = toDouble(fields.value(6));
        const double x2 = toDouble(fields.value(7));
        const double y2 = toDouble(fields.value(8));
        for (const QString& eye : qAsConst(eyes))
            addViewport(window, plane, x1, y1, x2, y2, eye, 0);
    }
    remarkWindows(int(entries.size()));
}

void zoHPCConfigConverter::addWall(const QString& name, int tileWidth, int tileHeight, int offsetX,
                                   int offsetY, int rows, int columns, int overlapX, int overlapY)
{
    QDomElement projection = m_document.createElement(zoText("projection"));
    projection.setAttribute(zoText("name"), name);
    projection.setAttribute(zoText("type"), zoText("wall"));
    projection.setAttribute(zoText("tilewidth"), tileWidth);
    projection.setAttribute(zoText("tileheight"), tileHeight);
    projection.setAttribute(zoText("offsetx"), offsetX);
    projection.setAttribute(zoText("offsety"), offsetY);
    projection.setAttribute(zoText("rows"), rows);
    projection.setAttribute(zoText("columns"), columns);
    projection.setAttribute(zoText("edgeblending"), m_edgeBlending ? zoText("true") : zoText("false"));
    projection.setAttribute(zoText("overlapx"), overlapX);
    projection.setAttribute(zoText("overlapy"), overlapY);
    projection.setAttribute(zoText("distance"), m_zeroParallax);
    m_clusterElement.appendChild(projection);
}

void zoHPCConfigConverter::addPlane(const QString& name, const std::array<std::array<double, 3>, 3>& points)
{
    QDomElement projection = m_document.createElement(zoText("projection"));
    projection.setAttribute(zoText("name"), name);
    projection.setAttribute(zoText("type"), zoText("plane"));
    for (std::size_t i = 0; i < points.size(); ++i) {
        const QString number = QString::number(i + 1);
        projection.setAttribute(QLatin1Char('x') + number, points[i][0]);
        projection.setAttribute(QLatin1Char('y') + number, points[i][1]);
        projection.setAttribute(QLatin1Char('z') + number, points[i][2]);
    }
    m_clusterElement.appendChild(projection);
}

QDomElement zoHPCConfigConverter::addWindow(const QString& node, const QString& screen, int x, int y,
                                            int width, int height)
{
    QDomElement window = m_document.createElement(zoText("window"));
    window.setAttribute(zoText("node"), node);
    window.setAttribute(zoText("screen"), screen);
    window.setAttribute(zoText("x"), x);
    window.setAttribute(zoText("y"), y);
    window.setAttribute(zoText("width"), width);
    window.setAttribute(zoText("height"), height);
    // Replaces the caller's screen: legacy windows lie on the extended desktop.
    window.setAttribute(zoText("screen"), zoText("-2"));
    window.setAttribute(zoText("fullscreen"), zoText("false"));
    m_displayElement.appendChild(window);
    return window;
}

void zoHPCConfigConverter::addViewport(QDomElement window, const QString& projection, double x1, double y1,
                                       double x2, double y2, const QString& eye, int rotate)
{
    QDomElement viewport = m_document.createElement(zoText("viewport"));
    viewport.setAttribute(zoText("projection"), projection);
    viewport.setAttribute(zoText("x1"), x1);
    viewport.setAttribute(zoText("y1"), y1);
    viewport.setAttribute(zoText("x2"), x2);
    viewport.setAttribute(zoText("y2"), y2);
    viewport.setAttribute(zoText("eye"), eye);
    viewport.setAttribute(zoText("rotate"), rotate);
    viewport.setAttribute(zoText("position"), zoText("custom"));
    window.appendChild(viewport);
}

QString zoHPCConfigConverter::parameter(const char* key, const char* defaultValue) const
{
    return m_parameters.value(QLatin1String(key), QLatin1String(defaultValue));
}

int zoHPCConfigConverter::intParameter(const char* key, const char* defaultValue)
{
    const QString text = parameter(key, defaultValue);
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (!isNumber)
        remarkNumber(key, text);
    return value;
}

int zoHPCConfigConverter::toInt(const QString& text)
{
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (!isNumber)
        countUnreadField();
    return value;
}

double zoHPCConfigConverter::toDouble(const QString& text)
{
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (!isNumber)
        countUnreadField();
    return value;
}

int zoHPCConfigConverter::position(const std::vector<int>& positions, int index)
{
    return std::size_t(index) < positions.size() ? positions[std::size_t(index)] : 0;
}

// Parameters of pipes from a number on, in the order of their numbers.
QStringList zoHPCConfigConverter::droppedPipes(int firstNumber) const
{
    const QString prefix = zoText("zoClusterPipe");
    QMap<uint, QString> pipes;
    for (auto it = m_parameters.lowerBound(prefix); it != m_parameters.cend() && it.key().startsWith(prefix);
         ++it) {
        const QString number = it.key().mid(prefix.size());
        if (number == QString::number(number.toUInt()) && number.toUInt() >= uint(firstNumber))
            pipes.insert(number.toUInt(), it.key());
    }
    return pipes.values();
}

// Where hosts and windows are: one parameter for all of them, but one for each pipe.
QString zoHPCConfigConverter::entryParameter(int entry) const
{
    switch (m_mode) {
    case Raytracing:
        return zoText("zoClusterSortFirstServers");
    case Powerwall:
        return zoText("zoClusterPWServers");
    case Custom:
        return zoText("zoClusterPipe%1").arg(entry);
    case Old:
        return zoText("zoClusterHosts");
    }
    return QString();
}

void zoHPCConfigConverter::countUnreadField()
{
    if (++m_unreadFields == 1)
        m_unreadParameter = entryParameter(m_entry);
}

QList<zoHPCConfigConverter::Remark> zoHPCConfigConverter::remarks() const
{
    QList<Remark> remarks = m_remarks;
    QHash<QString, zoHPCElementScanner::Place> places;
    for (const Remark& remark : qAsConst(remarks)) {
        if (!remark.parameter.isEmpty())
            places.insert(remark.parameter, {});
    }
    if (places.isEmpty())
        return remarks;

    std::vector<int> open; // depths of the parameters around
    zoHPCElementScanner scanner(m_legacyText);
    while (scanner.next()) {
        const int depth = scanner.around().size();
        while (!open.empty() && open.back() >= depth)
            open.pop_back();
        if (scanner.tag() != QLatin1String("key"))
            continue;
        open.push_back(depth);
        // The last one of a name holds.
        const auto place = places.find(scanner.attribute(zoText("name")));
        if (place != places.end() && open.size() <= std::size_t(MaximumNestedParameters))
            *place = scanner.place();
    }
    for (Remark& remark : remarks) {
        const zoHPCElementScanner::Place place = places.value(remark.parameter);
        remark.line = place.line;
        remark.column = place.column;
    }
    return remarks;
}

void zoHPCConfigConverter::remark(Remark::Kind kind, const QString& text, const QString& aboutParameter)
{
    m_remarks.append({kind, text, aboutParameter});
}

void zoHPCConfigConverter::remarkNumber(const char* key, const QString& text)
{
    remark(Remark::Kind::UnreadNumber,
           tr("%1 is \"%2\", which is no number; it was read as 0.").arg(QLatin1String(key), text),
           QLatin1String(key));
}

void zoHPCConfigConverter::remarkWindows(int windows)
{
    const int hosts = int(m_hostNames.size());
    if (!m_forwardsParameter.isEmpty()) {
        remark(Remark::Kind::ShiftedHosts,
               tr("Forwarding hosts take part in the order in which windows get their "
                  "nodes and positions; check both."),
               m_forwardsParameter);
    }
    if (hosts < windows) {
        // A pipe without a host takes one from all that follow: the first one is what to look at.
        int entry = 0;
        for (const int hostEntry : m_hostEntries)
            entry += hostEntry == entry ? 1 : 0;
        remark(Remark::Kind::MissingHosts, tr("%1 windows have no node.").arg(windows - hosts),
               entryParameter(entry));
    } else if (hosts > windows) {
        remark(Remark::Kind::UnusedHosts, tr("%1 hosts have no window.").arg(hosts - windows),
               entryParameter(m_hostEntries[std::size_t(windows)]));
    }
}
