#include "zoFuzzConfiguration.h"
#include "zoFuzzOutline.h"
#include "zoFuzzing.h"

#include <zoHPCConfiguration.h>
#include <zoHPCDocumentText.h>
#include <zoHPCLayout.h>
#include <zoHPCPictureFile.h>
#include <zoHPCProblems.h>
#include <zoHPCProjectionItem.h>
#include <zoHPCRoomPicture.h>
#include <zoHPCScreensPicture.h>
#include <zoHPCTreeItem.h>
#include <zoHPCViewportItem.h>
#include <zoHPCWindowItem.h>

#include <QBuffer>
#include <QDomDocument>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTreeWidgetItem>
#include <QXmlStreamReader>

#include <algorithm>
#include <set>

// The checks and both pictures of a configuration: what they say is about its items, a fix takes its problem
// away, and what is drawn is a picture.

namespace
{
const QSize s_size(240, 160);

// Each fix at most, and again for what fixes bring about.
constexpr int MaximumFixes = 40;

zoHPCLayout layoutOf(zoHPCConfiguration& configuration)
{
    return {configuration.displays(), configuration.hosts().master()};
}

bool isOf(const QTreeWidgetItem* item, zoHPCConfiguration& configuration)
{
    while (item->parent() != nullptr)
        item = item->parent();
    const QTreeWidgetItem* const master = configuration.hosts().master();
    return item == configuration.displays().projectionRoot() ||
           item == configuration.displays().displayRoot() || item == master;
}

void checkProblems(const zoHPCProblems::List& problems, zoHPCConfiguration& configuration)
{
    for (const zoHPCProblem& problem : problems) {
        zoFuzzing::require(problem.item != nullptr && isOf(problem.item, configuration),
                           "a problem concerns an item of the configuration", problem.message);
        zoFuzzing::require(problem.other == nullptr || isOf(problem.other, configuration),
                           "and so does its other item", problem.message);
        zoFuzzing::require(!problem.message.isEmpty() && problem.hasFix() != problem.fixText.isEmpty(),
                           "a problem is told, and so is its fix", problem.message);
        zoFuzzing::require(problem.concernsHost() ==
                               (dynamic_cast<const zoHPCTreeItem*>(problem.item) != nullptr),
                           "a problem knows the tree of its item", problem.message);
    }
}

QString told(const zoHPCProblems::List& problems)
{
    QString text;
    for (const zoHPCProblem& problem : problems)
        text +=
            zoHPCProblem::kindName(problem.kind) + QLatin1String(": ") + problem.message + QLatin1Char('\n');
    return text;
}

// Once there is a projection without a name, what shows nothing shows that with the next reading.
bool hasUnnamedProjection(const zoHPCConfiguration& configuration)
{
    const QList<zoHPCProjectionItem*> projections = configuration.displays().getProjectionItems();
    return std::any_of(projections.cbegin(), projections.cend(), [](const zoHPCProjectionItem* projection) {
        return projection->getString(zoHPCProjectionItem::Name).isEmpty();
    });
}

// One fix after the other, each on a fresh reading, as a person would.
void checkFixes(zoHPCConfiguration& configuration)
{
    for (int i = 0; i < MaximumFixes; ++i) {
        const zoHPCLayout layout = layoutOf(configuration);
        const zoHPCProblems::List problems = zoHPCProblems::find(layout);
        checkProblems(problems, configuration);
        const auto fixable = std::find_if(problems.begin(), problems.end(),
                                          [](const zoHPCProblem& problem) { return problem.hasFix(); });
        if (fixable == problems.end())
            return;
        const QString before = configuration.text();
        fixable->fix();
        const zoHPCProblems::List left = zoHPCProblems::find(layoutOf(configuration));
        const bool isGone = std::none_of(left.begin(), left.end(), [&](const zoHPCProblem& problem) {
            return problem.kind == fixable->kind && problem.item == fixable->item &&
                   problem.other == fixable->other && problem.message == fixable->message;
        });
        zoFuzzing::require(isGone, "a fix takes its problem away",
                           fixable->message + QLatin1Char('\n') + before);
    }
}

bool isFinite(const QRectF& rect)
{
    return qIsFinite(rect.x()) && qIsFinite(rect.y()) && qIsFinite(rect.width()) && qIsFinite(rect.height());
}

void checkSvg(const zoHPCPicture& picture)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    zoFuzzing::require(zoHPCPictureFile::write(picture, buffer, QStringLiteral("svg"), s_size),
                       "a picture is written");
    QXmlStreamReader xml(buffer.data());
    static const QRegularExpression noNumber(QStringLiteral("(^|[ ,(])-?(nan|inf)($|[ ,)])"));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        for (const QXmlStreamAttribute& attribute : attributes)
            zoFuzzing::require(!attribute.value().toString().contains(noNumber),
                               "pictures have finite numbers",
                               attribute.name().toString() + QLatin1Char('=') + attribute.value().toString());
    }
    zoFuzzing::require(!xml.hasError(), "a picture is well-formed",
                       xml.errorString() + QLatin1Char('\n') + QString::fromUtf8(buffer.data()));
}

