#pragma once

#include "zoCommand.h"

class zoItemPaths;

// "get": values of a configuration by their paths.
class zoGetCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoGetCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;
};
