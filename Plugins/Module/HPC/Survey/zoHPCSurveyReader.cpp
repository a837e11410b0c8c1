#include "zoHPCSurveyReader.h"

#include "zoHPCNumberExpression.h"
#include "zoHPCSuggestion.h"
#include "zoHPCSurveyPoints.h"
#include "zoText.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{
struct CornerWord
{
    const char* word;
    double s;
    double t;
};

constexpr CornerWord s_corners[] = {
    {"ll", -0.5, -0.5},    {"lr", 0.5, -0.5},    {"ul", -0.5, 0.5},   {"ur", 0.5, 0.5},
    {"center", 0.0, 0.0},  {"centre", 0.0, 0.0}, {"left", -0.5, 0.0}, {"right", 0.5, 0.0},
    {"bottom", 0.0, -0.5}, {"top", 0.0, 0.5},
};

// An edge from corner to corner, counter-clockwise as the viewer sees it.
struct Edge
{
    const char* word;
    double s1, t1, s2, t2;
};

constexpr Edge s_edges[] = {
    {"bottom", -0.5, -0.5, 0.5, -0.5},
    {"right", 0.5, -0.5, 0.5, 0.5},
    {"top", 0.5, 0.5, -0.5, 0.5},
    {"left", -0.5, 0.5, -0.5, -0.5},
};

const Edge* findEdge(const zoHPCSurvey::Place& place)
{
    const auto edge = std::find_if(std::begin(s_edges), std::end(s_edges), [&](const Edge& known) {
        return place.wall >= 0 && known.s1 + known.s2 == 2.0 * place.s &&
               known.t1 + known.t2 == 2.0 * place.t;
    });
    return edge == std::end(s_edges) ? nullptr : edge;
}

constexpr double s_joinTolerance = 1.0;  // mm
constexpr double s_levelTolerance = 0.1; // degrees
} // namespace

// A word that begins lines: what it does to the names, and what it says.
struct zoHPCSurveyReader::Verb
{
    const char* word;
    void (zoHPCSurveyReader::*name)(zoHPCSurveyLine& line);
    void (zoHPCSurveyReader::*read)(zoHPCSurveyLine& line);
};

const std::vector<zoHPCSurveyReader::Verb>& zoHPCSurveyReader::verbs()
{
    using Reader = zoHPCSurveyReader;
    static const std::vector<Verb> list{
        {"unit", &Reader::readUnit, &Reader::readUnit},
        {"tolerance", &Reader::readTolerance, &Reader::readTolerance},
        {"wall", &Reader::addWall, &Reader::readWall},
        {"tile", &Reader::addWall, &Reader::readWall},
        {"front", &Reader::skip, &Reader::readFront},
        {"viewer", &Reader::skip, &Reader::readViewer},
        {"distance", &Reader::skip, &Reader::readDistance},
        {"floor", &Reader::skip, &Reader::readFloor},
        {"angle", &Reader::skip, &Reader::readAngle},
        {"join", &Reader::skip, &Reader::readJoin},
        {"upright", &Reader::skip, &Reader::readUpright},
        {"level", &Reader::skip, &Reader::readLevel},
        {"flat", &Reader::skip, &Reader::readFlat},
        {"point", &Reader::addNamedPoint, &Reader::skip},
        {"points", &Reader::addPointList, &Reader::skip},
        {"mark", &Reader::addMark, &Reader::readMark},
    };
    return list;
}

zoHPCSurveyReader::zoHPCSurveyReader(Fetch fetch) : m_fetch(std::move(fetch)) {}

QStringList zoHPCSurveyReader::keywords()
{
    QStringList words;
    for (const Verb& verb : verbs())
        words << QLatin1String(verb.word);
    return words;
}

