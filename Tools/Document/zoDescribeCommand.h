#pragma once

#include "zoCommand.h"

// "describe": what a person has to know about a configuration, in a dozen lines.
class zoDescribeCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoDescribeCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;
};
