#include "zoProjectionComparison.h"

#include "zoAttributeComparison.h"
#include "zoAttributeValue.h"
#include "zoComparedDocument.h"
#include "zoDifferences.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCProjectionType.h"

#include <zoClusterTags.h>

#include <QDomDocument>
#include <QHash>
#include <QJsonArray>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace
{
using P = zoHPCProjectionItem;

constexpr int s_corners[] = {P::X1, P::Y1, P::Z1, P::X2, P::Y2, P::Z2, P::X3, P::Y3, P::Z3};

QString attributeName(int column)
{
    return P::columns(QString()).at(column);
}

QString attribute(const QDomElement& projection, int column)
{
    return projection.attribute(attributeName(column));
}

zoHPCProjectionType::Kind kindOf(const QDomElement& projection)
{
    return zoHPCProjectionType::of(attribute(projection, P::Type)).kind;
}

bool isPlane(const QDomElement& projection)
{
    return kindOf(projection) == zoHPCProjectionType::Kind::Plane;
}

QString labelOf(const QDomElement& projection)
{
    const QString type = attribute(projection, P::Type);
    const QString word = kindOf(projection) == zoHPCProjectionType::Kind::PowerWall
                             ? zoHPCProjectionType::word(zoHPCProjectionType::Kind::Wall)
                             : type;
    return (word.isEmpty() ? QStringLiteral("projection") : word) + QLatin1Char(' ') +
           zoDifferences::quoted(attribute(projection, P::Name));
}

QString cornersOf(const QDomElement& plane)
{
    QStringList points;
    for (std::size_t i = 0; i < std::size(s_corners); i += 3)
        points << QStringLiteral("(%1, %2, %3)")
                      .arg(attribute(plane, s_corners[i]), attribute(plane, s_corners[i + 1]),
                           attribute(plane, s_corners[i + 2]));
    return points.join(QLatin1Char(' '));
}

// All that it is but the name: what is the same got another name.
QString contentOf(const QDomElement& projection)
{
    const QDomElement empty = QDomDocument().createElement(projection.tagName());
    const QStringList names = zoDifferences::attributeNames(projection, projection);
    QString text;
    for (const QString& name : names) {
        // One that is missing and its default are the same.
        if (name != attributeName(P::Name) && !zoAttributeValue::isSame(projection, empty, name))
            text +=
                name + QLatin1Char('\n') + zoAttributeValue::meaning(projection, name) + QLatin1Char('\n');
    }
    return text;
}
} // namespace

zoProjectionComparison::Projections zoProjectionComparison::projectionsOf(const zoComparedDocument& document)
{
    Projections result;
    const QStringList paths = document.paths(zoClusterTags::Projection);
    QHash<QString, int> counts;
    for (QDomElement element = document.root().firstChildElement(zoClusterTags::Projection);
         !element.isNull(); element = element.nextSiblingElement(zoClusterTags::Projection)) {
        const QString name = attribute(element, P::Name);
        result.push_back({name + QLatin1Char('\n') + QString::number(++counts[name]),
                          paths.value(int(result.size())), element});
    }
    return result;
}

