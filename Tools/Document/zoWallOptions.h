#pragma once

#include "zoHPCWallPlan.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QStringList>

#include <cstddef>
#include <vector>

// The options of "zohpc new" that say what the wall is, and their way into a plan.
class zoWallOptions final
{
    Q_DECLARE_TR_FUNCTIONS(zoWallOptions)

public:
    static void add(QCommandLineParser& parser);
    static QStringList stereoWords();

    explicit zoWallOptions(const QCommandLineParser& parser) : m_parser(parser) {}

    // Everything but the hosts; false with a reason when an option cannot be read, or is one of another kind of wall.
    bool read();
    const zoHPCWallPlan& plan() const { return m_plan; }
    const QString& reason() const { return m_reason; }

    // The option that a person would change, "--size", of those that he gave where several would do.
    QString optionOf(zoHPCWallPlan::Field field) const;

private:
    bool readKind();
    bool refuseOthers();
    bool readGrid();
    bool readPixels();
    bool readOverlap();
    bool readBezel();
    bool checkPixelPitch();
    bool readPixelPitch();
    bool readSize();
    bool readCurve();
    bool readCave();
    bool readCaveWalls();
    bool readPlanes();
    bool readPlane(const QString& text, zoHPCWallPlan::Plane& plane) const;
    bool readViewer();
    bool readStereo();
    bool readWindows();

    bool isSet(const char* option) const { return m_parser.isSet(QLatin1String(option)); }
    QString value(const char* option) const { return m_parser.value(QLatin1String(option)); }
    bool refuse(const QString& reason);
    bool refuseValue(const char* option, const QString& expected);

    const QCommandLineParser& m_parser;
    zoHPCWallPlan m_plan;
    QString m_reason;
};
