#pragma once

#include "zoHostsCommand.h"

// "hosts tree": the networks with their hosts, gateways and what is behind them.
class zoHostsTreeCommand final : public zoHostsCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoHostsTreeCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    bool writeResult(const zoHPCHostsOutline& tree, const QCommandLineParser& parser) override;

private:
    static QByteArray text(const zoHPCHostsOutline& tree);
    static QByteArray json(const zoHPCHostsOutline& tree);
};