bool zoHPCSurveyReader::read(const QString& text)
{
    *this = zoHPCSurveyReader(std::move(m_fetch));
    m_survey.points.push_back({zoText("viewer")});
    m_points.insert(zoText("viewer"), zoHPCSurvey::Viewer);
    m_characters = text.size();
    if (m_characters > MaximumCharacters) {
        addMistake(1, tr("more than %1 MiB of text").arg(MaximumCharacters / 1024 / 1024));
        return false;
    }
    const QStringList lines = text.split(QLatin1Char('\n'));
    readNames(lines);
    // A line whose name is wrong is told once.
    if (m_mistakes.empty())
        readLines(lines);
    if (m_mistakes.empty())
        addCoordinates();
    if (m_mistakes.empty())
        findEqualNames();
    if (m_mistakes.empty() && m_survey.walls.empty())
        addMistake(1, tr("no wall; a line such as \"wall Front size 3600 x 2000\" is missing"));
    std::stable_sort(m_mistakes.begin(), m_mistakes.end(), [](const Mistake& left, const Mistake& right) {
        return left.file.isEmpty() && right.file.isEmpty() && left.line < right.line;
    });
    return m_mistakes.empty();
}

void zoHPCSurveyReader::addMistake(int line, const QString& text, const QString& file)
{
    if (m_mistakes.size() < std::size_t(MaximumMistakes))
        m_mistakes.push_back({file, line, text});
}

const zoHPCSurveyReader::Verb* zoHPCSurveyReader::findVerb(zoHPCSurveyLine& line) const
{
    const QString word = line.takeWord(tr("the first word"));
    for (const Verb& verb : verbs()) {
        if (word.compare(QLatin1String(verb.word), Qt::CaseInsensitive) == 0)
            return &verb;
    }
    const QString meant = zoHPCSuggestion::closest(word, keywords());
    line.setMistake(meant.isEmpty()
                        ? tr("\"%1\" begins no line; these do: %2").arg(word, keywords().join(zoText(", ")))
                        : tr("\"%1\" begins no line; did you mean \"%2\"?").arg(word, meant));
    return nullptr;
}

void zoHPCSurveyReader::readNames(const QStringList& lines)
{
    m_defaults = Defaults();
    for (m_line = 1; m_line <= lines.size(); ++m_line) {
        zoHPCSurveyLine line(lines.at(m_line - 1), m_defaults.unit);
        if (line.isGood() && !line.isEmpty()) {
            if (const Verb* const verb = findVerb(line))
                (this->*verb->name)(line);
        }
        if (!line.isGood())
            addMistake(m_line, line.mistake());
        if (m_mistakes.size() >= std::size_t(MaximumMistakes))
            return;
    }
}

void zoHPCSurveyReader::readLines(const QStringList& lines)
{
    m_defaults = Defaults();
    for (m_line = 1; m_line <= lines.size(); ++m_line) {
        zoHPCSurveyLine line(lines.at(m_line - 1), m_defaults.unit);
        if (line.isEmpty())
            continue;
        if (const Verb* const verb = findVerb(line))
            (this->*verb->read)(line);
        if (line.isGood() && m_survey.measurements.size() > std::size_t(zoHPCSurvey::MaximumMeasurements))
            line.setMistake(tr("more than %1 measurements").arg(zoHPCSurvey::MaximumMeasurements));
        if (!line.isGood())
            addMistake(m_line, line.mistake());
        if (m_mistakes.size() >= std::size_t(MaximumMistakes) ||
            m_survey.measurements.size() > std::size_t(zoHPCSurvey::MaximumMeasurements))
            return;
    }
}

void zoHPCSurveyReader::skip(zoHPCSurveyLine&) {}

void zoHPCSurveyReader::readUnit(zoHPCSurveyLine& line)
{
    const QString word = line.takeWord(tr("the unit"));
    const double unit = zoHPCNumberExpression::lengthOf(word);
    if (line.isGood() && unit <= 0.0)
        line.setMistake(tr("\"%1\" is no unit of length: %2")
                            .arg(word, zoHPCNumberExpression::lengthUnits().join(zoText(", "))));
    line.end();
    if (line.isGood())
        m_defaults.unit = unit;
}

