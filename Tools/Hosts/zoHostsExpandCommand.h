#pragma once

#include "zoHostsCommand.h"

// "hosts expand": one name per line.
class zoHostsExpandCommand final : public zoHostsCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoHostsExpandCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    bool writeResult(const zoHPCHostsOutline& tree, const QCommandLineParser& parser) override;
};
