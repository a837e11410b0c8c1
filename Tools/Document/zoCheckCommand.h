#pragma once

#include "zoCommand.h"

// "check": lists what of configurations would not light up as meant.
class zoCheckCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoCheckCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;
};
