#pragma once

#include "zoCommand.h"

// "report": a configuration as sheets for those who build the wall, in a PDF file.
class zoReportCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoReportCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;

private:
    struct Request;

    // False for wrong usage, which is told.
    bool read(const QCommandLineParser& parser, Request& request) const;
    static int write(const Request& request);
};
