#include "zoFuzzing.h"

#include <zoHPCConfiguration.h>
#include <zoHPCDocumentText.h>
#include <zoHPCSurveyPlanes.h>
#include <zoHPCSurveyPoints.h>
#include <zoHPCSurveyReader.h>
#include <zoHPCSurveySolver.h>
#include <zoSurveyReport.h>

#include <QDomDocument>
#include <QJsonDocument>
#include <QSet>

#include <cmath>

// A measured room: what is wrong lies in the text that it is told of, what is read hangs together, the planes are made
// of numbers or it is told what is open, and the same text gives the same answer.
//
// A line "===" ends the measurements and begins the point list, which each line "points" gets.

namespace
{
// Larger rooms are slow with sanitizers, and nothing else: the product's own limits are much higher.
constexpr std::size_t s_mostWalls = 4;
constexpr std::size_t s_mostPoints = 10;
constexpr std::size_t s_mostInstruments = 3;
constexpr std::size_t s_mostMeasurements = 40;

int linesOf(const QString& text)
{
    return text.count(QLatin1Char('\n')) + 1;
}

bool isFinite(const Point3& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

bool isFinite(const zoHPCPlane& plane)
{
    return isFinite(plane.lowerLeft) && isFinite(plane.lowerRight) && isFinite(plane.upperRight);
}

void checkList(const QString& list, bool isUpY)
{
    zoHPCSurveyPoints points;
    const bool isGood = points.read(list, 1000.0, isUpY);
    zoFuzzing::require(isGood == points.mistake().isEmpty(), "a point list is read, or its mistake told");
    zoFuzzing::require(isGood || (points.rows().empty() && points.mistakeLine() >= 1 &&
                                  points.mistakeLine() <= linesOf(list)),
                       "a mistake lies in the list", points.mistake());
    int line = 0;
    for (const zoHPCSurveyPoints::Row& row : points.rows()) {
        zoFuzzing::require(row.line > line && row.line <= linesOf(list) && !row.name.isEmpty() &&
                               isFinite(row.place),
                           "a row lies in the list, with a name and three numbers", row.name);
        line = row.line;
    }
}

struct Reading
{
    bool isGood = false;
    zoHPCSurvey survey;
    std::vector<zoHPCSurveyReader::Mistake> mistakes;
};

Reading read(const QString& text, const QString& list)
{
    zoHPCSurveyReader reader([&list](const QString& name, QString& content, QString& reason) {
        if (name == QLatin1String("none")) {
            reason = QStringLiteral("no such file");
            return false;
        }
        content = list;
        return true;
    });
    Reading reading;
    reading.isGood = reader.read(text);
    reading.survey = reader.survey();
    reading.mistakes = reader.mistakes();
    return reading;
}

void checkMistakes(const Reading& reading, const QString& text, const QString& list)
{
    zoFuzzing::require(reading.isGood == reading.mistakes.empty(), "what is wrong is told");
    for (const zoHPCSurveyReader::Mistake& mistake : reading.mistakes)
        zoFuzzing::require(!mistake.text.isEmpty() && mistake.line >= 1 &&
                               mistake.line <= linesOf(mistake.file.isEmpty() ? text : list),
                           "a mistake lies in its file", mistake.text);
}

void checkPlace(const zoHPCSurvey& survey, const zoHPCSurvey::Place& place)
{
    const bool isOnWall = place.wall >= 0 && place.wall < int(survey.walls.size());
    const bool isPoint = place.point >= 0 && place.point < int(survey.points.size());
    zoFuzzing::require(place.wall < 0 ? isPoint : isOnWall && place.point < 0, "a place is somewhere");
    zoFuzzing::require(std::abs(place.s) <= 0.5 && std::abs(place.t) <= 0.5, "and within its wall");
}

void checkMeasurement(const zoHPCSurvey& survey, const zoHPCSurvey::Measurement& measurement)
{
    using Kind = zoHPCSurvey::Kind;
    checkPlace(survey, measurement.from);
    if (measurement.kind == Kind::Distance || measurement.kind == Kind::Join ||
        measurement.kind == Kind::Angle)
        checkPlace(survey, measurement.to);
    zoFuzzing::require(
        (measurement.kind == Kind::Coordinates) ==
            (measurement.instrument >= 0 && measurement.instrument < int(survey.instruments.size())),
        "coordinates have an instrument", measurement.text);
    zoFuzzing::require(std::isfinite(measurement.value) && isFinite(measurement.coordinates) &&
                           std::isfinite(measurement.tolerance) && measurement.tolerance > 0.0,
                       "a measurement is a number with a tolerance", measurement.text);
}

void checkSurvey(const zoHPCSurvey& survey, const QString& text, const QString& list)
{
    zoFuzzing::require(!survey.walls.empty() && survey.front >= 0 && survey.front < int(survey.walls.size()),
                       "a room has a front wall");
    QSet<QString> names;
    for (const zoHPCSurvey::Wall& wall : survey.walls) {
        zoFuzzing::require(wall.line >= 1 && wall.line <= linesOf(text), "a wall lies in the text",
                           wall.name);
        zoFuzzing::require((wall.width > 0.0) == (wall.height > 0.0) && wall.columns >= 1 && wall.rows >= 1,
                           "a wall has both sizes or none, and tiles", wall.name);
        names << wall.name;
    }
    for (const zoHPCSurvey::Point& point : survey.points)
        names << point.name;
    zoFuzzing::require(std::size_t(names.size()) == survey.walls.size() + survey.points.size(),
                       "a name is one thing");
    for (const zoHPCSurvey::Measurement& measurement : survey.measurements) {
        checkMeasurement(survey, measurement);
        zoFuzzing::require(measurement.line >= 1 &&
                               measurement.line <= linesOf(measurement.file.isEmpty() ? text : list),
                           "a measurement lies in its file", measurement.text);
    }
}

void checkResidual(const zoHPCSurveySolution::Residual& residual, const QString& name)
{
    for (const double number : {residual.measured, residual.fitted, residual.residual, residual.millimetres,
                                residual.standardized, residual.redundancy, residual.mistake})
        zoFuzzing::require(std::isfinite(number), "residuals are numbers", name);
    zoFuzzing::require(residual.standardized >= 0.0 && residual.redundancy >= 0.0 &&
                           residual.redundancy <= 1.0 + 1e-9,
                       "a redundancy is a part", name);
}

void checkSolution(const zoHPCSurvey& survey, const zoHPCSurveySolution& solution)
{
    zoFuzzing::require(solution.planes.size() == survey.walls.size() &&
                           solution.points.size() == survey.points.size() &&
                           solution.residuals.size() == survey.measurements.size(),
                       "walls, points and measurements all have their answer");
    for (const zoHPCPlane& plane : solution.planes)
        zoFuzzing::require(isFinite(plane) && plane.width() > 0.0 && plane.height() > 0.0,
                           "a wall is a plane");
    for (const Point3& point : solution.points)
        zoFuzzing::require(isFinite(point), "a point is somewhere");
    for (std::size_t i = 0; i < solution.residuals.size(); ++i)
        checkResidual(solution.residuals[i], survey.measurements[i].text);
    zoFuzzing::require(std::isfinite(solution.floor) && std::isfinite(solution.fit) &&
                           solution.redundancy >= 0,
                       "fit and floor are numbers");
    const auto isKnown = [&](int measurement) {
        return measurement >= 0 && measurement < int(survey.measurements.size());
    };
    zoFuzzing::require(solution.worst == -1 || isKnown(solution.worst), "what fits worst was measured");
    for (const int rival : solution.rivals)
        zoFuzzing::require(isKnown(rival) && rival != solution.worst, "and so were its rivals");
    for (const QString& open : solution.undetermined)
        zoFuzzing::require(!open.isEmpty(), "what is open is told");
    if (!solution.isDetermined())
        return;
    zoFuzzing::require(solution.deviations.size() == survey.walls.size(),
                       "a room that is determined has its deviations");
    for (const double deviation : solution.deviations)
        zoFuzzing::require(std::isfinite(deviation), "deviations are numbers");
}

// As bytes: numbers of JSON have all their digits.
QByteArray reported(const zoHPCSurvey& survey, const zoHPCSurveySolution& solution)
{
    const zoSurveyReport report(survey, solution, QStringLiteral("room.txt"));
    const QByteArray json = report.json();
    zoFuzzing::require(QJsonDocument::fromJson(json).isObject(), "a report is JSON", QString::fromUtf8(json));
    return json + report.text();
}

void checkPlanes(const zoHPCSurvey& survey, const zoHPCSurveySolution& solution)
{
    zoHPCSurveyPlanes planes(survey, solution);
    const std::vector<zoHPCPlane> list = planes.planes();
    std::size_t count = 0;
    for (const zoHPCSurvey::Wall& wall : survey.walls)
        count += std::size_t(wall.columns * wall.rows);
    zoFuzzing::require(std::size_t(planes.names().size()) == list.size() && list.size() == count,
                       "each tile has a plane and a name");
    for (const zoHPCPlane& plane : list)
        zoFuzzing::require(isFinite(plane), "planes are made of numbers");

    zoHPCConfiguration configuration;
    configuration.hosts().setDefaultConfig();
    configuration.displays().setDefaultConfig();
    if (!planes.putInto(configuration)) {
        zoFuzzing::require(!planes.mistake().isEmpty(), "why planes have no place is told");
        return;
    }
    auto tile = list.begin();
    for (std::size_t i = 0; i < survey.walls.size(); ++i) {
        const zoHPCPlane& whole = solution.planes[i];
        for (int k = 0; k < survey.walls[i].columns * survey.walls[i].rows; ++k, ++tile)
            zoFuzzing::require(dot(tile->right(), whole.right()) > 0.0 && dot(tile->up(), whole.up()) > 0.0,
                               "a tile has a size, and faces as its wall does", survey.walls[i].name);
    }
    const QString text = configuration.text();
    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    zoFuzzing::require(zoHPCDocumentText::parse(text, document, refusal), "planes make a document",
                       refusal.reason);
    zoHPCConfiguration again;
    again.read(document);
    zoFuzzing::requireSame(again.text(), text, "which loads to itself");
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString input = zoFuzzing::textOf(data, size);
    const QString divider = QStringLiteral("\n===\n");
    const int end = input.indexOf(divider);
    const QString text = input.left(end);
    const QString list = end < 0 ? QString() : input.mid(end + divider.size());
    for (const bool isUpY : {false, true})
        checkList(list, isUpY);

    const Reading reading = read(text, list);
    checkMistakes(reading, text, list);
    if (!reading.isGood)
        return 0;
    const zoHPCSurvey& survey = reading.survey;
    checkSurvey(survey, text, list);
    if (survey.walls.size() > s_mostWalls || survey.points.size() > s_mostPoints ||
        survey.instruments.size() > s_mostInstruments || survey.measurements.size() > s_mostMeasurements)
        return 0;

    const zoHPCSurveySolution solution = zoHPCSurveySolver::solve(survey);
    checkSolution(survey, solution);
    const QByteArray report = reported(survey, solution);
    const Reading again = read(text, list);
    zoFuzzing::require(reported(again.survey, zoHPCSurveySolver::solve(again.survey)) == report,
                       "the same text gives the same answer");
    int tiles = 0;
    for (const zoHPCSurvey::Wall& wall : survey.walls)
        tiles += wall.columns * wall.rows;
    constexpr int MostTiles = 100;
    if (solution.isDetermined() && tiles <= MostTiles)
        checkPlanes(survey, solution);
    return 0;
}