void zoHPCSurveyReader::readTolerance(zoHPCSurveyLine& line)
{
    const bool isAngle = line.takeKeyword("angle");
    const double value = isAngle ? line.takeAngle() : line.takeLength();
    constexpr double Least = 1e-4;
    if (line.isGood() && value < Least)
        line.setMistake(tr("a tolerance is more than 0"));
    line.end();
    if (line.isGood())
        (isAngle ? m_defaults.angle : m_defaults.tolerance) = value;
}

void zoHPCSurveyReader::addWall(zoHPCSurveyLine& line)
{
    const QString name = line.takeWord(tr("the name of the wall"));
    if (!line.isGood())
        return;
    if (m_walls.contains(name) || m_points.contains(name))
        line.setMistake(tr("there is a \"%1\" already").arg(name));
    else if (m_survey.walls.size() >= std::size_t(zoHPCSurvey::MaximumWalls))
        line.setMistake(tr("more than %1 walls").arg(zoHPCSurvey::MaximumWalls));
    if (!line.isGood())
        return;
    zoHPCSurvey::Wall wall;
    wall.name = name;
    wall.line = m_line;
    m_walls.insert(name, int(m_survey.walls.size()));
    m_survey.walls.push_back(wall);
}

void zoHPCSurveyReader::readWall(zoHPCSurveyLine& line)
{
    const int index = takeWall(line);
    if (index < 0)
        return;
    zoHPCSurvey::Wall wall = m_survey.walls[std::size_t(index)];
    const auto isTooSmall = [](double size) { return size < zoHPCSurvey::SmallestSize; };
    while (line.isGood()) {
        if (line.takeKeyword("size")) {
            line.takeSize(wall.width, wall.height);
            if (line.isGood() && (isTooSmall(wall.width) || isTooSmall(wall.height)))
                line.setMistake(tr("a wall is 1 mm wide and high at least"));
        } else if (line.takeKeyword("tiles")) {
            line.takeCounts(wall.columns, wall.rows);
        } else if (line.takeKeyword("gap")) {
            line.takeSize(wall.gapX, wall.gapY);
        } else {
            break;
        }
    }
    const double tolerance = line.takeTolerance(m_defaults.tolerance, false);
    line.end();
    if (!line.isGood())
        return;
    constexpr int MostTiles = 10000;
    if (wall.columns * wall.rows > MostTiles)
        line.setMistake(tr("more than %1 tiles").arg(MostTiles));
    else if (wall.width > 0.0 &&
             (wall.gapX * (wall.columns - 1) >= wall.width || wall.gapY * (wall.rows - 1) >= wall.height))
        line.setMistake(tr("the gaps leave nothing for the tiles"));
    else if (wall.width > 0.0 && wall.overlapsBeyond(wall.width, wall.height))
        line.setMistake(tr("tiles overlap by more than their own size; a gap below 0 is what they share"));
    if (!line.isGood())
        return;
    m_survey.walls[std::size_t(index)] = wall;
    if (wall.width <= 0.0)
        return;
    Place place;
    place.wall = index;
    add(Kind::Width, place, wall.width, tolerance, zoText("width ") + wall.name);
    add(Kind::Height, place, wall.height, tolerance, zoText("height ") + wall.name);
}

void zoHPCSurveyReader::readFront(zoHPCSurveyLine& line)
{
    const int wall = takeWall(line);
    line.end();
    if (line.isGood())
        m_survey.front = wall;
}

void zoHPCSurveyReader::readViewer(zoHPCSurveyLine& line)
{
    if (m_hasViewerLine) {
        line.setMistake(tr("there is a line \"viewer\" already"));
        return;
    }
    m_hasViewerLine = true;
    double distance = 0.0;
    double height = 0.0;
    double aside = 0.0;
    bool hasDistance = false;
    bool hasHeight = false;
    bool hasAside = false;
    while (line.isGood()) {
        if (line.takeKeyword("distance")) {
            distance = line.takeLength();
            hasDistance = true;
        } else if (line.takeKeyword("height")) {
            height = line.takeLength();
            hasHeight = true;
        } else if (line.takeKeyword("aside")) {
            aside = line.takeLength();
            hasAside = true;
        } else {
            break;
        }
    }
    const double tolerance = line.takeTolerance(m_defaults.tolerance, false);
    line.end();
    if (!line.isGood())
        return;
    if (hasDistance)
        addViewerPart(Kind::ViewerDistance, distance, tolerance, "viewer distance");
    if (hasHeight)
        addViewerPart(Kind::ViewerHeight, height, tolerance, "viewer height");
    if (hasAside)
        addViewerPart(Kind::ViewerAside, aside, tolerance, "viewer aside");
    // Whoever says how far away the viewer is means the middle of the wall, as with "distance" of a power wall.
    if (hasDistance && !hasAside)
        addViewerPart(Kind::ViewerAside, 0.0, tolerance, "viewer aside");
    if (hasDistance && !hasHeight)
        addViewerPart(Kind::ViewerLevel, 0.0, tolerance, "viewer level");
}

