#pragma once

#include "zoCommand.h"

#include <QStringList>

class QDomDocument;
class zoClusterSetup;

// "merge": two configurations that came from one as one with the changes of both, for git and for people.
class zoMergeCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoMergeCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;

private:
    struct Side;

    static bool readBase(const QString& file, QDomDocument& document);
    static bool readSide(const QString& file, Side& side);
    // Tells what of the file would not be in a canonical text; whether there is anything.
    static bool printLosses(const QString& file, const zoClusterSetup& setup);
    // What shows, names or is twice what it was in neither side.
    static QStringList danglingReferences(const QDomDocument& merged, zoClusterSetup& result,
                                          const QStringList& known);
};
