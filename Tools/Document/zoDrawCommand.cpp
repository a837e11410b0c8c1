#include "zoDrawCommand.h"

#include "zoClusterSetup.h"
#include "zoConsole.h"
#include "zoHPCLayout.h"
#include "zoHPCPictureFile.h"
#include "zoHPCRoomPicture.h"
#include "zoHPCScreensPicture.h"

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
    const auto wrong = [&](const char* option, const QString& expected) {
        return usageError(tr("--%1: \"%2\" is no %3")
                              .arg(QLatin1String(option), parser.value(QLatin1String(option)), expected));
    };
    if (parser.positionalArguments().size() != 1)
        return usageError(parser.positionalArguments().isEmpty() ? tr("no file given")
                                                                 : tr("one file at a time"));
    const QStringList outputs = parser.values(QStringLiteral("output"));
    if (outputs.isEmpty())
        return usageError(tr("--output is missing"));
    static const QRegularExpression sizePattern(QStringLiteral("^([1-9][0-9]{0,4})x([1-9][0-9]{0,4})$"));
    const QRegularExpressionMatch match = sizePattern.match(parser.value(QStringLiteral("size")));
    if (!match.hasMatch())
        return wrong("size", tr("size in points such as 1200x800"));
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    bool isNumber = false;
    const double scale = parser.value(QStringLiteral("scale")).toDouble(&isNumber);
    if (!isNumber || !(scale >= 0.1 && scale <= 16.0))
        return wrong("scale", tr("number from 0.1 to 16"));
    const QString which = parser.value(QStringLiteral("picture"));
    if (!which.isEmpty() && which != QLatin1String("room") && which != QLatin1String("screens"))
        return wrong("picture", tr("picture: room, screens"));
    if (!isFormat(parser.value(QStringLiteral("format"))))
        return wrong("format", tr("format: svg, png, pdf"));
    for (const QString& output : outputs) {
        if (output != QLatin1String("-") && !isFormat(QFileInfo(output).suffix().toLower()))
            return usageError(tr("--output: \"%1\" does not end in .svg, .png or .pdf").arg(output));
    }

    zoClusterSetup setup;
    if (!setup.readFile(parser.positionalArguments().constFirst()))
        return zoConsole::Unusable;
    const zoHPCLayout layout(setup.displays().getProjectionItems(), setup.displays().getWindowItems(),
                             setup.hosts().master());
    for (const QString& output : outputs) {
        const bool hasScreens = which.isEmpty()
                                    ? QFileInfo(output).fileName().contains(QLatin1String("screens"))
                                    : which == QLatin1String("screens");
        zoHPCRoomPicture room;
        zoHPCScreensPicture screens;
        const QRectF area(QPointF(0.0, 0.0), size);
        if (hasScreens) {
            screens.setLayout(layout);
            screens.fit(area);
        } else {
            room.setLayout(layout);
            room.fit(area);
        }
        const zoHPCPicture& picture = hasScreens ? static_cast<const zoHPCPicture&>(screens) : room;
        if (output == QLatin1String("-")) {
            QBuffer buffer;
            buffer.open(QIODevice::WriteOnly);
            if (!zoHPCPictureFile::write(picture, buffer, parser.value(QStringLiteral("format")), size,
                                         QPalette(), scale) ||
                !zoConsole::write(buffer.data()))
                return zoConsole::Unusable;
        } else if (!zoHPCPictureFile::save(picture, output, size, QPalette(), scale)) {
            return zoConsole::Unusable; // told in the log
        }
    }
    return zoConsole::Fine;
}
