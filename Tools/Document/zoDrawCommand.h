#pragma once

#include "zoCommand.h"

class zoHPCLayout;

// "draw": the pictures of the layout preview as files.
class zoDrawCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoDrawCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;

private:
    struct Request;

    // False for wrong usage, which is told.
    bool read(const QCommandLineParser& parser, Request& request) const;
    // False when it cannot be written; the log tells the reason.
    static bool draw(const zoHPCLayout& layout, const QString& output, const Request& request);
};
