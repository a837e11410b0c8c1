#include "zoHPCReport.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCNetworkPicture.h"
#include "zoHPCPdfFile.h"
#include "zoHPCReportElevation.h"
#include "zoHPCRoomPicture.h"
#include "zoHPCTreeItem.h"
#include "zoHPCTreeWalk.h"
#include "zoHPCWindowItem.h"

#include <QCryptographicHash>
#include <QHash>
#include <QPainter>
#include <QPalette>
#include <QPdfWriter>
#include <QSet>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace
{
using Sheets = zoHPCReportSheets;

constexpr double s_unitsPerMillimetre = Sheets::Resolution / 25.4;
// Pictures count in 1/96 inch.
constexpr double s_picturePoint = Sheets::Resolution / 96.0;

QPalette paperPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    return palette;
}

// In the picture's own points.
void paintPicture(QPainter& painter, const zoHPCPicture& picture, const QRectF& area)
{
    painter.translate(area.topLeft());
    painter.scale(s_picturePoint, s_picturePoint);
    picture.paint(painter, QRectF(QPointF(0.0, 0.0), area.size() / s_picturePoint), paperPalette(),
                  zoHPCPicture::Detail::Full);
}
} // namespace

zoHPCReport::zoHPCReport(const Subject& subject, const zoHPCDisplaySetup& displays, zoHPCTreeItem* master,
                         const std::vector<Problem>& problems, double pixelPitch, Paper paper)
    : m_subject(subject)
    , m_paper(paper)
    , m_facts(displays, master, pixelPitch)
    , m_sheets(sizeOf(paper) * s_unitsPerMillimetre, MaximumPages)
{
    QStringList foot{subject.title};
    if (!subject.checksum.isEmpty())
        foot << tr("SHA-256 %1...").arg(QString::fromLatin1(subject.checksum.left(16)));
    foot << subject.date.toString(QString::fromLatin1("yyyy-MM-dd"));
    m_sheets.setFoot(foot.join(QString::fromLatin1("   ")));
    const std::size_t surfaces = m_facts.layout().projections().size();
    if (surfaces > std::size_t(MaximumSurfaces)) {
        m_refusal =
            tr("the report has %1 projections and tiles, of at most %2: take a configuration of each part")
                .arg(QString::number(surfaces), QString::number(MaximumSurfaces));
        return;
    }
    addOverview(problems);
    addElevations();
    addCables();
    addWindows();
    addNetworks();
    addViewer();
    addProblems(problems);
    if (m_sheets.isFull())
        m_refusal = tooManyPages(problems.size());
}

// Pages are few or many with the rows of their tables, those of problems among them.
QString zoHPCReport::tooManyPages(std::size_t problems) const
{
    const std::size_t rows =
        m_facts.layout().nodes().size() + m_facts.layout().networks().size() + 2 * m_facts.outputs().size();
    if (problems > rows)
        return tr("the report has more than %1 pages, with %2 problems: mend those first")
            .arg(QString::number(MaximumPages), QString::number(problems));
    return tr("the report has more than %1 pages, with %2 nodes, %3 networks and %4 windows: take larger "
              "paper, or "
              "a configuration of each part")
        .arg(QString::number(MaximumPages), QString::number(m_facts.layout().nodes().size()),
             QString::number(m_facts.layout().networks().size()),
             QString::number(m_facts.layout().windows().size()));
}

