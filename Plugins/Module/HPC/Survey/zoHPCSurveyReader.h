#pragma once

#include "zoHPCSurvey.h"
#include "zoHPCSurveyLine.h"

#include <QCoreApplication>
#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

// Reads the text form of a measured room: a line for each measurement.
//
//     unit m                                   of what follows and names none; mm at first
//     tolerance 2 mm | tolerance angle 0.5     one standard deviation of what follows and names none
//     wall Front [size 3600 x 2000] [tiles 3x2] [gap 12 x 12]
//     front Front                              which wall is straight ahead; the first one unless told
//     viewer [distance 2500] [height 1650] [aside 0]
//     distance Front.ll Left.lr 3200
//     floor Front.bottom 800                   height above the floor
//     angle Front Left 90                      between the pictures
//     join Front.left Left.right               edges or places that coincide
//     upright Front Left, level Front, flat Floor
//     point P [east north height]              a place of its own, with or without coordinates
//     points list.csv [unit m] [up y]          a point list
//     mark 101 Front.ll                        which corner a point of a list is
//
// "tile" is another word for "wall". Each may end with its tolerance, "± 3". Places are a wall's corners ll, lr, ul, ur,
// its center, the middles of its edges left, right, top, bottom, a point, or "viewer". Names are those of any line,
// before or after.
class zoHPCSurveyReader final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCSurveyReader)

public:
    struct Mistake
    {
        QString file; // empty for the text itself
        int line;     // from 1
        QString text;
    };

    // Finds the text of a point list, named as the line names it; false, with the reason, when there is none.
    using Fetch = std::function<bool(const QString& fileName, QString& text, QString& reason)>;

    static constexpr int MaximumMistakes = 20;
    // Of the text and all point lists.
    static constexpr int MaximumCharacters = 16 * 1024 * 1024;

    explicit zoHPCSurveyReader(Fetch fetch);

    // False when there are mistakes; what could be read is in the survey nevertheless.
    bool read(const QString& text);

    const zoHPCSurvey& survey() const { return m_survey; }
    // In the order of the lines, MaximumMistakes of them at most.
    const std::vector<Mistake>& mistakes() const { return m_mistakes; }

    // The words that may begin a line.
    static QStringList keywords();

private:
    using Kind = zoHPCSurvey::Kind;
    using Place = zoHPCSurvey::Place;
    struct Verb;
    // A row of a point list.
    struct Coordinates
    {
        QString name;
        Point3 place;
        int instrument;
        double tolerance;
        QString file;
        int line;
    };
    // What holds from a line on.
    struct Defaults
    {
        double unit = 1.0;      // to millimetres
        double tolerance = 2.0; // mm
        double angle = 0.2;     // degrees
    };

    static const std::vector<Verb>& verbs();
    const Verb* findVerb(zoHPCSurveyLine& line) const;
    void addMistake(int line, const QString& text, const QString& file = QString());

    // Names first, so that lines come in any order.
    void readNames(const QStringList& lines);
    void readLines(const QStringList& lines);
    void addWall(zoHPCSurveyLine& line);
    void addNamedPoint(zoHPCSurveyLine& line);
    void addMark(zoHPCSurveyLine& line);
    void addPointList(zoHPCSurveyLine& line);
    void addRow(const Coordinates& row);
    void addCoordinates();

    void skip(zoHPCSurveyLine& line);
    void readUnit(zoHPCSurveyLine& line);
    void readTolerance(zoHPCSurveyLine& line);
    void readWall(zoHPCSurveyLine& line);
    void readFront(zoHPCSurveyLine& line);
    void readViewer(zoHPCSurveyLine& line);
    void readDistance(zoHPCSurveyLine& line);
    void readFloor(zoHPCSurveyLine& line);
    void readAngle(zoHPCSurveyLine& line);
    void readJoin(zoHPCSurveyLine& line);
    void readUpright(zoHPCSurveyLine& line);
    void readLevel(zoHPCSurveyLine& line);
    void readFlat(zoHPCSurveyLine& line);
    void readWalls(zoHPCSurveyLine& line, Kind kind, const char* verb);
    void readMark(zoHPCSurveyLine& line);

    void findEqualNames();

    int takeWall(zoHPCSurveyLine& line);
    Place takePlace(zoHPCSurveyLine& line, QString* name = nullptr);
    bool findPlace(const QString& name, Place& place, bool mayAddPoint);
    int addPoint(const QString& name);
    QStringList knownNames() const;
    zoHPCSurvey::Measurement& add(Kind kind, const Place& from, double value, double tolerance,
                                  const QString& text);
    void addViewerPart(Kind kind, double value, double tolerance, const char* text);

    Fetch m_fetch;
    zoHPCSurvey m_survey;
    std::vector<Mistake> m_mistakes;
    Defaults m_defaults;
    int m_line = 0;
    int m_characters = 0;
    bool m_hasViewerLine = false;
    QHash<QString, int> m_walls;
    QHash<QString, int> m_points;
    QHash<QString, QString> m_marks; // place, by the name of the list
    QHash<QString, int> m_listed;    // how often a name is in a list, until it became a point
    std::vector<Coordinates> m_coordinates;
};
