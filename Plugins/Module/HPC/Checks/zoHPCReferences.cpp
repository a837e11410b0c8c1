#include "zoHPCReferences.h"

#include "zoHPCDisplaySetup.h"
#include "zoHPCProjectionChecks.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCSuggestion.h"
#include "zoHPCTextCheck.h"
#include "zoHPCTextItems.h"
#include "zoHPCViewportItem.h"

#include <zoClusterTags.h>

#include <QRegularExpression>

namespace
{
using P = zoHPCProjectionItem;

// Names that are compared for suggestions, altogether: a text of wrong names only shall not take a time in proportion to
// its square.
constexpr int s_mostComparisons = 200000;

QStringList tileNames(const zoHPCProjectionItem& wall)
{
    QStringList names;
    for (int i = 0; i < wall.childCount(); ++i)
        names << wall.child(i)->data(P::Name, Qt::EditRole).toString();
    return names;
}
} // namespace

zoHPCReferences::zoHPCReferences(const zoHPCDisplaySetup& displays)
{
    const QList<zoHPCProjectionItem*> projections = displays.getProjectionItems();
    for (const zoHPCProjectionItem* projection : projections) {
        const QString name = projection->getString(P::Name);
        if (!projection->isTopLevel() || name.isEmpty())
            continue;
        m_walls.insert(name, projection);
        m_wallNames << name;
    }
}

QHash<zoHPCViewportItem*, QString> zoHPCReferences::check(zoHPCTextCheck& check, const zoHPCTextItems& items,
                                                          const zoHPCDisplaySetup& displays)
{
    QHash<zoHPCViewportItem*, QString> guesses;
    const QList<zoHPCViewportItem*> viewports = displays.getViewportItems();
    for (zoHPCViewportItem* viewport : viewports) {
        const int part = items.part(viewport);
        if (part < 0 || !viewport->getString(zoHPCViewportItem::Projection).isEmpty())
            continue;
        const zoHPCTextParts::Attribute* const reference =
            check.parts().parts().at(part).attribute(zoClusterTags::Projection);
        if (!reference || reference->value.isEmpty() || !reference->isWhole)
            continue;
        const zoHPCProjectionItem* const wall = wallOf(reference->value);
        const int wallPart = wall ? items.part(wall) : -1;
        check.setDoubtful(part);
        // Of a wall that cannot be read nobody knows the tiles.
        if (wallPart >= 0 && check.isDoubtful(wallPart))
            continue;
        const QString name = meant(reference->value, wall);
        check.add(zoHPCProblemKind::UnknownProjection, reference->valueOffset,
                  message(reference->value, name, wall));
        if (!name.isEmpty())
            guesses.insert(viewport, name);
        // Of one without tiles that is told, for the reference follows from it.
        else if (wallPart >= 0 && !zoHPCProjectionChecks::hasNoTiles(*wall))
            check.setDoubtful(wallPart);
    }
    return guesses;
}

const zoHPCProjectionItem* zoHPCReferences::wallOf(const QString& name) const
{
    for (int end = name.size(); end > 0; end = name.lastIndexOf(QLatin1Char(' '), end - 1)) {
        const auto found = m_walls.constFind(name.left(end));
        if (found != m_walls.constEnd())
            return *found;
        if (end == 1)
            break;
    }
    return nullptr;
}

QString zoHPCReferences::meant(const QString& name, const zoHPCProjectionItem* wall)
{
    const auto known = m_meant.constFind(name);
    if (known != m_meant.constEnd())
        return *known;
    static const QRegularExpression s_tile(QString::fromLatin1(" row:\\d+ col:\\d+$"));
    const QRegularExpressionMatch tile = s_tile.match(name);
    QStringList candidates;
    QString rest;
    QString result;
    // A tile beyond the wall: any other tile would be as near.
    if (wall && tile.hasMatch())
        return m_meant[name] = QString();
    if (wall) {
        candidates = tileNames(*wall);
    } else {
        rest = tile.hasMatch() ? tile.captured() : QString();
        candidates = m_wallNames;
    }
    m_comparisons += candidates.size();
    if (m_comparisons <= s_mostComparisons)
        result = zoHPCSuggestion::closest(name.left(name.size() - rest.size()), candidates);
    if (!result.isEmpty() && !rest.isEmpty() && !tileNames(*m_walls.value(result)).contains(result + rest))
        result.clear();
    else if (!result.isEmpty())
        result += rest;
    if (result.isEmpty() && !wall && rest.isEmpty()) {
        // "Wal Left": a wall and a tile of it.
        candidates.clear();
        for (const QString& each : qAsConst(m_wallNames)) {
            const zoHPCProjectionItem* const one = m_walls.value(each);
            m_comparisons += one->childCount();
            if (m_comparisons > s_mostComparisons)
                break;
            candidates += tileNames(*one);
        }
        result = zoHPCSuggestion::closest(name, candidates);
    }
    return m_meant[name] = result;
}

QString zoHPCReferences::message(const QString& name, const QString& meant, const zoHPCProjectionItem* wall)
{
    if (!meant.isEmpty())
        return tr("There is no projection \"%1\": did you mean \"%2\"?").arg(name, meant);
    if (wall && wall->childCount() > 0 && wall->kind() != zoHPCProjectionType::Kind::Cave)
        return tr("There is no projection \"%1\": \"%2\" has tiles up to row:%3 col:%4.")
            .arg(name, wall->getString(P::Name), QString::number(wall->getInt(P::Rows)),
                 QString::number(wall->getInt(P::Columns)));
    return tr("There is no projection \"%1\".").arg(name);
}
