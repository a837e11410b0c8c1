#pragma once

#include "zoCommand.h"

// "topology": gateways as ClusterShell has them in its topology.conf, out and in.
class zoTopologyCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoTopologyCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;

private:
    int writeTopology(const QString& file, const QString& admin, const QString& output) const;
    static int readTopology(const QString& file, const QString& output);
};
