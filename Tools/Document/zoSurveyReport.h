#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

class zoHPCSurveySolution;
struct zoHPCSurvey;

// What "zohpc survey" prints: planes and residuals as tables, and which measurement fits worst; or the same as JSON.
class zoSurveyReport final
{
    Q_DECLARE_TR_FUNCTIONS(zoSurveyReport)

public:
    // All must outlive the report.
    zoSurveyReport(const zoHPCSurvey& survey, const zoHPCSurveySolution& solution, const QString& file)
        : m_survey(survey), m_solution(solution), m_file(file)
    {
    }

    QByteArray text() const;
    QByteArray json() const;

private:
    QStringList planeLines() const;
    QStringList measurementLines() const;
    QStringList verdict() const;
    QString placeOf(int measurement) const;

    const zoHPCSurvey& m_survey;
    const zoHPCSurveySolution& m_solution;
    QString m_file;
};
