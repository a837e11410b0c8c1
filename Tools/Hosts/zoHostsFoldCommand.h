#pragma once

#include "zoHostsCommand.h"

// "hosts fold": names in as few words as possible, as hosts text or in the bracket form.
class zoHostsFoldCommand final : public zoHostsCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoHostsFoldCommand)

public:
    // A line for each host, range or brace. Options of hosts are not written.
    static QByteArray hostsText(const zoHPCHostsOutline& tree, bool keepOrder);

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    bool writeResult(const zoHPCHostsOutline& tree, const QCommandLineParser& parser) override;
};
