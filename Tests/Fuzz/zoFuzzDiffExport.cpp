#include "zoFuzzConfiguration.h"
#include "zoFuzzOutline.h"
#include "zoFuzzing.h"

#include <zoClusterComparison.h>
#include <zoClusterTags.h>
#include <zoComparedDocument.h>
#include <zoEngineFiles.h>
#include <zoExportNotes.h>
#include <zoHPCConfiguration.h>
#include <zoHPCDocumentText.h>
#include <zoHPCRenderSetup.h>
#include <zoHPCTreeItem.h>

#include <QDomDocument>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <cmath>

// Two configurations, with a line "=" between them, compared as "zohpc diff" does, and each exported as "zohpc
// export" does. Each is a document or its outline.

namespace
{
bool read(const QString& text, zoHPCConfiguration& configuration)
{
    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    if (!zoHPCDocumentText::parse(text, document, refusal) ||
        document.documentElement().tagName() != zoClusterTags::Cluster)
        return false;
    configuration.read(document);
    return true;
}

QString differences(const zoHPCConfiguration& before, const zoHPCConfiguration& after)
{
    QString text;
    zoClusterComparison comparison(zoComparedDocument(before.document()),
                                   zoComparedDocument(after.document()));
    for (const zoDifferences::Difference& difference : comparison.takeDifferences()) {
        zoFuzzing::require(!difference.kind.isEmpty() && !difference.kind.contains(QLatin1Char(' ')),
                           "a difference has a word for its kind", difference.kind);
        zoFuzzing::require(!difference.text.isEmpty(), "a difference is told");
        text += difference.kind + QLatin1String(": ") + difference.text + QLatin1Char('\n');
    }
    return text;
}

void checkComparison(const zoHPCConfiguration& before, const zoHPCConfiguration& after)
{
    const QString there = differences(before, after);
    const QString back = differences(after, before);
    zoFuzzing::require(there.isEmpty() == back.isEmpty(), "what differs differs in both directions",
                       there + QLatin1String("---\n") + back);
    if (before.text() == after.text())
        zoFuzzing::requireSame(there, QString(), "equal texts do not differ");
}

bool isFinite(const Point3& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

void checkParaView(const zoHPCRenderSetup& rendering, const zoParaViewRelease& release)
{
    const QByteArray text = zoEngineFiles::paraView(rendering, release);
    QXmlStreamReader xml(text);
    std::size_t machines = 0;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("Machine"))
            continue;
        ++machines;
        for (const char* corner : {"LowerLeft", "LowerRight", "UpperRight"}) {
            const QStringList numbers =
                xml.attributes().value(QLatin1String(corner)).toString().split(QLatin1Char(' '));
            zoFuzzing::require(numbers.size() == 3, "a corner has three numbers",
                               numbers.join(QLatin1Char('|')));
            for (const QString& number : numbers) {
                bool isNumber = false;
                const double value = number.toDouble(&isNumber);
                zoFuzzing::require(isNumber && std::isfinite(value) && !number.contains(QLatin1Char('e')),
                                   "corners are numbers without exponents", number);
            }
        }
        // Left of and above the screen, too: "+-50" is read as -50, and "-50" alone as counted from the right.
        static const QRegularExpression geometry(
            QStringLiteral("^[1-9][0-9]*x[1-9][0-9]*\\+-?[0-9]+\\+-?[0-9]+$"));
        zoFuzzing::require(
            geometry.match(xml.attributes().value(QLatin1String("Geometry")).toString()).hasMatch(),
            "a geometry is one", QString::fromUtf8(text));
    }
    zoFuzzing::require(!xml.hasError(), "what is exported is well-formed",
                       xml.errorString() + QLatin1Char('\n') + QString::fromUtf8(text));
    zoFuzzing::require(machines == rendering.pictures().size(), "each picture has its machine",
                       QString::fromUtf8(text));
}

void checkEqualizer(const zoHPCRenderSetup& rendering)
{
    const QByteArray text = zoEngineFiles::equalizer(rendering);
    int depth = 0;
    bool isInString = false;
    bool isSound = true;
    for (const char c : text) {
        if (c == '"')
            isInString = !isInString;
        else if (isInString)
            isSound = isSound && c != '\n';
        else
            depth += c == '{' || c == '[' ? 1 : c == '}' || c == ']' ? -1 : 0;
        isSound = isSound && depth >= 0;
    }
    zoFuzzing::require(isSound && depth == 0 && !isInString, "names end on their line, and all is closed",
                       QString::fromUtf8(text));
    static const QRegularExpression noNumber(QStringLiteral("[\\[ ]-?(nan|inf)[ \\n]"));
    zoFuzzing::require(
        !QString::fromUtf8(text).remove(QRegularExpression(QStringLiteral("\"[^\"]*\""))).contains(noNumber),
        "numbers are finite", QString::fromUtf8(text));
    zoFuzzing::require(std::size_t(text.count(" segment\n")) == rendering.pictures().size(),
                       "each picture has its segment", QString::fromUtf8(text));
}

void checkExport(zoHPCConfiguration& configuration)
{
    for (const double pitch : {1.0, 0.25}) {
        const zoHPCRenderSetup rendering(configuration.displays(), configuration.hosts().master(), pitch);
        zoExportNotes::Targets targets;
        targets.paraView = true;
        targets.equalizer = true;
        // Those of today have other layers than those of Debian.
        targets.release.read(pitch < 1.0 ? QStringLiteral("6.2") : QStringLiteral("5.11"));
        const zoExportNotes notes(rendering, targets);
        for (const zoExportNotes::Note& note : notes.notes())
            zoFuzzing::require(note.item != nullptr && !note.text.isEmpty(), "a note has an item and a text");
        zoFuzzing::require(rendering.pictures().size() + rendering.leftOut().size() ==
                               rendering.layout().viewports().size(),
                           "a viewport is shown or left out");
        for (const zoHPCRenderSetup::Picture& picture : rendering.pictures()) {
            zoFuzzing::require(picture.geometry.width() > 0 && picture.geometry.height() > 0,
                               "a picture has pixels");
            zoFuzzing::require(isFinite(picture.plane.lowerLeft) && isFinite(picture.plane.lowerRight) &&
                                   isFinite(picture.plane.upperRight) && !picture.plane.isDegenerate(),
                               "a picture has a plane");
        }
        if (rendering.pictures().empty())
            continue;
        checkParaView(rendering, targets.release);
        checkEqualizer(rendering);
    }
}

void checkAlone(zoHPCConfiguration& configuration)
{
    zoFuzzing::requireSame(differences(configuration, configuration), QString(),
                           "a configuration does not differ from itself");
    zoHPCConfiguration again;
    zoFuzzing::require(read(configuration.text(), again), "what is written is read");
    zoFuzzing::requireSame(differences(configuration, again), QString(), "what is written does not differ");
    checkExport(configuration);
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = zoFuzzing::textOf(data, size);
    const QString separator = QStringLiteral("\n=\n");
    const int end = text.indexOf(separator);
    const QString first = zoFuzzOutline::documentOf(text.left(end));
    const QString second = end < 0 ? QString() : zoFuzzOutline::documentOf(text.mid(end + separator.size()));
    zoHPCConfiguration before;
    zoHPCConfiguration after;
    if (!zoFuzzConfiguration::isSmall(first) || !zoFuzzConfiguration::isSmall(second) || !read(first, before))
        return 0;
    checkAlone(before);
    if (read(second, after)) {
        checkAlone(after);
        checkComparison(before, after);
    }
    return 0;
}
