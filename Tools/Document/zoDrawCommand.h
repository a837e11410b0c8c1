#pragma once

#include "zoCommand.h"

// "draw": the pictures of the layout preview as files.
class zoDrawCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoDrawCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;
};
