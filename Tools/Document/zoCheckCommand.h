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
    int execute(const QCommandLineParser& parser) override;

private:
    // Prints the section of the manual about a problem; returns the exit code.
    int explain(const QString& code) const;
};
