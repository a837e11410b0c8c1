#pragma once

#include "zoCommand.h"

#include <QSize>

class zoHPCRoomPicture;
class zoHPCScreensPicture;
class zoPictureSheet;

// "draw": the pictures of the layout preview as files.
class zoDrawCommand final : public zoCommand
{
    Q_DECLARE_TR_FUNCTIONS(zoDrawCommand)

protected:
    QString description() const override;
    QStringList examples() const override;
    void addArguments(QCommandLineParser& parser) const override;
    QStringList repeatableOptions() const override { return {QStringLiteral("o"), QStringLiteral("output")}; }
    int execute(const QCommandLineParser& parser) override;

private:
    struct Request;
    struct Drawing;

    // False for wrong usage, which is told.
    bool read(const QCommandLineParser& parser, Request& request) const;
    // False when it cannot be written; the log tells the reason.
    static bool draw(Drawing& drawing, const QString& subject, const QString& output, const Request& request);
    static QSize fit(zoPictureSheet& sheet, const QSize& asked);
    static QString pictureOf(const QString& output, const Request& request);
    static QStringList hostsOfTiles(const zoHPCRoomPicture& room);
    static QString hostsInOrder(const zoHPCScreensPicture& screens);
};
