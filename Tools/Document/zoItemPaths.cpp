#include "zoItemPaths.h"

#include "zoHPCGrammar.h"
#include "zoHPCOption.h"
#include "zoHPCSuggestion.h"

#include <zoClusterIds.h>
#include <zoClusterTags.h>

#include <algorithm>
#include <iterator>

namespace
{
const QLatin1String s_all("*");

bool isKind(const QString& word)
{
    return zoHPCGrammar::element(word) != nullptr;
}

QString step(const QString& kind, const QString& key)
{
    return kind + QLatin1Char('[') + key + QLatin1Char(']');
}
} // namespace

zoItemPaths::zoItemPaths(const QDomElement& root)
{
    // No recursion: networks behind gateways may be deep.
    struct Level
    {
        QDomElement next;
        int item;
        std::vector<int> counts; // of displays, windows, viewports
    };
    m_items.push_back({zoClusterTags::Cluster, zoClusterTags::Cluster, QString(), root, 0, false});
    std::vector<Level> levels{{root.firstChildElement(), 0, {0, 0, 0}}};
    while (!levels.empty()) {
        Level& level = levels.back();
        const QDomElement element = level.next;
        if (element.isNull()) {
            m_items[std::size_t(level.item)].end = int(m_items.size());
            levels.pop_back();
            continue;
        }
        level.next = element.nextSiblingElement();
        if (!isKind(element.tagName()))
            continue;
        add(element, level.item, level.counts);
        levels.push_back({element.firstChildElement(), int(m_items.size()) - 1, {0, 0, 0}});
    }
    nameItems();
}

void zoItemPaths::add(const QDomElement& element, int parent, std::vector<int>& counts)
{
    const Item& above = m_items[std::size_t(parent)];
    Item item;
    item.kind = element.tagName();
    item.element = element;
    if (item.kind == zoClusterTags::Master) {
        item.path = master();
    } else if (item.kind == zoClusterTags::Display) {
        item.path = display(++counts[0]);
    } else if (item.kind == zoClusterTags::Window || item.kind == zoClusterTags::Viewport) {
        int& count = counts[item.kind == zoClusterTags::Window ? 1 : 2];
        item.path = above.path + QLatin1Char('/') + step(item.kind, QString::number(++count));
    } else if (item.kind == zoClusterTags::Projection) {
        item.name = element.attribute(zoClusterTags::NameAttribute);
        item.isComputed = above.kind == zoClusterTags::Projection;
    }
    m_items.push_back(item);
}

void zoItemPaths::nameItems()
{
    zoClusterPlaces places;
    zoClusterIds ids(places);
    int networks = 0;
    int projections = 0;
    for (Item& item : m_items) {
        if (item.kind == zoClusterTags::Network) {
            item.path = network(++networks);
            item.name = item.element.attribute(zoHPCOption::Description);
        } else if (item.kind == zoClusterTags::Node) {
            item.name = ids.id(ids.addName(item.element.attribute(zoClusterTags::NameAttribute)));
            item.path = node(item.name);
        } else if (item.kind == zoClusterTags::Projection) {
            ++projections;
            item.path = projection(item.name);
            if (item.name.isEmpty() || m_byPath.contains(item.path))
                item.path = projection(QString::number(projections));
        }
        const int index = int(&item - m_items.data());
        if (!m_byPath.contains(item.path))
            m_byPath.insert(item.path, index);
    }
}

QStringList zoItemPaths::attributesOf(const QDomElement& element)
{
    const zoHPCGrammar::Element* const kind = zoHPCGrammar::element(element.tagName());
    QStringList names;
    if (kind == nullptr)
        return names;
    for (const zoHPCGrammar::Attribute& attribute :
         kind->attributes(kind->selector.isEmpty() ? QString() : element.attribute(kind->selector)))
        names << attribute.name;
    return names;
}

bool zoItemPaths::readSteps(const QString& path, std::vector<Step>& steps)
{
    int begin = 0;
    while (begin < path.size()) {
        const int bracket = path.indexOf(QLatin1Char('['), begin);
        const int slash = path.indexOf(QLatin1Char('/'), begin);
        Step next;
        int end = slash < 0 ? path.size() : slash;
        const QString kind = bracket < 0 ? QString() : path.mid(begin, bracket - begin);
        if (bracket >= 0 && (slash < 0 || bracket < slash) && isKind(kind)) {
            // Names may hold slashes and brackets: the bracket that ends a step stands before a slash or last.
            end = path.indexOf(QLatin1String("]/"), bracket);
            end = end < 0 ? path.size() : end + 1;
            if (path.at(end - 1) != QLatin1Char(']'))
                return false;
            next.kind = kind;
            next.key = path.mid(bracket + 1, end - bracket - 2);
            next.hasKey = true;
        } else {
            next.key = path.mid(begin, end - begin);
            if (isKind(next.key))
                next.kind = next.key;
        }
        if (next.key.isEmpty())
            return false;
        steps.push_back(next);
        begin = end + 1;
        if (end == path.size() - 1)
            return false; // ends with a slash
    }
    if (steps.empty())
        return false;
    steps.back().isAttribute = !steps.back().hasKey;
    return true;
}

