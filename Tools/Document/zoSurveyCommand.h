#pragma once

#include "zoCommand.h"

class zoClusterSetup;
class zoHPCConfiguration;
class zoHPCSurveyPlanes;
class zoHPCSurveySolution;
class zoSurveyReport;
struct zoHPCSurvey;

// "survey": planes from what was measured in a room, with the residual of each measurement.
class zoSurveyCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoSurveyCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;

private:
    // Each tells what is wrong and returns false.
    bool checkUsage(const QCommandLineParser& parser, double& limit) const;
    static bool read(const QString& fileName, zoHPCSurvey& survey);
    static bool write(const QCommandLineParser& parser, const zoHPCSurvey& survey,
                      const zoHPCSurveySolution& solution);
    // Whether the file of --into may become canonical text; tells what that loses.
    static bool keepsAll(const QCommandLineParser& parser, const zoClusterSetup& setup);
    static bool sharesName(const zoHPCConfiguration& configuration, const zoHPCSurvey& survey,
                           const zoHPCSurveyPlanes& planes);
};
