#include "zoDrawCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCLayout.h"
#include "zoHPCPictureFile.h"
#include "zoHPCRoomPicture.h"
#include "zoHPCScreensPicture.h"
#include "zoTextFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QRegularExpression>

namespace
{
const char* const s_formats[] = {"svg", "png", "pdf"};

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
    QSize size;      // points
    double scale;
};

QString zoDrawCommand::description() const
{
    return tr("Draws a configuration as the layout preview shows it: the room with its projection planes "
              "around the viewer,\n"
              "or the screens with their windows and viewports. The name of the output file says which, "
              "unless --picture\n"
              "does: one that has \"screens\" in it gets the screens, any other the room. Its suffix is the "
              "format.");
}

QStringList zoDrawCommand::examples() const
{
    return {QStringLiteral("zohpc draw wall.zhpc -o room.svg -o screens.svg\t") + tr("both pictures"),
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
    parser.addOption({QStringLiteral("picture"), tr("What to draw: room or screens."), tr("which")});
    parser.addOption({QStringLiteral("format"), tr("svg (default), png or pdf, for standard output."),
                      tr("format"), QStringLiteral("svg")});
    parser.addOption({QStringLiteral("size"), tr("Size in points of 1/96 inch (default 1200x800)."),
                      tr("WxH"), QStringLiteral("1200x800")});
    parser.addOption({QStringLiteral("scale"), tr("Pixels for each point of a PNG (default 1)."), tr("N"),
                      QStringLiteral("1")});
    parser.addPositionalArgument(QStringLiteral("FILE"), tr("A configuration, \"-\" for standard input."));
}

int zoDrawCommand::execute(const QCommandLineParser& parser)
{
    Request request;
    if (!read(parser, request))
        return zoConsole::Unusable;
    const QString file = parser.positionalArguments().constFirst();
    zoClusterSetup setup;
    if (!zoTextFile::mayWrite(request.outputs, file) || !setup.readFile(file))
        return zoConsole::Unusable;
    const zoHPCLayout layout(setup.displays().getProjectionItems(), setup.displays().getWindowItems(),
                             setup.hosts().master());
    for (const QString& output : qAsConst(request.outputs)) {
        if (!draw(layout, output, request))
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
    if (!match.hasMatch())
        return refuseValue(QStringLiteral("size"), tr("size in points such as 1200x800"));
    request.size = QSize(match.captured(1).toInt(), match.captured(2).toInt());
    bool isNumber = false;
    request.scale = parser.value(QStringLiteral("scale")).toDouble(&isNumber);
    if (!isNumber || !(request.scale >= 0.1 && request.scale <= 16.0))
        return refuseValue(QStringLiteral("scale"), tr("number from 0.1 to 16"));
    request.picture = parser.value(QStringLiteral("picture"));
    if (!request.picture.isEmpty() && request.picture != QLatin1String("room") &&
        request.picture != QLatin1String("screens"))
        return refuseValue(QStringLiteral("picture"), tr("picture: room, screens"));
    request.format = parser.value(QStringLiteral("format"));
    if (!isFormat(request.format))
        return refuseValue(QStringLiteral("format"), tr("format: svg, png, pdf"));
    for (const QString& output : qAsConst(request.outputs)) {
        if (output != QLatin1String("-") && !isFormat(QFileInfo(output).suffix().toLower()))
            return refuse(tr("--output: \"%1\" does not end in .svg, .png or .pdf").arg(output));
    }
    return true;
}

bool zoDrawCommand::draw(const zoHPCLayout& layout, const QString& output, const Request& request)
{
    const bool hasScreens = request.picture.isEmpty()
                                ? QFileInfo(output).fileName().contains(QLatin1String("screens"))
                                : request.picture == QLatin1String("screens");
    zoHPCRoomPicture room;
    zoHPCScreensPicture screens;
    const QRectF area(QPointF(0.0, 0.0), request.size);
    if (hasScreens) {
        screens.setLayout(layout);
        screens.fit(area);
    } else {
        room.setLayout(layout);
        room.fit(area);
    }
    const zoHPCPicture& picture = hasScreens ? static_cast<const zoHPCPicture&>(screens) : room;
    if (output != QLatin1String("-"))
        return zoHPCPictureFile::save(picture, output, request.size, QPalette(), request.scale);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return zoHPCPictureFile::write(picture, buffer, request.format, request.size, QPalette(),
                                   request.scale) &&
           zoConsole::write(buffer.data());
}
