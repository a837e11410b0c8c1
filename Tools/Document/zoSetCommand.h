#pragma once

#include "zoCommand.h"
#include "zoHPCDocumentLosses.h"

class zoClusterSetup;

// "set": changes values of a configuration by their paths, all of them or none.
class zoSetCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoSetCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;
};
