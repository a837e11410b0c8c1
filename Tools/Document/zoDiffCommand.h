#pragma once

#include "zoCommand.h"

#include <memory>

class zoComparedDocument;

// "diff": what differs between two configurations in the words of a wall.
class zoDiffCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoDiffCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;

private:
    // Null for what cannot be read, which is told.
    static std::unique_ptr<zoComparedDocument> read(const QString& fileName);
};
