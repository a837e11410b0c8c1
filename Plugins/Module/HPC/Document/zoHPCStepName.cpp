#include "zoHPCStepName.h"

#include "zoHPCTextDelta.h"

#include <zoClusterTags.h>

#include <QSet>
#include <QStringList>
#include <QStringView>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace
{
// In the order in which one of several names a step.
enum Tag { Projection, Display, Network, Window, Node, Viewport, Master, Root, TagCount };

constexpr std::array<QLatin1String, TagCount> Words{
    zoClusterTags::Projection, zoClusterTags::Display,  zoClusterTags::Network, zoClusterTags::Window,
    zoClusterTags::Node,       zoClusterTags::Viewport, zoClusterTags::Master,  zoClusterTags::Cluster};

// What an item of the kind is called by.
QString attributeOf(int tag)
{
    switch (tag) {
    case Projection:
    case Node:
        return zoClusterTags::NameAttribute;
    case Window:
        return zoClusterTags::Node;
    case Network:
        return QLatin1String("description");
    case Viewport:
        return zoClusterTags::Projection;
    default:
        return {};
    }
}

QString valueIn(const QString& line, const QString& attribute)
{
    if (attribute.isEmpty())
        return {};
    QXmlStreamReader xml(line);
    if (!xml.readNextStartElement())
        return {};
    return xml.attributes().value(attribute).toString();
}
} // namespace

struct zoHPCStepName::Kind
{
    QStringList removed; // lines that tell items of this kind
    QStringList inserted;

    int difference() const { return inserted.size() - removed.size(); }
    bool isTouched() const { return !inserted.isEmpty() || !removed.isEmpty(); }
    // The same items stand elsewhere, perhaps at another depth.
    bool hasMoved() const
    {
        const auto sorted = [](const QStringList& lines) {
            QStringList items;
            for (const QString& line : lines)
                items << line.trimmed();
            items.sort();
            return items;
        };
        return isTouched() && sorted(removed) == sorted(inserted);
    }
    // The one that stands on one side alone.
    QString single() const
    {
        const QStringList& more = difference() > 0 ? inserted : removed;
        const QStringList& less = difference() > 0 ? removed : inserted;
        const QSet<QString> others(less.cbegin(), less.cend());
        for (const QString& line : more) {
            if (!others.contains(line))
                return line;
        }
        return more.value(0);
    }
};

namespace
{
template <class Visit>
void forEachItem(const QString& lines, Visit visit)
{
    const QStringList all = lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : all) {
        const int start = line.indexOf(QLatin1Char('<')) + 1;
        for (int tag = 0; tag < TagCount; ++tag) {
            const int end = start + Words[std::size_t(tag)].size();
            // What a projection generates stands deeper than itself.
            if (start == 0 || (tag == Projection && start > 2) || line.size() <= end ||
                QStringView(line).mid(start, end - start) != Words[std::size_t(tag)] ||
                line.at(end).isLetter())
                continue;
            visit(tag, line);
            break;
        }
    }
}
} // namespace

zoHPCStepName::zoHPCStepName(const zoHPCTextDelta& delta, const QString& field)
{
    std::array<Kind, TagCount> kinds;
    for (const zoHPCTextDelta::Hunk& hunk : delta.hunks()) {
        forEachItem(hunk.removed,
                    [&kinds](int tag, const QString& line) { kinds[std::size_t(tag)].removed << line; });
        forEachItem(hunk.inserted,
                    [&kinds](int tag, const QString& line) { kinds[std::size_t(tag)].inserted << line; });
    }
    for (const Kind& kind : kinds)
        m_isStructural |= kind.difference() != 0;
    const bool isMove = !m_isStructural && kinds[Node].hasMoved();
    m_isStructural |= isMove;
    m_text = isMove           ? nameOfMove(kinds[Node])
             : m_isStructural ? nameOfStructure(kinds.data())
                              : nameOfValues(kinds.data(), field);
}

QString zoHPCStepName::nameOfStructure(const Kind* kinds) const
{
    bool comes = false;
    bool goes = false;
    int first = TagCount;
    for (int tag = TagCount - 1; tag >= 0; --tag) {
        const int difference = kinds[tag].difference();
        comes |= difference > 0;
        goes |= difference < 0;
        if (difference != 0)
            first = tag;
    }
    const Kind& kind = kinds[first];
    if (first == Projection && kind.removed.size() == 1 && kind.inserted.size() > 1)
        return tr("Convert %1 to planes")
            .arg(described(first, valueIn(kind.removed.constFirst(), attributeOf(first))));
    if (comes && goes)
        return kinds[Projection].isTouched() || kinds[Display].isTouched() || kinds[Window].isTouched()
                   ? tr("Change configuration")
                   : tr("Change cluster computers");
    const int count = std::abs(kind.difference());
    const QString what =
        count == 1 ? described(first, valueIn(kind.single(), attributeOf(first))) : counted(first, count);
    return comes ? tr("Add %1").arg(what) : tr("Delete %1").arg(what);
}

QString zoHPCStepName::nameOfMove(const Kind& nodes)
{
    // What lies between two places may count as moved, too: how many were is not known.
    return nodes.inserted.size() == 1
               ? tr("Move %1").arg(described(Node, valueIn(nodes.inserted.constFirst(), attributeOf(Node))))
               : tr("Move compute nodes");
}

QString zoHPCStepName::nameOfValues(const Kind* kinds, const QString& field)
{
    // A node that is renamed takes the windows along that name it.
    const bool isRename = kinds[Node].isTouched() && kinds[Window].isTouched();
    for (int tag = 0; tag < TagCount; ++tag) {
        const Kind& kind = kinds[tag];
        if (!kind.isTouched() || (isRename && tag == Window))
            continue;
        const QString what = kind.inserted.size() == 1
                                 ? described(tag, valueIn(kind.inserted.constFirst(), attributeOf(tag)))
                                 : counted(tag, kind.inserted.size());
        return field.isEmpty() ? tr("Change %1").arg(what) : tr("Change \"%1\" of %2").arg(field, what);
    }
    return tr("Change configuration");
}

QString zoHPCStepName::described(int tag, const QString& name)
{
    QString what;
    switch (tag) {
    case Projection:
        what = tr("projection %1");
        break;
    case Display:
        what = tr("display %1");
        break;
    case Network:
        what = tr("network %1");
        break;
    case Window:
        what = tr("window %1");
        break;
    case Node:
        what = tr("compute node %1");
        break;
    case Viewport:
        what = tr("viewport %1");
        break;
    case Master:
        return tr("options");
    default:
        return tr("configuration");
    }
    return what.arg(name).trimmed();
}

QString zoHPCStepName::counted(int tag, int count)
{
    switch (tag) {
    case Projection:
        return tr("%1 projections").arg(count);
    case Display:
        return tr("%1 displays").arg(count);
    case Network:
        return tr("%1 networks").arg(count);
    case Window:
        return tr("%1 windows").arg(count);
    case Node:
        return tr("%1 compute nodes").arg(count);
    case Viewport:
        return tr("%1 viewports").arg(count);
    default:
        return tr("configuration");
    }
}
