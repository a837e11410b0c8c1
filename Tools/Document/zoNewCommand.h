#pragma once

#include "zoCommand.h"
#include "zoConsole.h"

#include <QString>

// "new": a whole configuration of a wall, a cave or planes from one line.
class zoNewCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoNewCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    QStringList repeatableOptions() const override { return {QStringLiteral("plane")}; }
    int execute(const QCommandLineParser& parser) override;

private:
    static zoConsole::ExitCode readHosts(const QString& argument, QString& hosts);
};
