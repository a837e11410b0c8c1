#pragma once

#include "zoCommand.h"

class zoClusterSetup;
class zoHPCDisplayItem;
class zoHPCProjectionItem;

// "new": a whole configuration of a wall or a cave from one line.
class zoNewCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoNewCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    int execute(const QCommandLineParser& parser) override;

private:
    struct Request;

    // Each step reads its options; when they are wrong, it tells the mistake and returns false.
    bool refuseOthers(const QCommandLineParser& parser, bool isWall) const;
    bool readPixels(const QCommandLineParser& parser, Request& request) const;
    bool readBezel(const QCommandLineParser& parser, Request& request) const;
    bool readStereo(const QCommandLineParser& parser, Request& request) const;
    bool makeWall(const QCommandLineParser& parser, Request& request) const;
    bool makePowerWall(const QCommandLineParser& parser, const Request& request,
                       zoHPCProjectionItem& wall) const;
    bool makeCave(const QCommandLineParser& parser, Request& request) const;
    bool readHosts(const QCommandLineParser& parser, zoClusterSetup& setup, Request& request) const;
    // A window for each tile and eye, spread over the hosts.
    bool addWindows(const QCommandLineParser& parser, const Request& request,
                    zoHPCDisplayItem& display) const;
    static bool write(const QCommandLineParser& parser, zoClusterSetup& setup,
                      const zoHPCProjectionItem& projection, const zoHPCDisplayItem& display);

    static QString title(const QCommandLineParser& parser, const QString& fallback);
    // Both tell the mistake and return false.
    bool refuse(const QString& reason) const;
    bool refuseValue(const QCommandLineParser& parser, const QString& option, const QString& expected) const;
};