void paint(zoHPCPicture& picture)
{
    const QRectF area(QPointF(0.0, 0.0), s_size);
    for (const zoHPCPicture::Detail detail : {zoHPCPicture::Detail::Full, zoHPCPicture::Detail::Fast}) {
        QImage image(s_size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        picture.paint(painter, area, QPalette(), detail);
        painter.end();
        zoFuzzing::require(image.pixelColor(0, 0).alpha() == 255, "a picture fills its area");
    }
    checkSvg(picture);
}

void checkPictures(zoHPCConfiguration& configuration)
{
    const zoHPCLayout layout = layoutOf(configuration);
    const QRectF area(QPointF(0.0, 0.0), s_size);
    zoHPCRoomPicture room;
    room.setLayout(layout);
    room.fit(area);
    zoHPCScreensPicture screens;
    screens.setLayout(layout);
    screens.fit(area);

    std::set<const QTreeWidgetItem*> projections;
    for (const zoHPCLayout::Projection& projection : layout.projections())
        projections.insert(projection.item);
    std::set<const QTreeWidgetItem*> windows;
    for (const zoHPCLayout::Window& window : layout.windows()) {
        windows.insert(window.item);
        zoFuzzing::require(isFinite(screens.placeOf(window.item)), "a window has a place");
    }
    const QTreeWidgetItem* chosen = nullptr;
    for (int x = 5; x < s_size.width(); x += 23) {
        for (int y = 5; y < s_size.height(); y += 23) {
            if (const QTreeWidgetItem* const tile = room.itemAt(QPointF(x, y), area)) {
                zoFuzzing::require(projections.count(tile) == 1, "the room shows projections");
                chosen = tile;
            }
            const zoHPCScreensPicture::Hit hit = screens.hitTest(QPointF(x, y));
            zoFuzzing::require(hit.window == nullptr || windows.count(hit.window) == 1,
                               "screens show windows");
            zoFuzzing::require(hit.viewport == nullptr ||
                                   (hit.window != nullptr && hit.viewport->parent() == hit.window),
                               "a viewport lies on its window");
        }
    }
    room.setCurrentItems({chosen}, layout);
    screens.setCurrentItems({chosen});
    paint(room);
    paint(screens);
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = zoFuzzOutline::documentOf(zoFuzzing::textOf(data, size));
    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    if (!zoFuzzConfiguration::isSmall(text) || !zoHPCDocumentText::parse(text, document, refusal))
        return 0;
    zoHPCConfiguration configuration;
    configuration.read(document);
    const QString before = configuration.text();
    checkPictures(configuration);
    const zoHPCProblems::List problems = zoHPCProblems::find(layoutOf(configuration));
    zoFuzzing::requireSame(configuration.text(), before, "looking changes nothing");

    // The same configuration has the same problems.
    QDomDocument written;
    zoFuzzing::require(zoHPCDocumentText::parse(before, written, refusal), "what is written is read",
                       refusal.reason);
    zoHPCConfiguration again;
    again.read(written);
    if (!hasUnnamedProjection(configuration))
        zoFuzzing::requireSame(told(zoHPCProblems::find(layoutOf(again))), told(problems),
                               "a saved configuration has the same problems");

    checkFixes(configuration);
    checkPictures(configuration);
    QDomDocument fixedDocument;
    const QString fixedText = configuration.text();
    zoFuzzing::require(zoHPCDocumentText::parse(fixedText, fixedDocument, refusal), "what was mended is read",
                       refusal.reason);
    again.read(fixedDocument);
    zoFuzzing::requireSame(again.text(), fixedText, "what was mended loads to itself");
    return 0;
}
