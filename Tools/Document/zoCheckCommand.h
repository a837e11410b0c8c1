#pragma once

#include "zoCommand.h"

// "check": lists the problems that keep windows of configurations dark or wrong.
class zoCheckCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoCheckCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    QStringList optionsWithoutValue() const override;
    int execute(const QCommandLineParser& parser) override;

private:
    // Prints the code, severity and title of each problem; returns the exit code.
    static int listCodes();
    // Prints the section of the manual about a problem; returns the exit code.
    int explain(const QString& code) const;
};
