#pragma once

#include "zoCommand.h"
#include "zoHPCHostsOutline.h"

// What the hosts commands have in common: they read hosts text and the bracket form from arguments, files or
// standard input, and say where it reads otherwise than it looks.
class zoHostsCommand : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoHostsCommand)

protected:
    void addArguments(QCommandLineParser& parser) const override;
    QStringList repeatableOptions() const override { return {QStringLiteral("f"), QStringLiteral("file")}; }
    int execute(const QCommandLineParser& parser) final;

    // Writes the result; false when that fails.
    virtual bool writeResult(const zoHPCHostsOutline& tree, const QCommandLineParser& parser) = 0;
};