void zoHPCSurveyReader::addViewerPart(Kind kind, double value, double tolerance, const char* text)
{
    Place place;
    place.point = zoHPCSurvey::Viewer;
    add(kind, place, value, tolerance, QLatin1String(text));
}

void zoHPCSurveyReader::readDistance(zoHPCSurveyLine& line)
{
    QString names[2];
    const Place from = takePlace(line, &names[0]);
    const Place to = takePlace(line, &names[1]);
    const double value = line.takeLength();
    const double tolerance = line.takeTolerance(m_defaults.tolerance, false);
    line.end();
    if (line.isGood() && value <= 0.0)
        line.setMistake(tr("a distance is more than 0; places that coincide are told with \"join\""));
    if (line.isGood() && from.wall == to.wall && from.point == to.point && from.s == to.s && from.t == to.t)
        line.setMistake(tr("a distance is between two places"));
    if (line.isGood())
        add(Kind::Distance, from, value, tolerance, zoText("distance %1 %2").arg(names[0], names[1])).to = to;
}

void zoHPCSurveyReader::readFloor(zoHPCSurveyLine& line)
{
    QString name;
    const Place place = takePlace(line, &name);
    const double value = line.takeLength();
    const double tolerance = line.takeTolerance(m_defaults.tolerance, false);
    line.end();
    if (line.isGood())
        add(Kind::Floor, place, value, tolerance, zoText("floor %1").arg(name));
}

void zoHPCSurveyReader::readAngle(zoHPCSurveyLine& line)
{
    Place from;
    Place to;
    from.wall = takeWall(line);
    to.wall = takeWall(line);
    const double value = line.takeAngle();
    const double tolerance = line.takeTolerance(m_defaults.angle, true);
    line.end();
    if (!line.isGood())
        return;
    if (from.wall == to.wall) {
        line.setMistake(tr("an angle is between two walls"));
        return;
    }
    const auto nameOf = [&](const Place& place) { return m_survey.walls[std::size_t(place.wall)].name; };
    add(Kind::Angle, from, value, tolerance, zoText("angle %1 %2").arg(nameOf(from), nameOf(to))).to = to;
}

void zoHPCSurveyReader::readJoin(zoHPCSurveyLine& line)
{
    QString names[2];
    Place places[2];
    for (int i = 0; i < 2; ++i)
        places[i] = takePlace(line, &names[i]);
    const double tolerance = line.takeTolerance(s_joinTolerance, false);
    line.end();
    if (!line.isGood())
        return;
    if (places[0].wall >= 0 ? places[0].wall == places[1].wall : places[0].point == places[1].point) {
        line.setMistake(tr("a wall and a point cannot be joined with themselves"));
        return;
    }
    const QString text = zoText("join %1 %2").arg(names[0], names[1]);
    const Edge* const one = findEdge(places[0]);
    const Edge* const other = findEdge(places[1]);
    if (!one != !other) {
        line.setMistake(tr("an edge is joined with an edge, a corner with a corner"));
        return;
    }
    if (!one) {
        add(Kind::Join, places[0], 0.0, tolerance, text).to = places[1];
        return;
    }
    // Both show their picture to the same side, so that they walk the common edge in opposite directions.
    for (int end = 0; end < 2; ++end) {
        Place from = places[0];
        Place to = places[1];
        from.s = end == 0 ? one->s1 : one->s2;
        from.t = end == 0 ? one->t1 : one->t2;
        to.s = end == 0 ? other->s2 : other->s1;
        to.t = end == 0 ? other->t2 : other->t1;
        add(Kind::Join, from, 0.0, tolerance, text).to = to;
    }
}

