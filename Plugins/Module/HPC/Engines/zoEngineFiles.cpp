#include "zoEngineFiles.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCWindowItem.h"
#include "zoText.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <map>
#include <tuple>
#include <vector>

namespace
{
// Enough for a micrometre; engines read single precision.
QString number(double value)
{
    QString text = QString::number(value, 'f', 7);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text == QLatin1String("-0") ? zoText("0") : text;
}

QString metres(const Point3& point)
{
    return number(point.x / 1000.0) + QLatin1Char(' ') + number(point.y / 1000.0) + QLatin1Char(' ') +
           number(point.z / 1000.0);
}

// Letters and digits of ASCII, and the signs that strings of Equalizer may hold.
bool canStandInName(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') ||
           (u != 0 && u < 0x80 && std::strchr(" -._,%&@<>:!/", int(u)) != nullptr);
}

// What anaglyph glasses let through to each eye.
struct Colours
{
    const char* eye; // the word of the document
    const char* left;
    const char* right;
};

constexpr Colours s_colours[] = {{"redcyan", "RED", "GREEN BLUE"},
                                 {"blueyellow", "BLUE", "RED GREEN"},
                                 {"greenmagenta", "GREEN", "RED BLUE"}};

const Colours* coloursOf(const QString& eye)
{
    for (const Colours& colours : s_colours) {
        if (eye == QLatin1String(colours.eye))
            return &colours;
    }
    return nullptr;
}

// Those of the first picture with colours; null for none.
const Colours* coloursOf(const std::vector<zoHPCRenderSetup::Picture>& pictures)
{
    for (const zoHPCRenderSetup::Picture& picture : pictures) {
        if (const Colours* const colours = coloursOf(picture.eye))
            return colours;
    }
    return nullptr;
}

const QLatin1String s_doubleBuffered("stereo"); // the document's word for a window with buffers for both eyes

// Names that Equalizer reads, each once.
class UniqueNames
{
public:
    QString add(const QString& text)
    {
        const QString plain = zoEngineFiles::equalizerName(text);
        const QString base = plain.isEmpty() ? zoText("unnamed") : plain;
        QString name = base;
        int& count = m_counts[base];
        for (count = qMax(count, 1); m_names.contains(name);)
            name = base + QLatin1Char(' ') + QString::number(++count);
        m_names.insert(name);
        return name;
    }

private:
    QSet<QString> m_names;
    QHash<QString, int> m_counts;
};

// Lines with blanks for the depth of their braces.
class BraceWriter
{
public:
    void line(const QString& text) { m_text += QByteArray(4 * m_depth, ' ') + text.toUtf8() + '\n'; }
    void open(const char* block)
    {
        line(QLatin1String(block));
        line(zoText("{"));
        ++m_depth;
    }
    void close()
    {
        --m_depth;
        line(zoText("}"));
    }
    const QByteArray& text() const { return m_text; }

private:
    QByteArray m_text = "#Equalizer 1.2 ascii\n";
    int m_depth = 0;
};

QString quoted(const QString& name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

QString rectangle(const QRectF& r)
{
    return zoText("[ %1 %2 %3 %4 ]").arg(number(r.x()), number(r.y()), number(r.width()), number(r.height()));
}

// Keys in the order in which they come first.
template <class Key>
QStringList ordered(const std::vector<zoHPCRenderSetup::Picture>& pictures, Key key)
{
    QStringList result;
    QSet<QString> known;
    for (const zoHPCRenderSetup::Picture& picture : pictures) {
        const QString text = key(picture);
        if (!known.contains(text))
            result << text;
        known.insert(text);
    }
    return result;
}

// The configuration for an Equalizer server: where pictures are drawn (nodes, pipes, windows, channels), then
// who sees what (an observer for each display, a canvas for each wall).
class EqualizerFile
{
public:
    explicit EqualizerFile(const zoHPCRenderSetup& setup) : m_setup(setup), m_pictures(setup.pictures())
    {
        UniqueNames names;
        m_channels.reserve(m_pictures.size());
        for (const Picture& picture : m_pictures) {
            m_channels.push_back(names.add(picture.projection));
            m_windows[displayOf(picture)].insert(picture.window);
            if (picture.eye == s_doubleBuffered)
                m_doubleBuffered.insert(picture.window);
        }

        writeColours();
        m_writer.open("server");
        m_writer.open("config");
        m_writer.line(zoText("attributes { eye_base %1 }").arg(number(setup.eyeSeparation() / 1000.0)));
        const QStringList hosts = ordered(m_pictures, [](const Picture& p) { return p.host; });
        for (const QString& host : hosts)
            writeNode(host);
        writeObservers();
        writeCanvases();
        m_writer.close();
        m_writer.close();
    }

    const QByteArray& text() const { return m_writer.text(); }

private:
    using Picture = zoHPCRenderSetup::Picture;

    void writeNode(const QString& host)
    {
        m_writer.open("node");
        m_writer.line(zoText("name %1").arg(quoted(zoEngineFiles::equalizerName(host))));
        m_writer.line(zoText("connection { hostname %1 }").arg(quoted(zoEngineFiles::equalizerName(host))));
        std::vector<Picture> ofHost;
        std::copy_if(m_pictures.begin(), m_pictures.end(), std::back_inserter(ofHost),
                     [&](const Picture& p) { return p.host == host; });
        const QStringList screens =
            ordered(ofHost, [](const Picture& p) { return QString::number(p.screen); });
        for (const QString& screen : screens)
            writePipe(host, screen.toInt());
        m_writer.close();
    }

    void writePipe(const QString& host, int screen)
    {
        m_writer.open("pipe");
        if (screen >= 0)
            m_writer.line(zoText("device %1").arg(screen));
        int window = -1;
        for (std::size_t i = 0; i < m_pictures.size(); ++i) {
            const Picture& picture = m_pictures[i];
            if (picture.host != host || picture.screen != screen)
                continue;
            if (picture.window != window) {
                if (window >= 0)
                    m_writer.close();
                window = picture.window;
                openWindow(picture);
            }
            writeChannel(picture, m_channels[i]);
        }
        if (window >= 0)
            m_writer.close();
        m_writer.close();
    }

    void openWindow(const Picture& picture)
    {
        m_writer.open("window");
        m_writer.line(zoText("name %1").arg(quoted(zoText("window %1").arg(picture.window + 1))));
        m_writer.line(zoText("viewport %1").arg(rectangle(picture.windowGeometry)));
        QStringList hints;
        if (picture.isFullScreen)
            hints << zoText("hint_fullscreen ON");
        // One that is not asked for takes colours apart, or both eyes where one is meant.
        const bool isDoubleBuffered = m_doubleBuffered.contains(picture.window);
        if (isDoubleBuffered || isStereo(picture))
            hints << (isDoubleBuffered ? zoText("hint_stereo ON") : zoText("hint_stereo OFF"));
        if (!hints.isEmpty())
            m_writer.line(zoText("attributes { %1 }").arg(hints.join(QLatin1Char(' '))));
    }

    void writeChannel(const Picture& picture, const QString& name)
    {
        m_writer.open("channel");
        m_writer.line(zoText("name %1").arg(quoted(name)));
        // Counted from the lower left corner.
        const QRectF& area = picture.area;
        m_writer.line(zoText("viewport %1")
                          .arg(rectangle({area.x(), 1.0 - area.bottom(), area.width(), area.height()})));
        m_writer.close();
    }

    void writeColours()
    {
        const Colours* const colours = coloursOf(m_pictures);
        if (colours == nullptr)
            return;
        m_writer.open("global");
        m_writer.line(
            zoText("EQ_COMPOUND_IATTR_STEREO_ANAGLYPH_LEFT_MASK [ %1 ]").arg(QLatin1String(colours->left)));
        m_writer.line(
            zoText("EQ_COMPOUND_IATTR_STEREO_ANAGLYPH_RIGHT_MASK [ %1 ]").arg(QLatin1String(colours->right)));
        m_writer.close();
    }

    void writeObservers()
    {
        QSet<int> known;
        for (const Picture& picture : m_pictures) {
            if (!known.contains(displayOf(picture)))
                m_writer.line(zoText("observer { name %1 eye_base %2 }")
                                  .arg(quoted(observerOf(picture)), number(picture.eyeSeparation / 1000.0)));
            known.insert(displayOf(picture));
        }
    }

    // What one person sees of one wall, in stereo or not, is one canvas: a view is either.
    void writeCanvases()
    {
        std::map<std::tuple<int, int, bool>, std::size_t> indices;
        std::vector<std::vector<std::size_t>> canvases;
        for (std::size_t i = 0; i < m_pictures.size(); ++i) {
            const Picture& picture = m_pictures[i];
            const auto [entry, isNew] =
                indices.insert({{picture.wallItem, displayOf(picture), isStereo(picture)}, canvases.size()});
            if (isNew)
                canvases.emplace_back();
            canvases[entry->second].push_back(i);
        }
        UniqueNames names;
        for (const std::vector<std::size_t>& pictures : canvases)
            writeCanvas(pictures, quoted(names.add(m_pictures[pictures.front()].wall)));
    }

    void writeCanvas(const std::vector<std::size_t>& pictures, const QString& name)
    {
        const Picture& first = m_pictures[pictures.front()];
        m_writer.open("layout");
        m_writer.line(zoText("name %1").arg(name));
        m_writer.line(
            zoText("view { observer %1 mode %2 }")
                .arg(quoted(observerOf(first)), isStereo(first) ? zoText("STEREO") : zoText("MONO")));
        m_writer.close();
        m_writer.open("canvas");
        m_writer.line(zoText("name %1").arg(name));
        m_writer.line(zoText("layout %1").arg(name));
        for (const std::size_t picture : pictures)
            writeSegment(m_pictures[picture], m_channels[picture]);
        m_writer.close();
    }

    void writeSegment(const Picture& picture, const QString& channel)
    {
        m_writer.open("segment");
        m_writer.line(zoText("channel %1").arg(quoted(channel)));
        if (picture.eye == QLatin1String("left") || picture.eye == QLatin1String("right"))
            m_writer.line(zoText("eye [ %1 ]").arg(picture.eye.toUpper()));
        m_writer.line(zoText("viewport %1").arg(rectangle(picture.part)));
        writeSwapBarrier(picture);
        m_writer.open("wall");
        m_writer.line(zoText("bottom_left [ %1 ]").arg(metres(picture.plane.lowerLeft)));
        m_writer.line(zoText("bottom_right [ %1 ]").arg(metres(picture.plane.lowerRight)));
        m_writer.line(zoText("top_left [ %1 ]").arg(metres(picture.plane.upperLeft())));
        m_writer.close();
        m_writer.close();
    }

    // All windows of a display show their next picture together; each of them joins once.
    void writeSwapBarrier(const Picture& picture)
    {
        if (m_joined.contains(picture.window))
            return;
        m_joined.insert(picture.window);
        const QString name = quoted(observerOf(picture));
        if (zoEngineFiles::hasHardwareSync(m_setup, picture))
            m_writer.line(zoText("swapbarrier { name %1 NV_group 1 NV_barrier 1 }").arg(name));
        else if (m_windows[displayOf(picture)].size() > 1)
            m_writer.line(zoText("swapbarrier { name %1 }").arg(name));
    }

    int displayOf(const Picture& picture) const
    {
        return m_setup.layout().windows()[std::size_t(picture.window)].display;
    }

    QString observerOf(const Picture& picture) const { return zoText("display %1").arg(displayOf(picture)); }

    bool isStereo(const Picture& picture) const
    {
        const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(picture.eye);
        return mode != nullptr && mode->eyes != zoHPCDisplayTables::StereoMode::Eyes::Mono &&
               zoEngineFiles::hasEqualizerEye(m_setup, picture.eye);
    }

    const zoHPCRenderSetup& m_setup;        // not owned
    const std::vector<Picture>& m_pictures; // not owned
    std::vector<QString> m_channels;        // the name of each picture
    QHash<int, QSet<int>> m_windows;        // of each display
    QSet<int> m_doubleBuffered;             // windows
    QSet<int> m_joined;                     // windows with a swap barrier
    BraceWriter m_writer;
};

// A display is only named where a host has more than one screen: pvserver would else not follow its environment.
QSet<QString> hostsWithScreens(const std::vector<zoHPCRenderSetup::Picture>& pictures)
{
    QSet<QString> result;
    QHash<QString, int> screens;
    for (const zoHPCRenderSetup::Picture& picture : pictures) {
        if (picture.screen > 0 || screens.value(picture.host, picture.screen) != picture.screen)
            result.insert(picture.host);
        screens.insert(picture.host, picture.screen);
    }
    return result;
}

QString machine(const zoHPCRenderSetup::Picture& picture, const zoEngineFiles::Place& place,
                const QString& attributes)
{
    const QRect& g = place.geometry;
    QString text = zoText("    <Machine Name=\"%1\"").arg(picture.host.toHtmlEscaped());
    if (!place.display.isEmpty())
        text += zoText(" Environment=\"DISPLAY=%1\"").arg(place.display.toHtmlEscaped());
    // Both places have their plus, also before a minus: "+-50+-40".
    text += attributes + zoText("\n             Geometry=\"%1x%2+%3+%4\"\n")
                             .arg(QString::number(g.width()), QString::number(g.height()),
                                  QString::number(g.x()), QString::number(g.y()));
    text += zoText("             LowerLeft=\"%1\"\n             LowerRight=\"%2\"\n"
                   "             UpperRight=\"%3\"/>\n")
                .arg(metres(picture.plane.lowerLeft), metres(picture.plane.lowerRight),
                     metres(picture.plane.upperRight));
    return text;
}
} // namespace

const char* zoEngineFiles::paraViewStereo(const QString& eye)
{
    struct Word
    {
        const char* eye;
        const char* stereo;
    };
    static constexpr Word words[] = {{"mono", ""},
                                     {"", ""},
                                     {"left", "Left"},
                                     {"right", "Right"},
                                     {"stereo", "Crystal Eyes"},
                                     {"horizontalinterlaced", "Interlaced"},
                                     {"splitleftright", "SplitViewportHorizontal"},
                                     {"redcyan", "Anaglyph"}};
    for (const Word& word : words) {
        if (eye == QLatin1String(word.eye))
            return word.stereo;
    }
    return nullptr;
}

bool zoEngineFiles::hasEqualizerEye(const zoHPCRenderSetup& setup, const QString& eye)
{
    const zoHPCDisplayTables::StereoMode* const mode = zoHPCDisplayTables::stereoMode(eye);
    if (mode == nullptr || mode->eyes != zoHPCDisplayTables::StereoMode::Eyes::Both ||
        eye == s_doubleBuffered)
        return true;
    const Colours* const colours = coloursOf(eye);
    return colours != nullptr && colours == coloursOf(setup.pictures());
}

bool zoEngineFiles::hasHardwareSync(const zoHPCRenderSetup& setup, const zoHPCRenderSetup::Picture& picture)
{
    const QTreeWidgetItem* const window = setup.layout().windows()[std::size_t(picture.window)].item;
    const auto* const display = dynamic_cast<const zoHPCDisplayItem*>(window->parent());
    return display != nullptr && display->getBool(zoHPCDisplayItem::HardwareSync);
}

QString zoEngineFiles::equalizerName(const QString& text)
{
    // Letters without their accents; what else is no letter is no sign either.
    QString result;
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    for (const QChar c : decomposed) {
        if (canStandInName(c))
            result += c;
        else if ((c.isPrint() || c.isHighSurrogate()) && !c.isMark() && !c.isLowSurrogate() &&
                 c != QLatin1Char('"') && c != QLatin1Char('\\'))
            result += QLatin1Char('_');
    }
    return result.simplified();
}

std::vector<zoEngineFiles::Place> zoEngineFiles::paraViewPlaces(const zoHPCRenderSetup& setup)
{
    const QSet<QString> several = hostsWithScreens(setup.pictures());
    std::vector<Place> places;
    for (const zoHPCRenderSetup::Picture& picture : setup.pictures()) {
        const bool namesDisplay = picture.screen >= 0 && several.contains(picture.host);
        places.push_back({namesDisplay ? zoText(":0.%1").arg(picture.screen) : QString(), picture.geometry});
    }
    return places;
}

QByteArray zoEngineFiles::paraView(const zoHPCRenderSetup& setup, const zoParaViewRelease& release,
                                   const std::vector<Place>& givenPlaces)
{
    const std::vector<Place> places = givenPlaces.empty() ? paraViewPlaces(setup) : givenPlaces;
    QString text = zoText("<?xml version=\"1.0\" ?>\n<pvx>\n");
    if (release.hasProcess())
        text += zoText("  <Process Type=\"server\">\n");
    text += zoText("    <EyeSeparation Value=\"%1\"/>\n").arg(number(setup.eyeSeparation() / 1000.0));

    // Viewers are the displays, numbered from 0 without gaps.
    std::vector<int> viewers;
    std::vector<double> separations;
    for (const zoHPCRenderSetup::Picture& picture : setup.pictures()) {
        const int display = setup.layout().windows()[std::size_t(picture.window)].display;
        const auto known = std::find(viewers.begin(), viewers.end(), display);
        if (known != viewers.end())
            continue;
        viewers.push_back(display);
        separations.push_back(picture.eyeSeparation);
    }
    const bool hasViewers = release.hasViewers() && viewers.size() > 1;
    if (hasViewers) {
        text += zoText("    <IndependentViewers>\n");
        for (std::size_t i = 0; i < separations.size(); ++i)
            text += zoText("      <Viewer Id=\"%1\" EyeSeparation=\"%2\"/>\n")
                        .arg(QString::number(i), number(separations[i] / 1000.0));
        text += zoText("    </IndependentViewers>\n");
    }
    for (std::size_t i = 0; i < setup.pictures().size(); ++i) {
        const zoHPCRenderSetup::Picture& picture = setup.pictures()[i];
        const int display = setup.layout().windows()[std::size_t(picture.window)].display;
        QString attributes;
        if (hasViewers)
            attributes = zoText(" ViewerId=\"%1\"")
                             .arg(std::find(viewers.begin(), viewers.end(), display) - viewers.begin());
        const char* const stereo = release.hasViewers() ? paraViewStereo(picture.eye) : nullptr;
        if (stereo != nullptr && *stereo != '\0')
            attributes += zoText(" StereoType=\"%1\"").arg(QLatin1String(stereo));
        text += machine(picture, places[i], attributes);
    }
    if (release.hasProcess())
        text += zoText("  </Process>\n");
    return text.toUtf8() + "</pvx>\n";
}

QByteArray zoEngineFiles::equalizer(const zoHPCRenderSetup& setup)
{
    return EqualizerFile(setup).text();
}
