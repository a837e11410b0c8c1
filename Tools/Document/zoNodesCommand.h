#pragma once

#include "zoCommand.h"

class zoNodeList;

// "nodes": the names of the nodes of a configuration, for the tools that run commands on them.
class zoNodesCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoNodesCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;

private:
    // False for a word that is no form.
    static bool write(const zoNodeList& list, const QString& form, QByteArray& text);
};