void zoHPCSurveyReader::readUpright(zoHPCSurveyLine& line)
{
    readWalls(line, Kind::Upright, "upright");
}

void zoHPCSurveyReader::readLevel(zoHPCSurveyLine& line)
{
    readWalls(line, Kind::Level, "level");
}

void zoHPCSurveyReader::readFlat(zoHPCSurveyLine& line)
{
    readWalls(line, Kind::Flat, "flat");
}

void zoHPCSurveyReader::readWalls(zoHPCSurveyLine& line, Kind kind, const char* verb)
{
    std::vector<int> walls;
    double tolerance = -1.0;
    do {
        walls.push_back(takeWall(line));
        tolerance = line.takeTolerance(-1.0, true);
    } while (line.isGood() && tolerance < 0.0 && !line.isAtEnd());
    line.end();
    if (!line.isGood())
        return;
    for (const int wall : walls) {
        Place place;
        place.wall = wall;
        add(kind, place, 0.0, tolerance < 0.0 ? s_levelTolerance : tolerance,
            QLatin1String(verb) + QLatin1Char(' ') + m_survey.walls[std::size_t(wall)].name);
    }
}

void zoHPCSurveyReader::addNamedPoint(zoHPCSurveyLine& line)
{
    const QString name = line.takeWord(tr("the name of the point"));
    if (line.isGood() && line.isAtEnd()) {
        if (m_walls.contains(name) || m_points.contains(name))
            line.setMistake(tr("there is a \"%1\" already").arg(name));
        else if (m_survey.points.size() >= std::size_t(zoHPCSurvey::MaximumPoints))
            line.setMistake(tr("more than %1 points").arg(zoHPCSurvey::MaximumPoints));
        else
            addPoint(name);
        return;
    }
    Coordinates row;
    row.name = name;
    const double east = line.takeLength();
    const double north = line.takeLength();
    const double up = line.takeLength();
    row.place = {east, up, -north};
    row.tolerance = line.takeTolerance(m_defaults.tolerance, false);
    row.line = m_line;
    line.end();
    if (!line.isGood())
        return;
    // Those of the text itself are from one instrument.
    const auto isText = [](const zoHPCSurvey::Instrument& instrument) { return instrument.file.isEmpty(); };
    std::vector<zoHPCSurvey::Instrument>& list = m_survey.instruments;
    auto own = std::find_if(list.begin(), list.end(), isText);
    if (own == list.end())
        own = list.insert(list.end(), zoHPCSurvey::Instrument());
    row.instrument = int(own - list.begin());
    addRow(row);
}

void zoHPCSurveyReader::addRow(const Coordinates& row)
{
    m_coordinates.push_back(row);
    ++m_listed[row.name];
}