void zoProjectionComparison::compare(const zoComparedDocument& before, const zoComparedDocument& after)
{
    const Projections from = projectionsOf(before);
    const Projections to = projectionsOf(after);
    QStringList keysFrom;
    QStringList keysTo;
    QHash<QString, QDomElement> former;
    for (const Projection& projection : from) {
        keysFrom << projection.key;
        former.insert(projection.key, projection.element);
    }
    for (const Projection& projection : to)
        keysTo << projection.key;
    const QStringList common = zoDifferences::common(keysFrom, keysTo);
    const QSet<QString> known(keysTo.cbegin(), keysTo.cend());
    QHash<QString, std::vector<std::size_t>> gone; // by what they are, the last first
    for (std::size_t i = from.size(); i-- > 0;) {
        if (!known.contains(from[i].key))
            gone[contentOf(from[i].element)].push_back(i);
    }

    for (const Projection& projection : to) {
        if (former.contains(projection.key)) {
            compareProjection(former[projection.key], projection);
            continue;
        }
        std::vector<std::size_t>& same = gone[contentOf(projection.element)];
        if (same.empty()) {
            m_differences.add(QStringLiteral("projection-added"),
                              tr("%1: added").arg(labelOf(projection.element)),
                              {{projection.path, QJsonValue(), zoClusterTags::Cluster}});
            continue;
        }
        m_differences.add(QStringLiteral("projection-renamed"),
                          tr("%1: renamed to %2")
                              .arg(labelOf(from[same.back()].element),
                                   zoDifferences::quoted(attribute(projection.element, P::Name))),
                          {zoDifferences::change(projection.path, attributeName(P::Name),
                                                 from[same.back()].element, projection.element)});
        same.pop_back();
    }
    addRemoved(from, gone);
    if (common != zoDifferences::common(keysTo, keysFrom))
        m_differences.add(
            QStringLiteral("projections-reordered"), tr("the projections are in another order"),
            {{zoClusterTags::Cluster, QJsonArray::fromStringList(before.paths(zoClusterTags::Projection)),
              QJsonArray::fromStringList(after.paths(zoClusterTags::Projection))}});
}

void zoProjectionComparison::addRemoved(const Projections& before,
                                        const QHash<QString, std::vector<std::size_t>>& gone)
{
    std::vector<std::size_t> removed;
    for (const std::vector<std::size_t>& projections : gone)
        removed.insert(removed.end(), projections.begin(), projections.end());
    std::sort(removed.begin(), removed.end());
    for (const std::size_t index : removed)
        m_differences.add(QStringLiteral("projection-removed"),
                          tr("%1: removed").arg(labelOf(before[index].element)),
                          {{before[index].path, zoClusterTags::Cluster, QJsonValue()}});
}

void zoProjectionComparison::compareProjection(const QDomElement& before, const Projection& projection)
{
    const QDomElement& after = projection.element;
    const QString label = labelOf(after);
    QStringList skipped{attributeName(P::Name)};
    if (isPlane(before) && isPlane(after) && comparePlanes(label, before, projection)) {
        for (const int corner : s_corners)
            skipped << attributeName(corner);
    }
    zoAttributeComparison::compare(label, projection.path, before, after, skipped, m_differences);
}

bool zoProjectionComparison::comparePlanes(const QString& label, const QDomElement& before,
                                           const Projection& projection)
{
    const QDomElement& after = projection.element;
    std::array<double, std::size(s_corners)> shift{};
    for (std::size_t i = 0; i < shift.size(); ++i) {
        // "nan", which is taken for a number, does not even equal itself.
        if (!zoAttributeValue::isSame(before, after, attributeName(s_corners[i])))
            shift[i] = attribute(after, s_corners[i]).toDouble() - attribute(before, s_corners[i]).toDouble();
    }
    if (std::all_of(shift.begin(), shift.end(), [](double distance) { return distance == 0.0; }))
        return false;
    zoDifferences::Changes changes;
    for (const int corner : s_corners) {
        if (!zoAttributeValue::isSame(before, after, attributeName(corner)))
            changes.push_back(zoDifferences::change(projection.path, attributeName(corner), before, after));
    }
    for (std::size_t i = 3; i < shift.size(); ++i) {
        if (std::abs(shift[i] - shift[i % 3]) > 1e-6) {
            m_differences.add(
                QStringLiteral("tile-reshaped"),
                tr("%1: corners changed from %2 to %3 mm").arg(label, cornersOf(before), cornersOf(after)),
                changes);
            return true;
        }
    }
    m_differences.add(QStringLiteral("tile-moved"),
                      tr("%1: moved by (%2, %3, %4) mm")
                          .arg(label, QString::number(shift[0], 'g', 9), QString::number(shift[1], 'g', 9),
                               QString::number(shift[2], 'g', 9)),
                      changes);
    return true;
}
