#pragma once

#include "zoCommand.h"

// "export": the same wall for other engines that render distributed.
class zoExportCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoExportCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;
};