void zoHPCSurveyReader::addPointList(zoHPCSurveyLine& line)
{
    const QString name = line.takeWord(tr("the name of the file"));
    double unit = m_defaults.unit;
    bool isUpY = false;
    while (line.isGood()) {
        if (line.takeKeyword("unit")) {
            unit = zoHPCNumberExpression::lengthOf(line.takeWord(tr("the unit")));
            if (line.isGood() && unit <= 0.0)
                line.setMistake(tr("units of length are %1")
                                    .arg(zoHPCNumberExpression::lengthUnits().join(zoText(", "))));
        } else if (line.takeKeyword("up")) {
            const QString axis = line.takeWord(tr("the axis y or z"));
            isUpY = axis == QLatin1String("y");
            if (line.isGood() && !isUpY && axis != QLatin1String("z"))
                line.setMistake(tr("the axis that points up is y or z"));
        } else {
            break;
        }
    }
    const double tolerance = line.takeTolerance(m_defaults.tolerance, false);
    line.end();
    if (!line.isGood())
        return;
    if (m_survey.instruments.size() >= std::size_t(zoHPCSurvey::MaximumLists)) {
        line.setMistake(tr("more than %1 point lists").arg(zoHPCSurvey::MaximumLists));
        return;
    }
    QString text;
    QString reason;
    if (!m_fetch || !m_fetch(name, text, reason)) {
        line.setMistake(tr("the point list %1 cannot be read: %2").arg(name, reason));
        return;
    }
    m_characters += std::min<int>(text.size(), MaximumCharacters);
    zoHPCSurveyPoints points;
    if (m_characters > MaximumCharacters) {
        line.setMistake(tr("more than %1 MiB of text").arg(MaximumCharacters / 1024 / 1024));
    } else if (!points.read(text, unit, isUpY)) {
        addMistake(points.mistakeLine(), points.mistake(), name);
    } else if (m_coordinates.size() + points.rows().size() > std::size_t(zoHPCSurvey::MaximumPoints)) {
        line.setMistake(tr("more than %1 points").arg(zoHPCSurvey::MaximumPoints));
    } else {
        const int instrument = int(m_survey.instruments.size());
        m_survey.instruments.push_back({name, m_line});
        if (!points.remark().isEmpty())
            m_survey.remarks.push_back({name, points.remarkLine(), points.remark()});
        for (const zoHPCSurveyPoints::Row& row : points.rows())
            addRow({row.name, row.place, instrument, tolerance, name, row.line});
    }
}

void zoHPCSurveyReader::addMark(zoHPCSurveyLine& line)
{
    const QString name = line.takeWord(tr("the name of the point"));
    const QString place = line.takeWord(tr("the corner"));
    line.end();
    if (line.isGood() && m_marks.contains(name))
        line.setMistake(tr("\"%1\" is marked already").arg(name));
    else if (line.isGood())
        m_marks.insert(name, place);
}

void zoHPCSurveyReader::readMark(zoHPCSurveyLine& line)
{
    const QString name = line.takeWord(tr("the name of the point"));
    if (m_marks.contains(m_marks.value(name)))
        line.setMistake(tr("\"%1\" is marked itself; name the corner").arg(m_marks.value(name)));
    takePlace(line);
    if (line.isGood() && !m_listed.contains(name))
        line.setMistake(tr("\"%1\" is in no point list").arg(name));
}

// Rows that are a corner, marked as one or named elsewhere; others are left out.
void zoHPCSurveyReader::addCoordinates()
{
    for (const Coordinates& row : m_coordinates) {
        Place place;
        const QString name = m_marks.value(row.name, row.name);
        if (!findPlace(name, place, false)) {
            m_survey.unusedPoints << row.name;
            continue;
        }
        m_line = row.line;
        zoHPCSurvey::Measurement& measurement =
            add(Kind::Coordinates, place, 0.0, row.tolerance, zoText("point ") + row.name);
        measurement.coordinates = row.place;
        measurement.instrument = row.instrument;
        measurement.file = row.file;
    }
    m_survey.removeUnusedInstruments();
    if (m_survey.measurements.size() > std::size_t(zoHPCSurvey::MaximumMeasurements))
        addMistake(1, tr("more than %1 measurements").arg(zoHPCSurvey::MaximumMeasurements));
}

int zoHPCSurveyReader::takeWall(zoHPCSurveyLine& line)
{
    const QString name = line.takeWord(tr("the name of the wall"));
    if (!line.isGood())
        return -1;
    const auto wall = m_walls.constFind(name);
    if (wall != m_walls.constEnd())
        return *wall;
    const QString meant = zoHPCSuggestion::closest(name, m_walls.keys());
    line.setMistake(meant.isEmpty() ? tr("there is no wall \"%1\"").arg(name)
                                    : tr("there is no wall \"%1\"; did you mean \"%2\"?").arg(name, meant));
    return -1;
}