bool zoItemPaths::find(const QString& path, Target& target, QString& reason) const
{
    std::vector<Step> steps;
    if (!readSteps(path, steps)) {
        reason = tr("\"%1\" is no path such as node[gpu01]/enabled or Wall/distance").arg(path);
        return false;
    }
    target = {{0}, QString()};
    bool isMany = false;
    for (const Step& step : steps) {
        if (step.isAttribute && &step != &steps.front() && isAttribute(target.items, step.key)) {
            target.attribute = step.key;
            break;
        }
        const std::vector<int> found = chosen(target.items, step);
        if (found.empty()) {
            reason = missing(step, target.items);
            return false;
        }
        isMany = isMany || step.key == s_all;
        if (found.size() > 1 && !isMany) {
            reason = tr("\"%1\" may be %2 or %3: say which, or [*] for all")
                         .arg(path, item(found[0]).path, item(found[1]).path);
            return false;
        }
        target.items = found;
    }
    return true;
}

std::vector<int> zoItemPaths::below(int scope, const Step& step) const
{
    std::vector<int> result;
    // The root is itself the scope of "cluster".
    if (scope == 0 && step.kind == zoClusterTags::Cluster)
        result.push_back(0);
    for (int i = scope + 1; i < item(scope).end; ++i) {
        const Item& candidate = item(i);
        const bool isNamed =
            candidate.kind == zoClusterTags::Node || candidate.kind == zoClusterTags::Projection;
        if (step.kind.isEmpty() ? isNamed : candidate.kind == step.kind)
            result.push_back(i);
    }
    return result;
}

std::vector<int> zoItemPaths::chosen(const std::vector<int>& scopes, const Step& step) const
{
    std::vector<int> result;
    for (const int scope : scopes) {
        const std::vector<int> found = chosenBelow(scope, step);
        result.insert(result.end(), found.begin(), found.end());
    }
    // Networks hold networks: both may choose the same item.
    std::sort(result.begin(), result.end());
    result.erase(std::unique(result.begin(), result.end()), result.end());
    return result;
}

std::vector<int> zoItemPaths::chosenBelow(int scope, const Step& step) const
{
    const std::vector<int> candidates = below(scope, step);
    if (step.key == s_all || (!step.hasKey && !step.kind.isEmpty()))
        return candidates;
    std::vector<int> result;
    std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(result),
                 [&](int i) { return item(i).name == step.key && !step.key.isEmpty(); });
    bool isNumber = false;
    const int number = step.key.toInt(&isNumber);
    if (!result.empty() || step.kind.isEmpty() || !isNumber || number < 1 || number > int(candidates.size()))
        return result;
    return {candidates[std::size_t(number) - 1]};
}

bool zoItemPaths::isAttribute(const std::vector<int>& scopes, const QString& word) const
{
    return std::any_of(scopes.begin(), scopes.end(), [&](int i) {
        return item(i).element.hasAttribute(word) || attributesOf(item(i).element).contains(word);
    });
}

QString zoItemPaths::missing(const Step& step, const std::vector<int>& scopes) const
{
    const QString what =
        step.hasKey || step.kind.isEmpty()
            ? QLatin1Char('"') + (step.hasKey ? ::step(step.kind, step.key) : step.key) + QLatin1Char('"')
            : step.kind;
    const bool isOne = scopes.size() == 1 && scopes.front() > 0;
    QString reason =
        isOne ? tr("%1 has no %2").arg(item(scopes.front()).path, what) : tr("there is no %1").arg(what);
    QStringList known;
    if (isOne && !step.hasKey)
        known << attributesOf(item(scopes.front()).element);
    int next = 0; // networks hold networks: each item once
    for (const int scope : scopes) {
        for (next = std::max(next, scope + 1); next < item(scope).end; ++next) {
            const Item& candidate = item(next);
            if (!candidate.name.isEmpty() && (!step.hasKey || candidate.kind == step.kind))
                known << candidate.name;
        }
    }
    const QString meant = zoHPCSuggestion::closest(step.key, known);
    if (!meant.isEmpty())
        reason += tr("; did you mean \"%1\"?").arg(step.hasKey ? ::step(step.kind, meant) : meant);
    return reason;
}

QString zoItemPaths::network(int number)
{
    return step(zoClusterTags::Network, QString::number(number));
}

QString zoItemPaths::node(const QString& id)
{
    return step(zoClusterTags::Node, id);
}

QString zoItemPaths::projection(const QString& name)
{
    return step(zoClusterTags::Projection, name);
}

QString zoItemPaths::display(int number)
{
    return step(zoClusterTags::Display, QString::number(number));
}

QString zoItemPaths::window(int display, int number)
{
    return attribute(zoItemPaths::display(display), step(zoClusterTags::Window, QString::number(number)));
}

QString zoItemPaths::viewport(int display, int window, int number)
{
    return attribute(zoItemPaths::window(display, window),
                     step(zoClusterTags::Viewport, QString::number(number)));
}

QString zoItemPaths::attribute(const QString& item, const QString& name)
{
    return item + QLatin1Char('/') + name;
}
