#pragma once

#include "zoCommand.h"
#include "zoTextFile.h"

class QJsonArray;

// "convert": a legacy configuration in the present format, and what to look at afterwards.
class zoConvertCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoConvertCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;

private:
    // Tells what of the file is no parameter, or adds it to the list; whether there is anything.
    static bool printLosses(const QString& file, const zoTextFile::Content& content, QJsonArray* list);
};