zoHPCSurvey::Place zoHPCSurveyReader::takePlace(zoHPCSurveyLine& line, QString* name)
{
    Place place;
    const QString word = line.takeWord(tr("a place such as Front.ll"));
    if (name)
        *name = word;
    if (!line.isGood() || findPlace(word, place, true))
        return place;
    if (m_walls.contains(word)) {
        line.setMistake(
            tr("where on \"%1\"? Places are %1.ll, .lr, .ul, .ur, .center, .left, .right, .top and .bottom")
                .arg(word));
        return place;
    }
    const QString meant = zoHPCSuggestion::closest(word, knownNames());
    line.setMistake(meant.isEmpty() ? tr("there is no place \"%1\"").arg(word)
                                    : tr("there is no place \"%1\"; did you mean \"%2\"?").arg(word, meant));
    return place;
}

bool zoHPCSurveyReader::findPlace(const QString& name, Place& place, bool mayAddPoint)
{
    const auto point = m_points.constFind(name);
    if (point != m_points.constEnd()) {
        place.point = *point;
        return true;
    }
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    const auto wall = dot > 0 ? m_walls.constFind(name.left(dot)) : m_walls.constEnd();
    if (wall != m_walls.constEnd()) {
        const QString word = name.mid(dot + 1).toLower();
        for (const CornerWord& corner : s_corners) {
            if (word != QLatin1String(corner.word))
                continue;
            place.wall = *wall;
            place.s = corner.s;
            place.t = corner.t;
            return true;
        }
        return false;
    }
    // A marked point is its corner; one of a list that a line names is a place from then on.
    const auto mark = m_marks.constFind(name);
    if (mark != m_marks.constEnd() && *mark != name && !m_marks.contains(*mark))
        return findPlace(*mark, place, mayAddPoint);
    if (!mayAddPoint || !m_listed.contains(name))
        return false;
    place.point = addPoint(name);
    return true;
}

int zoHPCSurveyReader::addPoint(const QString& name)
{
    const int index = int(m_survey.points.size());
    m_points.insert(name, index);
    m_survey.points.push_back({name});
    return index;
}

// A few hundred are enough to guess from.
QStringList zoHPCSurveyReader::knownNames() const
{
    constexpr int Most = 300;
    QStringList names;
    for (const zoHPCSurvey::Wall& wall : m_survey.walls) {
        for (const CornerWord& corner : s_corners)
            names << wall.name + QLatin1Char('.') + QLatin1String(corner.word);
        if (names.size() > Most)
            break;
    }
    for (const zoHPCSurvey::Point& point : m_survey.points) {
        if (names.size() < 2 * Most)
            names << point.name;
    }
    return names;
}

// A tile of one wall may be called as another wall is.
void zoHPCSurveyReader::findEqualNames()
{
    for (const zoHPCSurvey::Wall& wall : m_survey.walls) {
        static const QRegularExpression form(zoText("^(.+) row:([1-9][0-9]*) col:([1-9][0-9]*)$"));
        const QRegularExpressionMatch match = form.match(wall.name);
        const auto found = match.hasMatch() ? m_walls.constFind(match.captured(1)) : m_walls.constEnd();
        if (found == m_walls.constEnd() || wall.columns * wall.rows > 1)
            continue;
        const zoHPCSurvey::Wall& other = m_survey.walls[std::size_t(*found)];
        if (other.columns * other.rows > 1 && match.captured(2).toInt() <= other.rows &&
            match.captured(3).toInt() <= other.columns)
            addMistake(wall.line, tr("\"%1\" is also the name of a tile of \"%2\" in line %3: give the wall "
                                     "another name")
                                      .arg(wall.name, other.name, QString::number(other.line)));
    }
}

zoHPCSurvey::Measurement& zoHPCSurveyReader::add(Kind kind, const Place& from, double value, double tolerance,
                                                 const QString& text)
{
    zoHPCSurvey::Measurement measurement;
    measurement.kind = kind;
    measurement.from = from;
    measurement.value = value;
    measurement.tolerance = tolerance;
    measurement.line = m_line;
    measurement.text = text;
    m_survey.measurements.push_back(measurement);
    return m_survey.measurements.back();
}
