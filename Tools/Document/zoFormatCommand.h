#pragma once

#include "zoCommand.h"

// "format": the same configuration in the canonical text, as the cluster window saves it.
class zoFormatCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoFormatCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;
};
