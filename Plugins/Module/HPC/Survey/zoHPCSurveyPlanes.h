#pragma once

#include "zoHPCPlane.h"
#include "zoHPCSurvey.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class zoHPCConfiguration;
class zoHPCProjectionItem;
class zoHPCSurveySolution;

// Puts the planes of a measured room into a configuration: a plane for each wall, or for each tile of it, named as a wall
// of the display setup and its tiles are. A projection of the top level with the name of a wall, or all of whose tiles
// were measured, makes way; windows go on showing what has the same name. Corners are rounded to a thousandth of a
// millimetre.
class zoHPCSurveyPlanes final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCSurveyPlanes)

public:
    // Of a room that is determined.
    zoHPCSurveyPlanes(const zoHPCSurvey& survey, const zoHPCSurveySolution& solution);
    ~zoHPCSurveyPlanes();

    QStringList names() const;
    std::vector<zoHPCPlane> planes() const;

    // Why the walls have no such tiles; empty for walls that have.
    const QString& unusable() const { return m_unusable; }

    // False for unusable ones and when a name is taken by something that stays; the configuration is left alone then.
    bool putInto(zoHPCConfiguration& configuration);

    // Why not; and what no window shows any more.
    const QString& mistake() const { return m_mistake; }
    const QStringList& remarks() const { return m_remarks; }

private:
    static QString whyUnusable(const zoHPCSurvey::Wall& wall, const zoHPCPlane& plane);
    void add(const zoHPCSurvey::Wall& wall, const zoHPCPlane& plane);
    QStringList wallNames() const;
    bool makesWay(const QDomElement& projection) const;
    bool takesNames(const QDomElement& projection);
    static QStringList tilesOf(const QDomElement& projection);
    void followNames(const QDomDocument& document, const QDomElement& projection);

    std::vector<std::unique_ptr<zoHPCProjectionItem>> m_items;
    QStringList m_walls;
    QString m_unusable; // why tiles have no room
    QString m_mistake;
    QStringList m_remarks;
};
