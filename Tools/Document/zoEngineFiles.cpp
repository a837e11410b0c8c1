#include "zoEngineFiles.h"

#include <QHash>
#include <QSet>
#include <QStringList>

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
QStringList ordered(const std::vector<zoRenderSetup::Picture>& pictures, Key key)
{
    QStringList result;
    QSet<QString> known;
    for (const zoRenderSetup::Picture& picture : pictures) {
        const QString text = key(picture);
        if (!known.contains(text))
            result << text;
        known.insert(text);
    }
    return result;
}
} // namespace

QByteArray zoEngineFiles::paraView(const zoRenderSetup& setup)
{
    // A display is only named where a host has more than one screen: pvserver would else not follow its
    // environment.
    QSet<QString> several;
    QHash<QString, int> screens;
    for (const zoRenderSetup::Picture& picture : setup.pictures()) {
        if (picture.screen > 0 || screens.value(picture.host, picture.screen) != picture.screen)
            several.insert(picture.host);
        screens.insert(picture.host, picture.screen);
    }

    QString text = QStringLiteral("<?xml version=\"1.0\" ?>\n<pvx>\n  <Process Type=\"server\">\n"
                                  "    <EyeSeparation Value=\"%1\"/>\n")
                       .arg(number(setup.eyeSeparation() / 1000.0));
    for (const zoRenderSetup::Picture& picture : setup.pictures()) {
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

QByteArray zoEngineFiles::equalizer(const zoRenderSetup& setup)
{
    const std::vector<zoRenderSetup::Picture>& pictures = setup.pictures();
    std::vector<QString> channels;
    channels.reserve(pictures.size());
    UniqueNames names;
    for (const zoRenderSetup::Picture& picture : pictures)
        channels.push_back(names.add(picture.projection));

    BraceWriter writer;
    writer.open("server");
    writer.open("config");
    writer.line(QStringLiteral("attributes { eye_base %1 }").arg(number(setup.eyeSeparation() / 1000.0)));
    const QStringList hosts = ordered(pictures, [](const zoRenderSetup::Picture& p) { return p.host; });
    for (const QString& host : hosts) {
        writer.open("node");
        writer.line(QStringLiteral("name %1").arg(quoted(plain(host))));
        writer.line(QStringLiteral("connection { hostname %1 }").arg(quoted(plain(host))));
        std::vector<zoRenderSetup::Picture> ofHost;
        for (const zoRenderSetup::Picture& picture : pictures) {
            if (picture.host == host)
                ofHost.push_back(picture);
        }
        const QStringList screens =
            ordered(ofHost, [](const zoRenderSetup::Picture& p) { return QString::number(p.screen); });
        for (const QString& screen : screens) {
            writer.open("pipe");
            if (screen.toInt() >= 0)
                writer.line(QStringLiteral("device %1").arg(screen));
            int window = -1;
            for (std::size_t i = 0; i < pictures.size(); ++i) {
                const zoRenderSetup::Picture& picture = pictures[i];
                if (picture.host != host || QString::number(picture.screen) != screen)
                    continue;
                if (picture.window != window) {
                    if (window >= 0)
                        writer.close();
                    window = picture.window;
                    writer.open("window");
                    writer.line(
                        QStringLiteral("name %1").arg(quoted(QStringLiteral("window %1").arg(window + 1))));
                    writer.line(QStringLiteral("viewport %1").arg(rectangle(picture.windowGeometry)));
                    if (picture.isFullScreen)
                        writer.line(QStringLiteral("attributes { hint_fullscreen ON }"));
                }
                writer.open("channel");
                writer.line(QStringLiteral("name %1").arg(quoted(channels[i])));
                // Counted from the lower left corner.
                const QRectF& area = picture.area;
                writer.line(
                    QStringLiteral("viewport %1")
                        .arg(rectangle({area.x(), 1.0 - area.bottom(), area.width(), area.height()})));
                writer.close();
            }
            if (window >= 0)
                writer.close();
            writer.close();
        }
        writer.close();
    }

    writer.line(QStringLiteral("observer { }"));
    UniqueNames walls;
    const QStringList wallNames = ordered(pictures, [](const zoRenderSetup::Picture& p) { return p.wall; });
    for (const QString& wall : wallNames) {
        const QString name = quoted(walls.add(wall));
        writer.open("layout");
        writer.line(QStringLiteral("name %1").arg(name));
        writer.line(QStringLiteral("view { }"));
        writer.close();
        writer.open("canvas");
        writer.line(QStringLiteral("name %1").arg(name));
        writer.line(QStringLiteral("layout %1").arg(name));
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            const zoRenderSetup::Picture& picture = pictures[i];
            if (picture.wall != wall)
                continue;
            writer.open("segment");
            writer.line(QStringLiteral("channel %1").arg(quoted(channels[i])));
            writer.line(QStringLiteral("viewport %1").arg(rectangle(picture.part)));
            writer.open("wall");
            writer.line(QStringLiteral("bottom_left [ %1 ]").arg(metres(picture.plane.lowerLeft)));
            writer.line(QStringLiteral("bottom_right [ %1 ]").arg(metres(picture.plane.lowerRight)));
            writer.line(QStringLiteral("top_left [ %1 ]").arg(metres(picture.plane.upperLeft())));
            writer.close();
            writer.close();
        }
        writer.close();
    }
    writer.close();
    writer.close();
    return writer.text();
}
