#include "zoSurveyReport.h"

#include "zoHPCSurvey.h"
#include "zoHPCSurveySolver.h"
#include "zoJson.h"

#include <algorithm>
#include <cmath>

namespace
{
// Also makes one zero of both.
QString number(double value, int decimals)
{
    const double factor = std::pow(10.0, decimals);
    return QString::number(std::round(value * factor) / factor + 0.0, 'f', decimals);
}

QString corner(const Point3& point)
{
    return QStringLiteral("%1 %2 %3").arg(number(point.x, 1), number(point.y, 1), number(point.z, 1));
}

QJsonArray json(const Point3& point)
{
    return {point.x, point.y, point.z};
}

// Rows of cells as lines; the columns named are flush left.
QStringList table(const std::vector<QStringList>& rows, const QList<int>& leftColumns)
{
    std::vector<int> widths;
    for (const QStringList& row : rows) {
        widths.resize(std::max(widths.size(), std::size_t(row.size())), 0);
        for (int i = 0; i < row.size(); ++i)
            widths[std::size_t(i)] = std::max<int>(widths[std::size_t(i)], row.at(i).size());
    }
    QStringList lines;
    for (const QStringList& row : rows) {
        QString line;
        for (int i = 0; i < row.size(); ++i) {
            line += QLatin1String("  ");
            const int width = widths[std::size_t(i)];
            line +=
                leftColumns.contains(i) ? row.at(i).leftJustified(width) : row.at(i).rightJustified(width);
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        lines << line;
    }
    return lines;
}
} // namespace

QStringList zoSurveyReport::planeLines() const
{
    std::vector<QStringList> rows{{tr("name"), tr("lower left"), tr("lower right"), tr("upper right"),
                                   tr("width"), tr("height"), QString(QChar(0xb1))}};
    for (std::size_t i = 0; i < m_survey.walls.size(); ++i) {
        const zoHPCPlane& plane = m_solution.planes[i];
        const double deviation = i < m_solution.deviations.size() ? m_solution.deviations[i] : 0.0;
        rows.push_back({m_survey.walls[i].name, corner(plane.lowerLeft), corner(plane.lowerRight),
                        corner(plane.upperRight), number(plane.width(), 1), number(plane.height(), 1),
                        m_solution.isDetermined() ? number(deviation, 1) : QStringLiteral("-")});
    }
    return table(rows, {0});
}

QStringList zoSurveyReport::measurementLines() const
{
    std::vector<QStringList> rows{
        {tr("line"), tr("measurement"), tr("measured"), tr("fitted"), tr("residual"), tr("checked")}};
    for (std::size_t i = 0; i < m_survey.measurements.size(); ++i) {
        const zoHPCSurvey::Measurement& measurement = m_survey.measurements[i];
        const zoHPCSurveySolution::Residual& residual = m_solution.residuals[i];
        const bool isAngle = zoHPCSurvey::isAngle(measurement.kind);
        const int decimals = isAngle ? 2 : 1;
        const QString unit = isAngle ? QString(QChar(0xb0)) : QString();
        const bool isOne = zoHPCSurvey::equationCount(measurement.kind) == 1;
        rows.push_back(
            {measurement.file.isEmpty() ? QString::number(measurement.line)
                                        : QStringLiteral("%1:%2").arg(measurement.file).arg(measurement.line),
             measurement.text, isOne ? number(residual.measured, decimals) + unit : QStringLiteral("-"),
             isOne ? number(residual.fitted, decimals) + unit : QStringLiteral("-"),
             number(residual.residual, decimals) + unit,
             QStringLiteral("%1 %").arg(number(100.0 * residual.redundancy, 0))});
    }
    return table(rows, {1});
}

QString zoSurveyReport::placeOf(int index) const
{
    const zoHPCSurvey::Measurement& measurement = m_survey.measurements[std::size_t(index)];
    return measurement.file.isEmpty()
               ? tr("line %1, %2").arg(QString::number(measurement.line), measurement.text)
               : tr("line %1 of %2, %3")
                     .arg(QString::number(measurement.line), measurement.file, measurement.text);
}

QStringList zoSurveyReport::verdict() const
{
    QStringList lines;
    if (!m_survey.unusedPoints.isEmpty()) {
        constexpr int Most = 5;
        const QStringList some = m_survey.unusedPoints.mid(0, Most);
        lines << tr("Points that no line names, left out: %1%2")
                     .arg(some.join(QStringLiteral(", ")),
                          m_survey.unusedPoints.size() > Most ? QStringLiteral(", ...") : QString());
    }
    if (!m_solution.isDetermined())
        return lines;
    for (std::size_t i = 0; i < m_solution.deviations.size(); ++i) {
        if (m_solution.deviations[i] > zoHPCSurveySolution::Weak)
            lines << tr("%1 is held weakly: measure across it, from a place in front of it")
                         .arg(m_survey.walls[i].name);
    }
    if (m_solution.redundancy == 0) {
        lines << tr("Nothing was measured twice: a mistake in any measurement would not be seen");
        return lines;
    }
    lines << tr("Residuals are %1 times what the tolerances say").arg(number(m_solution.fit, 2));
    if (m_solution.worst < 0) {
        lines << tr("All measurements agree");
        return lines;
    }
    const zoHPCSurvey::Measurement& worst = m_survey.measurements[std::size_t(m_solution.worst)];
    const zoHPCSurveySolution::Residual& residual = m_solution.residuals[std::size_t(m_solution.worst)];
    const bool isAngle = zoHPCSurvey::isAngle(worst.kind);
    lines
        << tr("Fits worst: %1, off by %2 mm").arg(placeOf(m_solution.worst), number(residual.millimetres, 1));
    if (m_solution.hasMistake()) {
        const QString size =
            number(std::abs(residual.mistake), isAngle ? 2 : 1) + (isAngle ? tr(" degrees") : tr(" mm"));
        lines << (residual.mistake > 0.0 ? tr("  a mistake, most likely: about %1 too large").arg(size)
                                         : tr("  a mistake, most likely: about %1 too small").arg(size));
    }
    constexpr std::size_t MostRivals = 5;
    const std::size_t rivals = m_solution.hasMistake() ? std::min(m_solution.rivals.size(), MostRivals) : 0;
    for (std::size_t i = 0; i < rivals; ++i)
        lines << tr("  or %1, which would look the same").arg(placeOf(m_solution.rivals[i]));
    return lines;
}

QByteArray zoSurveyReport::text() const
{
    QStringList lines;
    lines << (m_survey.walls.size() == 1 ? tr("%1: %2 plane, %3 measurements, %4 numbers more than needed")
                                         : tr("%1: %2 planes, %3 measurements, %4 numbers more than needed"))
                 .arg(m_file, QString::number(m_survey.walls.size()),
                      QString::number(m_survey.measurements.size()), QString::number(m_solution.redundancy));
    lines << tr("Planes in mm from the viewer, x to the right, y up, z backwards:") << planeLines();
    lines << tr("Measurements in mm or degrees; the residual is what was measured too much:")
          << measurementLines();
    lines << verdict();
    return lines.join(QLatin1Char('\n')).toUtf8() + '\n';
}

QByteArray zoSurveyReport::json() const
{
    QJsonArray planes;
    for (std::size_t i = 0; i < m_survey.walls.size(); ++i) {
        const zoHPCPlane& plane = m_solution.planes[i];
        planes << QJsonObject{
            {QStringLiteral("name"), m_survey.walls[i].name},
            {QStringLiteral("lower_left"), ::json(plane.lowerLeft)},
            {QStringLiteral("lower_right"), ::json(plane.lowerRight)},
            {QStringLiteral("upper_right"), ::json(plane.upperRight)},
            {QStringLiteral("width"), plane.width()},
            {QStringLiteral("height"), plane.height()},
            {QStringLiteral("deviation"), i < m_solution.deviations.size() ? m_solution.deviations[i] : 0.0}};
    }
    QJsonArray measurements;
    for (std::size_t i = 0; i < m_survey.measurements.size(); ++i) {
        const zoHPCSurvey::Measurement& measurement = m_survey.measurements[i];
        const zoHPCSurveySolution::Residual& residual = m_solution.residuals[i];
        measurements << QJsonObject{
            {QStringLiteral("file"), measurement.file.isEmpty() ? m_file : measurement.file},
            {QStringLiteral("line"), measurement.line},
            {QStringLiteral("name"), measurement.text},
            {QStringLiteral("unit"),
             zoHPCSurvey::isAngle(measurement.kind) ? QStringLiteral("degree") : QStringLiteral("mm")},
            {QStringLiteral("measured"), residual.measured},
            {QStringLiteral("fitted"), residual.fitted},
            {QStringLiteral("residual"), residual.residual},
            {QStringLiteral("residual_mm"), residual.millimetres},
            {QStringLiteral("standardized"), residual.standardized},
            {QStringLiteral("redundancy"), residual.redundancy}};
    }
    QJsonObject object{{QStringLiteral("file"), m_file},
                       {QStringLiteral("planes"), planes},
                       {QStringLiteral("measurements"), measurements},
                       {QStringLiteral("undetermined"), QJsonArray::fromStringList(m_solution.undetermined)},
                       {QStringLiteral("redundancy"), m_solution.redundancy},
                       {QStringLiteral("fit"), m_solution.fit},
                       {QStringLiteral("floor"), m_solution.floor},
                       {QStringLiteral("unused_points"), QJsonArray::fromStringList(m_survey.unusedPoints)}};
    if (m_solution.worst >= 0) {
        const zoHPCSurveySolution::Residual& residual = m_solution.residuals[std::size_t(m_solution.worst)];
        object.insert(
            QStringLiteral("worst"),
            QJsonObject{{QStringLiteral("line"), m_survey.measurements[std::size_t(m_solution.worst)].line},
                        {QStringLiteral("name"), m_survey.measurements[std::size_t(m_solution.worst)].text},
                        {QStringLiteral("is_mistake"), m_solution.hasMistake()},
                        {QStringLiteral("mistake"), residual.mistake}});
    }
    return zoJson::text(object);
}
