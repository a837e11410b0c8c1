#include "zoDrawCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCLayout.h"
#include "zoHPCNetworkPicture.h"
#include "zoHPCPictureFile.h"
#include "zoHPCRoomPicture.h"
#include "zoHPCScreensPicture.h"
#include "zoHostNames.h"
#include "zoPictureSheet.h"
#include "zoProjectionFacts.h"
#include "zoTextFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>
#include <memory>
#include <type_traits>

namespace
{
const char* const s_formats[] = {"svg", "png", "pdf"};
const char* const s_pictures[] = {"room", "screens", "network"};

bool isFormat(const QString& format)
{
    for (const char* known : s_formats) {
        if (format == QLatin1String(known))
            return true;
    }
    return false;
}
} // namespace

// What was asked for.
struct zoDrawCommand::Request
{
    QStringList outputs;
    QString picture; // empty: the names of the outputs say
    QString format;  // for standard output
    QSize size;      // points; empty for as large as names need
    double scale;
    bool hasTitle; // of its own
    QString title;
};

// The pictures, each made once it is asked for, and what stands below them.
struct zoDrawCommand::Drawing
{
    explicit Drawing(const zoHPCLayout& shown) : layout(shown)
    {
        for (const zoProjectionFacts::Projection& projection : zoProjectionFacts::readWalls(layout))
            sizes << projection.text();
    }

    template <class Picture>
    Picture& made(std::unique_ptr<Picture>& picture) const
    {
        if (!picture) {
            picture = std::make_unique<Picture>();
            if constexpr (std::is_same_v<Picture, zoHPCRoomPicture>)
                picture->setIsDrawing(true);
            picture->setLayout(layout);
        }
        return *picture;
    }

    const zoHPCLayout& layout;
    std::unique_ptr<zoHPCRoomPicture> room;
    std::unique_ptr<zoHPCScreensPicture> screens;
    std::unique_ptr<zoHPCNetworkPicture> network;
    bool isNumbered = false; // the screens, as names have no room
    QStringList sizes;
};

QString zoDrawCommand::description() const
{
    return tr("Draws a configuration: the room with its projection planes around the viewer and the hosts on "
              "them, the\n"
              "screens with their windows and viewports, or the networks with their gateways. The name of "
              "the output file\n"
              "says which, unless --picture does: one that has \"screens\" or \"network\" in it gets these, "
              "any other the\n"
              "room. Its suffix is the format. Below a picture stands how large the projections are, in "
              "millimetres and\n"
              "pixels. Screens count from 1.");
}

QStringList zoDrawCommand::examples() const
{
    return {QStringLiteral("zohpc draw wall.zhpc -o room.svg -o screens.svg -o network.svg\t") +
                tr("all pictures"),
            QStringLiteral("zohpc draw wall.zhpc -o wall.png --scale 2\t") +
                tr("the room with two pixels for each point"),
            QStringLiteral("zohpc draw wall.zhpc --picture screens -o - --format pdf | lp\t") +
                tr("the screens, to a printer")};
}

