#pragma once

#include "zoCommand.h"

// "diff": what differs between two configurations in the words of a wall.
class zoDiffCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoDiffCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;
};
