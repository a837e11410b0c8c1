#pragma once

#include "zoCommand.h"

class zoClusterSetup;

// "format": the same configuration in the canonical text, as the cluster window saves it.
class zoFormatCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoFormatCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;

private:
    struct Request
    {
        bool isInPlace = false;
        bool isCheck = false;
        bool isForced = false;
        QString output = QStringLiteral("-");
    };

    // The exit code for one file.
    static int format(const QString& file, const Request& request);
    // Tells what of the setup's file is not in the text; whether there is anything.
    static bool printLosses(const QString& file, const zoClusterSetup& setup);
};
