#include "zoEngineFiles.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <iterator>
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
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

QString metres(const Point3& point)
{
    return number(point.x / 1000.0) + QLatin1Char(' ') + number(point.y / 1000.0) + QLatin1Char(' ') +
           number(point.z / 1000.0);
}

// X, Y and so on with the sign that X geometries need.
QString offset(int value)
{
    return (value < 0 ? QString() : QStringLiteral("+")) + QString::number(value);
}

// What a string of the format can hold: no quotes, no control characters.
QString plain(const QString& text)
{
    QString result;
    for (const QChar c : text) {
        if (c.unicode() >= 0x20 && c.unicode() != 0x7f && c != QLatin1Char('"') && c != QLatin1Char('\\'))
            result += c;
    }
    return result.simplified();
}

// Plain names, each once.
class UniqueNames
{
public:
    QString add(const QString& text)
    {
        const QString base = plain(text).isEmpty() ? QStringLiteral("unnamed") : plain(text);
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
        line(QStringLiteral("{"));
        ++m_depth;
    }
    void close()
    {
        --m_depth;
        line(QStringLiteral("}"));
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
    return QStringLiteral("[ %1 %2 %3 %4 ]")
        .arg(number(r.x()), number(r.y()), number(r.width()), number(r.height()));
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
// what they show (a canvas for each wall).
class EqualizerFile
{
public:
    explicit EqualizerFile(const zoHPCRenderSetup& setup) : m_pictures(setup.pictures())
    {
        UniqueNames names;
        m_channels.reserve(m_pictures.size());
        for (const Picture& picture : m_pictures)
            m_channels.push_back(names.add(picture.projection));

        m_writer.open("server");
        m_writer.open("config");
        m_writer.line(
            QStringLiteral("attributes { eye_base %1 }").arg(number(setup.eyeSeparation() / 1000.0)));
        const QStringList hosts = ordered(m_pictures, [](const Picture& p) { return p.host; });
        for (const QString& host : hosts)
            writeNode(host);
        m_writer.line(QStringLiteral("observer { }"));
        UniqueNames wallNames;
        const QStringList walls = ordered(m_pictures, [](const Picture& p) { return p.wall; });
        for (const QString& wall : walls)
            writeCanvas(wall, quoted(wallNames.add(wall)));
        m_writer.close();
        m_writer.close();
    }

    const QByteArray& text() const { return m_writer.text(); }

private:
    using Picture = zoHPCRenderSetup::Picture;

    void writeNode(const QString& host)
    {
        m_writer.open("node");
        m_writer.line(QStringLiteral("name %1").arg(quoted(plain(host))));
        m_writer.line(QStringLiteral("connection { hostname %1 }").arg(quoted(plain(host))));
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
            m_writer.line(QStringLiteral("device %1").arg(screen));
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
        m_writer.line(
            QStringLiteral("name %1").arg(quoted(QStringLiteral("window %1").arg(picture.window + 1))));
        m_writer.line(QStringLiteral("viewport %1").arg(rectangle(picture.windowGeometry)));
        if (picture.isFullScreen)
            m_writer.line(QStringLiteral("attributes { hint_fullscreen ON }"));
    }

    void writeChannel(const Picture& picture, const QString& name)
    {
        m_writer.open("channel");
        m_writer.line(QStringLiteral("name %1").arg(quoted(name)));
        // Counted from the lower left corner.
        const QRectF& area = picture.area;
        m_writer.line(QStringLiteral("viewport %1")
                          .arg(rectangle({area.x(), 1.0 - area.bottom(), area.width(), area.height()})));
        m_writer.close();
    }

    void writeCanvas(const QString& wall, const QString& name)
    {
        m_writer.open("layout");
        m_writer.line(QStringLiteral("name %1").arg(name));
        m_writer.line(QStringLiteral("view { }"));
        m_writer.close();
        m_writer.open("canvas");
        m_writer.line(QStringLiteral("name %1").arg(name));
        m_writer.line(QStringLiteral("layout %1").arg(name));
        for (std::size_t i = 0; i < m_pictures.size(); ++i) {
            if (m_pictures[i].wall == wall)
                writeSegment(m_pictures[i], m_channels[i]);
        }
        m_writer.close();
    }

    void writeSegment(const Picture& picture, const QString& channel)
    {
        m_writer.open("segment");
        m_writer.line(QStringLiteral("channel %1").arg(quoted(channel)));
        m_writer.line(QStringLiteral("viewport %1").arg(rectangle(picture.part)));
        m_writer.open("wall");
        m_writer.line(QStringLiteral("bottom_left [ %1 ]").arg(metres(picture.plane.lowerLeft)));
        m_writer.line(QStringLiteral("bottom_right [ %1 ]").arg(metres(picture.plane.lowerRight)));
        m_writer.line(QStringLiteral("top_left [ %1 ]").arg(metres(picture.plane.upperLeft())));
        m_writer.close();
        m_writer.close();
    }

    const std::vector<Picture>& m_pictures; // not owned
    std::vector<QString> m_channels;        // the name of each picture
    BraceWriter m_writer;
};
} // namespace

QByteArray zoEngineFiles::paraView(const zoHPCRenderSetup& setup)
{
    // A display is only named where a host has more than one screen: pvserver would else not follow its
    // environment.
    QSet<QString> several;
    QHash<QString, int> screens;
    for (const zoHPCRenderSetup::Picture& picture : setup.pictures()) {
        if (picture.screen > 0 || screens.value(picture.host, picture.screen) != picture.screen)
            several.insert(picture.host);
        screens.insert(picture.host, picture.screen);
    }

    QString text = QStringLiteral("<?xml version=\"1.0\" ?>\n<pvx>\n  <Process Type=\"server\">\n"
                                  "    <EyeSeparation Value=\"%1\"/>\n")
                       .arg(number(setup.eyeSeparation() / 1000.0));
    for (const zoHPCRenderSetup::Picture& picture : setup.pictures()) {
        const QRect& g = picture.geometry;
        text += QStringLiteral("    <Machine Name=\"%1\"").arg(picture.host.toHtmlEscaped());
        if (several.contains(picture.host) && picture.screen >= 0)
            text += QStringLiteral(" Environment=\"DISPLAY=:0.%1\"").arg(picture.screen);
        text +=
            QStringLiteral("\n             Geometry=\"%1x%2%3%4\"\n")
                .arg(QString::number(g.width()), QString::number(g.height()), offset(g.x()), offset(g.y()));
        text += QStringLiteral("             LowerLeft=\"%1\"\n             LowerRight=\"%2\"\n"
                               "             UpperRight=\"%3\"/>\n")
                    .arg(metres(picture.plane.lowerLeft), metres(picture.plane.lowerRight),
                         metres(picture.plane.upperRight));
    }
    text += QStringLiteral("  </Process>\n</pvx>\n");
    return text.toUtf8();
}

QByteArray zoEngineFiles::equalizer(const zoHPCRenderSetup& setup)
{
    return EqualizerFile(setup).text();
}