void zoDrawCommand::addArguments(QCommandLineParser& parser) const
{
    parser.addOption(
        {{QStringLiteral("o"), QStringLiteral("output")},
         tr("Write <file>: svg, png or pdf by its suffix; \"-\" for standard output. May be given more "
            "than once."),
         tr("file")});
    parser.addOption(
        {QStringLiteral("picture"), tr("What to draw."), QStringLiteral("room|screens|network")});
    parser.addOption({QStringLiteral("format"), tr("For standard output (default svg)."),
                      QStringLiteral("svg|png|pdf"), QStringLiteral("svg")});
    parser.addOption({QStringLiteral("title"),
                      tr("Title of the sheet; empty for none (default: the file and the "
                         "picture)."),
                      tr("text")});
    parser.addOption(
        {QStringLiteral("size"),
         tr("Size in points of 1/96 inch (default 1200x800, or as large as names need to be read)."),
         tr("WxH")});
    parser.addOption({QStringLiteral("scale"), tr("Pixels for each point of a PNG (default 1)."), tr("N"),
                      QStringLiteral("1")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."));
}

int zoDrawCommand::execute(const QCommandLineParser& parser)
{
    Request request;
    if (!read(parser, request))
        return zoConsole::Unusable;
    bool isNumber = false;
    const QString date = qEnvironmentVariable("SOURCE_DATE_EPOCH");
    date.toULongLong(&isNumber);
    if (!date.isEmpty() && !isNumber)
        return usageError(tr("SOURCE_DATE_EPOCH: \"%1\" is no number of seconds").arg(date));
    // The form of a date in a file depends on the zone.
    if (isNumber)
        qputenv("TZ", "UTC");
    const QString file = parser.positionalArguments().constFirst();
    zoClusterSetup setup;
    if (!zoTextFile::mayWrite(request.outputs, file) || !setup.readFile(file))
        return zoConsole::Unusable;
    const zoHPCLayout layout(setup.displays(), setup.hosts().master());
    Drawing drawing(layout);
    const QString subject = file == QLatin1String("-") ? QString() : QFileInfo(file).fileName();
    for (const QString& output : qAsConst(request.outputs)) {
        if (!draw(drawing, subject, output, request))
            return zoConsole::Unusable;
    }
    return zoConsole::Fine;
}

bool zoDrawCommand::read(const QCommandLineParser& parser, Request& request) const
{
    const auto refuse = [&](const QString& reason) {
        usageError(reason);
        return false;
    };
    const auto refuseValue = [&](const QString& option, const QString& expected) {
        return refuse(tr("--%1: \"%2\" is no %3").arg(option, parser.value(option), expected));
    };
    if (parser.positionalArguments().size() != 1)
        return refuse(parser.positionalArguments().isEmpty() ? tr("no file given")
                                                             : tr("one file at a time"));
    request.outputs = parser.values(QStringLiteral("output"));
    if (request.outputs.isEmpty())
        return refuse(tr("--output is missing"));
    static const QRegularExpression sizePattern(QStringLiteral("^([1-9][0-9]{0,4})x([1-9][0-9]{0,4})$"));
    const QRegularExpressionMatch match = sizePattern.match(parser.value(QStringLiteral("size")));
    if (parser.isSet(QStringLiteral("size")) && !match.hasMatch())
        return refuseValue(QStringLiteral("size"), tr("size in points such as 1200x800"));
    if (parser.isSet(QStringLiteral("size")))
        request.size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    bool isNumber = false;
    request.scale = parser.value(QStringLiteral("scale")).toDouble(&isNumber);
    if (!isNumber || !(request.scale >= 0.1 && request.scale <= 16.0))
        return refuseValue(QStringLiteral("scale"), tr("number from 0.1 to 16"));
    request.picture = parser.value(QStringLiteral("picture"));
    if (!request.picture.isEmpty() &&
        std::none_of(std::begin(s_pictures), std::end(s_pictures),
                     [&](const char* known) { return request.picture == QLatin1String(known); }))
        return refuseValue(QStringLiteral("picture"), tr("picture: room, screens, network"));
    request.hasTitle = parser.isSet(QStringLiteral("title"));
    request.title = parser.value(QStringLiteral("title"));
    request.format = parser.value(QStringLiteral("format"));
    if (!isFormat(request.format))
        return refuseValue(QStringLiteral("format"), tr("format: svg, png, pdf"));
    for (const QString& output : qAsConst(request.outputs)) {
        if (output != QLatin1String("-") && !isFormat(QFileInfo(output).suffix().toLower()))
            return refuse(tr("--output: \"%1\" does not end in .svg, .png or .pdf").arg(output));
    }
    return true;
}

QString zoDrawCommand::pictureOf(const QString& output, const Request& request)
{
    if (!request.picture.isEmpty())
        return request.picture;
    const QString name = QFileInfo(output).fileName();
    for (const char* picture : s_pictures) {
        if (name.contains(QLatin1String(picture)))
            return QString::fromLatin1(picture);
    }
    return QStringLiteral("room");
}

namespace
{
// In brackets where that keeps the order.
QString folded(const std::vector<QString>& hosts)
{
    const std::vector<int> order = zoHostNames::sorted(hosts);
    if (order.size() == hosts.size() && std::is_sorted(order.begin(), order.end()))
        return QString::fromUtf8(zoHostNames::bracketText(hosts, false));
    return QStringList(hosts.begin(), hosts.end()).join(QLatin1String(", "));
}
} // namespace

// In as many lines as there are walls and rows of them.
QStringList zoDrawCommand::hostsOfTiles(const zoHPCRoomPicture& room)
{
    QStringList lines;
    for (const zoHPCRoomPicture::Wall& wall : room.walls()) {
        for (int row = 0; wall.hasTiles() && row < wall.rows; ++row) {
            std::vector<QString> hosts;
            for (int column = 0; column < wall.columns; ++column) {
                const QStringList drivers = wall.hostsOf(row, column);
                for (const QString& host : drivers)
                    hosts.push_back(host);
            }
            lines
                << tr("%1, row %2 from the left: %3").arg(wall.name, QString::number(row + 1), folded(hosts));
        }
    }
    return lines;
}

QString zoDrawCommand::hostsInOrder(const zoHPCScreensPicture& screens)
{
    std::vector<QString> hosts;
    for (const zoHPCScreensPicture::Node& node : screens.nodes())
        hosts.push_back(node.name);
    return tr("1 to %1: %2").arg(QString::number(hosts.size()), folded(hosts));
}

// Names are readable: where no size is asked for, the sheet grows until they are.
QSize zoDrawCommand::fit(zoPictureSheet& sheet, const QSize& asked)
{
    constexpr double Step = 1.15;
    constexpr double Largest = 6.0;
    const QSize usual(1200, 800);
    const auto isReadable = [&sheet](const QSize& size) {
        const QRectF area(QPointF(0.0, 0.0), size);
        sheet.fit(area);
        return sheet.isReadable(area);
    };
    for (double factor = 1.0; asked.isEmpty() && factor < Largest; factor *= Step) {
        const QSize size = (QSizeF(usual) * factor).toSize();
        if (isReadable(size))
            return size;
    }
    sheet.fit(QRectF(QPointF(0.0, 0.0), asked.isEmpty() ? usual : asked));
    return asked.isEmpty() ? usual : asked;
}

bool zoDrawCommand::draw(Drawing& drawing, const QString& subject, const QString& output,
                         const Request& request)
{
    const QString which = pictureOf(output, request);
    const bool isNetwork = which == QLatin1String("network");
    const bool isRoom = which == QLatin1String("room");
    zoHPCPicture& picture = isNetwork ? static_cast<zoHPCPicture&>(drawing.made(drawing.network))
                            : isRoom  ? static_cast<zoHPCPicture&>(drawing.made(drawing.room))
                                      : drawing.made(drawing.screens);
    if (drawing.screens)
        drawing.screens->setIsNumbered(drawing.isNumbered);
    const QString words = isNetwork ? tr("network") : isRoom ? tr("room") : tr("screens");
    const QString title = subject.isEmpty() ? words : tr("%1: %2").arg(subject, words);
    zoPictureSheet sheet(picture, request.hasTitle ? request.title : title,
                         isNetwork ? QStringList() : drawing.sizes);
    QSize size = fit(sheet, request.size);
    if (!sheet.isReadable(QRectF(QPointF(0.0, 0.0), size))) {
        sheet.addLines(isNetwork
                           ? QStringList(tr("Not all names have room on a sheet of this size (see --size)."))
                       : isRoom ? hostsOfTiles(*drawing.room)
                                : QStringList(hostsInOrder(*drawing.screens)));
        drawing.isNumbered = true;
        if (drawing.screens)
            drawing.screens->setIsNumbered(true);
        sheet.fit(QRectF(QPointF(0.0, 0.0), size));
    }
    if (output != QLatin1String("-"))
        return zoHPCPictureFile::save(sheet, output, size, QPalette(), request.scale);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return zoHPCPictureFile::write(sheet, buffer, request.format, size, QPalette(), request.scale) &&
           zoConsole::write(buffer.data());
}