QByteArray zoHPCReport::checksumOf(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

QSizeF zoHPCReport::sizeOf(Paper paper)
{
    return paper == Paper::A4 ? QSizeF(297.0, 210.0) : QSizeF(420.0, 297.0);
}

bool zoHPCReport::writePdf(QIODevice& device) const
{
    if (!m_refusal.isEmpty())
        return false;
    const QPageLayout layout(QPageSize(m_paper == Paper::A4 ? QPageSize::A4 : QPageSize::A3),
                             QPageLayout::Landscape, QMarginsF());
    return zoHPCPdfFile::write(device, m_subject.title, layout, Sheets::Resolution,
                               [this](QPdfWriter& writer, QPainter& painter) {
                                   for (int page = 0; page < pageCount(); ++page) {
                                       if (page > 0)
                                           writer.newPage();
                                       paint(painter, page);
                                   }
                               });
}

void zoHPCReport::addOverview(const std::vector<Problem>& problems)
{
    m_sheets.addText(m_subject.title, Sheets::Style::Title);
    m_sheets.addText(
        tr("Date: %1 UTC").arg(m_subject.date.toUTC().toString(QString::fromLatin1("yyyy-MM-dd HH:mm"))));
    if (!m_subject.fileName.isEmpty())
        m_sheets.addText(tr("File: %1").arg(m_subject.fileName));
    if (!m_subject.checksum.isEmpty())
        m_sheets.addText(tr("SHA-256: %1").arg(QString::fromLatin1(m_subject.checksum)));
    const zoHPCLayout& layout = m_facts.layout();
    m_sheets.addText(
        tr("Nodes: %1. Networks: %2. Walls: %3. Windows: %4. Pictures on tiles: %5. Problems: %6.")
            .arg(QString::number(layout.nodes().size()), QString::number(layout.networks().size()),
                 QString::number(m_facts.walls().size()), QString::number(layout.windows().size()),
                 QString::number(m_facts.setup().pictures().size()), QString::number(problems.size())));
    m_sheets.addGap(6 * Sheets::Point);
    addRoom();
}

void zoHPCReport::addRoom()
{
    if (m_facts.walls().empty())
        return;
    constexpr double Least = 150 * Sheets::Point;
    const double height = std::max(Least, m_sheets.leftHeight() - Sheets::Point);
    const auto room = std::make_shared<zoHPCRoomPicture>();
    room->setIsDrawing(true);
    room->setLayout(m_facts.layout());
    m_sheets.addPicture(height, [room](QPainter& painter, const QRectF& area) {
        room->fit(QRectF(QPointF(0.0, 0.0), area.size() / s_picturePoint));
        paintPicture(painter, *room, area);
    });
}

void zoHPCReport::addElevations()
{
    m_sheets.beginPage();
    m_sheets.addHeading(tr("Front elevations"));
    if (m_facts.walls().empty()) {
        m_sheets.addText(tr("There are no walls."));
        return;
    }
    m_sheets.addText(
        tr("As seen by one who stands before the wall. Hatched tiles stay dark, grey strips are blended."));
    m_sheets.addGap(4 * Sheets::Point);
    for (const zoHPCReportWalls::Wall& wall : m_facts.walls()) {
        if (m_sheets.isFull())
            return;
        zoHPCReportElevation(m_sheets, m_facts, wall).add();
    }
}

void zoHPCReport::addCables()
{
    m_sheets.addHeading(tr("Order of the cables"));
    m_sheets.addText(tr("Wall by wall, from the upper left, row by row."));
    std::vector<QStringList> rows;
    QSet<QString> seen; // two viewports of a screen need one cable
    for (const zoHPCReportWalls::Wall& wall : m_facts.walls()) {
        for (int row = 0; row < wall.rows; ++row) {
            for (int column = 0; column < wall.columns; ++column) {
                const std::vector<int> outputs = m_facts.outputsOf(wall, row, column);
                for (const int index : outputs) {
                    const zoHPCReportFacts::Output& output = m_facts.outputs()[std::size_t(index)];
                    const QString place =
                        wall.hasTiles() ? tr("row %1, column %2")
                                              .arg(QString::number(row + 1), QString::number(column + 1))
                                        : QString();
                    const QString node = m_facts.nodeOf(output);
                    const QString screen = m_facts.screenOf(output);
                    const QString key =
                        QStringList{QString::number(output.projection), node, screen}.join(QLatin1Char('\n'));
                    if (seen.contains(key))
                        continue;
                    seen.insert(key);
                    rows.push_back({QString::number(rows.size() + 1), wall.name, place, node, screen,
                                    m_facts.eyeOf(output), QString()});
                }
            }
        }
    }
    m_sheets.addTable({{tr("No."), 5},
                       {tr("Wall"), 25},
                       {tr("Tile"), 17},
                       {tr("Node"), 25},
                       {tr("Output"), 15},
                       {tr("Eye"), 13},
                       {tr("Done"), 6}},
                      rows, true);
}

void zoHPCReport::addWindows()
{
    m_sheets.addHeading(tr("Windows and tiles"));
    m_sheets.addText(
        tr("Corners in millimetres from the viewer: x to the right, y up, the viewer looks along -z."));
    std::vector<QStringList> rows;
    const std::vector<int> order = m_facts.outputsByNode();
    for (const int index : order) {
        const zoHPCReportFacts::Output& output = m_facts.outputs()[std::size_t(index)];
        const QStringList corners = m_facts.cornersOf(output);
        const QString eye = m_facts.eyeOf(output);
        const QString tile = m_facts.tileOf(output);
        rows.push_back({m_facts.nodeOf(output), m_facts.screenOf(output), m_facts.windowOf(output),
                        eye.isEmpty() ? tile : tile + QLatin1Char('\n') + eye, m_facts.pixelsOf(output),
                        corners.value(0), corners.value(1), corners.value(2), m_facts.blendsOf(output)});
    }
    m_sheets.addTable({{tr("Node"), 15},
                       {tr("Screen"), 9},
                       {tr("Window"), 15},
                       {tr("Tile"), 15},
                       {tr("Pixels"), 12},
                       {tr("Lower left"), 10},
                       {tr("Lower right"), 10},
                       {tr("Upper right"), 10},
                       {tr("Blends"), 15}},
                      rows);
    const bool isUnmeasured =
        std::any_of(m_facts.walls().begin(), m_facts.walls().end(),
                    [this](const zoHPCReportWalls::Wall& wall) { return !m_facts.isMeasured(wall); });
    if (isUnmeasured)
        m_sheets.addText(tr("Tiled walls have pixels alone: no corners without the size of a pixel."));
    for (const zoHPCReportFacts::Output& output : m_facts.outputs()) {
        if (!output.whyNot.isEmpty())
            m_sheets.addText(output.whyNot);
    }
}

// long: the cells of one row, and the picture below them
void zoHPCReport::addNetworks()
{
    m_sheets.addHeading(tr("Networks"));
    zoHPCTreeItem* const master = m_facts.layout().master();
    if (master == nullptr || m_facts.layout().networks().empty()) {
        m_sheets.addText(tr("There are no networks."));
        return;
    }
    QHash<const zoHPCTreeItem*, QStringList> screens;
    QHash<const zoHPCTreeItem*, QString> names;
    for (const zoHPCLayout::Node& node : m_facts.layout().nodes())
        names.insert(node.item, node.name);
    for (const zoHPCReportFacts::Output& output : m_facts.outputs()) {
        const int node = m_facts.layout().windows()[std::size_t(output.window)].nodeIndex;
        if (node == zoHPCLayout::None)
            continue;
        QStringList& list = screens[m_facts.layout().nodes()[std::size_t(node)].item];
        if (!list.contains(m_facts.screenOf(output)))
            list << m_facts.screenOf(output);
    }
    int networks = 0;
    std::vector<QStringList> rows;
    const auto add = [&](zoHPCTreeItem* item, int, int depth) {
        constexpr int Deepest = 12;
        const QString indent(3 * std::min(depth, Deepest), QChar::Nbsp);
        const QString level = depth > Deepest ? tr("(level %1) ").arg(depth) : QString();
        QStringList kind;
        if (item->isNetwork()) {
            ++networks;
            for (const QString& option : {zoHPCOption::NetworkType, zoHPCOption::LinkSpeed}) {
                if (!item->getOption(option).isEmpty())
                    kind << item->getOption(option);
            }
            if (item->isEncrypted())
                kind << tr("encrypted");
        } else {
            if (item->childCount() > 0)
                kind << tr("gateway");
            if (!item->isRenderNode())
                kind << tr("does not render");
        }
        if (!item->isEnabled())
            kind << tr("disabled");
        const QString description = item->getOption(zoHPCOption::Description);
        QString name =
            item->isNetwork() ? tr("Network %1").arg(networks) : names.value(item, item->hostName());
        if (!description.isEmpty())
            name = tr("%1: %2").arg(name, description);
        rows.push_back({indent + level + name, kind.join(QLatin1String(", ")),
                        item->isNetwork() ? (item->childCount() == 1 ? tr("1 node")
                                                                     : tr("%1 nodes").arg(item->childCount()))
                                          : screens.value(item).join(QLatin1String(", "))});
        return depth + 1;
    };
    zoHPCTreeWalk::inherit<zoHPCTreeItem>(master->items(), 0, add);
    m_sheets.addTable({{tr("Network, node"), 50}, {tr("Kind"), 30}, {tr("Drives"), 20}}, rows);
    const auto picture = std::make_shared<zoHPCNetworkPicture>();
    picture->setLayout(m_facts.layout());
    const double most = 0.6 * m_sheets.height();
    const QRectF area(0.0, 0.0, m_sheets.width() / s_picturePoint, most / s_picturePoint);
    picture->fit(area);
    if (picture->isReadable(area))
        m_sheets.addPicture(most, [picture](QPainter& painter, const QRectF& place) {
            paintPicture(painter, *picture, place);
        });
}

// Of a wall, or of each column of one that stands on a circle.
void zoHPCReport::addPlaces(const zoHPCReportWalls::Wall& wall, std::vector<QStringList>& rows) const
{
    const double scale = m_facts.scaleOf(wall);
    const bool isMeasured = m_facts.isMeasured(wall);
    const auto length = [&](double value) {
        return isMeasured ? zoHPCReportFacts::number(scale * value) : tr("unknown");
    };
    const auto add = [&](const QString& name, const zoHPCPlane& plane) {
        const Point3 normal = plane.normal();
        const QString turn =
            plane.isDegenerate() || std::hypot(normal.x, normal.z) < 1e-6
                ? QString()
                : zoHPCReportFacts::number(qRadiansToDegrees(std::atan2(normal.x, normal.z)));
        // The distance of a tiled wall is in millimetres, whatever its pixels are.
        const QString distance = wall.isInPixels ? zoHPCReportFacts::number(-plane.lowerLeft.z)
                                                 : zoHPCReportFacts::number(plane.distanceInFront(Point3()));
        rows.push_back({name, length(plane.width()), length(plane.height()),
                        plane.isDegenerate() ? QString() : distance, length(plane.center().x),
                        length(plane.center().y), turn});
    };
    if (!wall.isGrid())
        add(wall.name, wall.plane);
    for (int column = 0; wall.isGrid() && column < wall.columns; ++column)
        add(tr("%1, column %2").arg(wall.name, QString::number(column + 1)), wall.grid.column(column));
}

void zoHPCReport::addViewer()
{
    m_sheets.addHeading(tr("Viewer"));
    m_sheets.addText(
        tr("The viewer is at x 0, y 0, z 0 and looks along -z; y is up. Lengths are millimetres."));
    m_sheets.addGap(4 * Sheets::Point);
    std::vector<QStringList> rows;
    int last = 0;
    for (const zoHPCLayout::Window& window : m_facts.layout().windows()) {
        const auto* const display =
            dynamic_cast<const zoHPCDisplayItem*>(static_cast<const QTreeWidgetItem*>(window.item)->parent());
        if (display == nullptr || window.display == last)
            continue;
        last = window.display;
        rows.push_back({QString::number(window.display),
                        zoHPCReportFacts::number(display->getDouble(zoHPCDisplayItem::EyeSeparation)),
                        window.user, display->getCameraName(),
                        display->getBool(zoHPCDisplayItem::HardwareSync) ? tr("yes") : tr("no"),
                        QString::number(display->childCount())});
    }
    m_sheets.addTable({{tr("Display"), 10},
                       {tr("Eye separation"), 15},
                       {tr("User"), 20},
                       {tr("Camera"), 30},
                       {tr("Hardware sync"), 15},
                       {tr("Windows"), 10}},
                      rows);
    rows.clear();
    for (const zoHPCReportWalls::Wall& wall : m_facts.walls())
        addPlaces(wall, rows);
    m_sheets.addTable({{tr("Wall"), 30},
                       {tr("Width"), 12},
                       {tr("Height"), 12},
                       {tr("Distance"), 12},
                       {tr("Centre x"), 12},
                       {tr("Centre y"), 12},
                       {tr("Turned to the viewer's right by degrees"), 18}},
                      rows);
}

void zoHPCReport::addProblems(const std::vector<Problem>& problems)
{
    // A word alone takes no page.
    constexpr double OfOneLine = 0.15;
    constexpr double Usual = 0.33;
    m_sheets.addHeading(tr("Problems"), problems.empty() ? OfOneLine : Usual);
    if (problems.empty()) {
        m_sheets.addText(tr("None."));
        return;
    }
    std::vector<QStringList> rows;
    rows.reserve(problems.size());
    for (const Problem& problem : problems)
        rows.push_back({zoHPCProblem::severityName(zoHPCProblem::severityOf(problem.kind)), problem.place,
                        problem.text, problem.fix, zoHPCProblem::kindName(problem.kind)});
    m_sheets.addTable(
        {{tr("Severity"), 10}, {tr("Place"), 10}, {tr("Problem"), 40}, {tr("Remedy"), 20}, {tr("Code"), 20}},
        rows);
}
