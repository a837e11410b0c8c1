#include "zoItemPaths.h"

#include "zoHPCGrammar.h"
#include "zoHPCOption.h"
#include "zoHPCSuggestion.h"

#include <zoClusterIds.h>
#include <zoClusterTags.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace
{
const QLatin1String s_all("*");

bool isKind(const QString& word)
{
    return zoHPCGrammar::element(word) != nullptr;
}

// As many mistakes anybody reads on to learn what was meant.
constexpr int s_mostGuesses = 20;

// Without the numbers that tell equal names from each other.
QString rootOf(QString name)
{
    for (;;) {
        const int mark = name.lastIndexOf(QLatin1Char('_'));
        if (mark < 0 || mark == name.size() - 1 ||
            !std::all_of(name.begin() + mark + 1, name.end(), [](QChar c) { return c.isDigit(); }))
            return name;
        name.truncate(mark);
    }
}

// The part of the indices that is below an item. The root, with index 0, is below itself.
std::pair<std::vector<int>::const_iterator, std::vector<int>::const_iterator>
below(const std::vector<int>& indices, int scope, int end)
{
    const auto first = std::lower_bound(indices.begin(), indices.end(), scope > 0 ? scope + 1 : 0);
    return {first, std::lower_bound(first, indices.end(), end)};
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
        Counts counts;
    };
    m_items.emplace_back();
    m_items.back().path = m_items.back().kind = zoClusterTags::Cluster;
    m_items.back().element = root;
    std::vector<Level> levels{{root.firstChildElement(), 0, {}}};
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
        levels.push_back({element.firstChildElement(), int(m_items.size()) - 1, {}});
    }
    nameItems();
}

void zoItemPaths::add(const QDomElement& element, int parent, Counts& counts)
{
    const Item& above = m_items[std::size_t(parent)];
    Item item;
    item.kind = element.tagName();
    item.element = element;
    item.parent = parent;
    if (item.kind == zoClusterTags::Master) {
        item.path = master();
    } else if (item.kind == zoClusterTags::Display) {
        item.path = display(++counts.displays);
    } else if (item.kind == zoClusterTags::Window || item.kind == zoClusterTags::Viewport) {
        int& count = item.kind == zoClusterTags::Window ? counts.windows : counts.viewports;
        item.path = above.path + QLatin1Char('/') + step(item.kind, QString::number(++count));
    } else if (item.kind == zoClusterTags::Projection) {
        item.name = element.attribute(zoClusterTags::NameAttribute);
        item.place = counts.projections++;
        item.isComputed = above.kind == zoClusterTags::Projection;
    }
    m_items.push_back(item);
}

void zoItemPaths::nameItems()
{
    m_byPath.clear();
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

void zoItemPaths::makeIndex()
{
    if (!m_hasKinds) {
        m_hasKinds = true;
        for (std::size_t i = 0; i < m_items.size(); ++i) {
            m_ofKind[m_items[i].kind].push_back(int(i));
            if (m_items[i].kind == zoClusterTags::Node || m_items[i].kind == zoClusterTags::Projection)
                m_named.push_back(int(i));
        }
    }
    if (!m_hasNames) {
        m_hasNames = true;
        for (std::size_t i = 0; i < m_items.size(); ++i) {
            if (!m_items[i].name.isEmpty())
                m_byName[m_items[i].name].push_back(int(i));
        }
    }
}

void zoItemPaths::rename(int index)
{
    const Item& renamed = item(index);
    m_stale << rootOf(renamed.name);
    m_stale << rootOf(renamed.element.attribute(renamed.kind == zoClusterTags::Network
                                                    ? zoHPCOption::Description
                                                    : QString(zoClusterTags::NameAttribute)));
}

void zoItemPaths::leaveDocument()
{
    refresh();
    for (Item& item : m_items)
        item.element.clear();
}

void zoItemPaths::refresh()
{
    if (m_stale.isEmpty())
        return;
    m_stale.clear();
    m_byName.clear();
    m_hasNames = false;
    for (Item& item : m_items) {
        if (item.kind == zoClusterTags::Projection)
            item.name = item.element.attribute(zoClusterTags::NameAttribute);
    }
    nameItems();
}

bool zoItemPaths::isFresh(const std::vector<Step>& steps) const
{
    return m_stale.isEmpty() || std::none_of(steps.begin(), steps.end(), [this](const Step& step) {
               return m_stale.contains(rootOf(step.key));
           });
}

const QString& zoItemPaths::pathOf(int index)
{
    refresh();
    return item(index).path;
}

QStringList zoItemPaths::attributesOf(const QDomElement& element)
{
    const zoHPCGrammar::Element* const kind = zoHPCGrammar::element(element.tagName());
    if (kind == nullptr)
        return {};
    QString word;
    if (!kind->selector.isEmpty() && kind->variant(element.attribute(kind->selector)) != nullptr)
        word = element.attribute(kind->selector);
    // Asked for each of a hundred thousand tiles.
    static QHash<QPair<QString, QString>, QStringList> s_known;
    QStringList& names = s_known[{kind->tag, word}];
    if (names.isEmpty()) {
        for (const zoHPCGrammar::Attribute& attribute : kind->attributes(word))
            names << attribute.name;
    }
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

bool zoItemPaths::find(const QString& path, Target& target, QString& reason)
{
    std::vector<Step> steps;
    if (!readSteps(path, steps)) {
        reason = tr("\"%1\" is no path such as node[gpu01]/enabled or Wall/distance").arg(path);
        return false;
    }
    if (!isFresh(steps))
        refresh();
    makeIndex();
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
                         .arg(path, pathOf(found[0]), pathOf(found[1]));
            return false;
        }
        target.items = found;
    }
    return true;
}

const std::vector<int>& zoItemPaths::candidatesOf(const Step& step) const
{
    static const std::vector<int> s_none;
    if (step.kind.isEmpty())
        return m_named;
    const auto ofKind = m_ofKind.constFind(step.kind);
    return ofKind == m_ofKind.constEnd() ? s_none : *ofKind;
}

std::vector<int> zoItemPaths::chosen(const std::vector<int>& scopes, const Step& step) const
{
    const bool isAll = step.key == s_all || (!step.hasKey && !step.kind.isEmpty());
    std::vector<int> result;
    int end = 0;
    for (const int scope : scopes) {
        // All below what is below another one were chosen there.
        if (isAll && scope < end)
            continue;
        end = item(scope).end;
        if (!isAll) {
            const std::vector<int> found = chosenBelow(scope, step);
            result.insert(result.end(), found.begin(), found.end());
            continue;
        }
        const auto [first, last] = below(candidatesOf(step), scope, end);
        result.insert(result.end(), first, last);
    }
    // Networks hold networks: both may choose the same item.
    std::sort(result.begin(), result.end());
    result.erase(std::unique(result.begin(), result.end()), result.end());
    return result;
}

std::vector<int> zoItemPaths::chosenBelow(int scope, const Step& step) const
{
    std::vector<int> result;
    const auto named = m_byName.constFind(step.key);
    if (named != m_byName.constEnd()) {
        const auto [first, last] = below(*named, scope, item(scope).end);
        std::copy_if(first, last, std::back_inserter(result), [&](int i) {
            const QString& kind = item(i).kind;
            return step.kind.isEmpty() ? kind != zoClusterTags::Network : kind == step.kind;
        });
    }
    bool isNumber = false;
    const int number = step.key.toInt(&isNumber);
    const auto [first, last] = below(candidatesOf(step), scope, item(scope).end);
    if (!result.empty() || step.kind.isEmpty() || !isNumber || number < 1 || number > last - first)
        return result;
    return {*(first + (number - 1))};
}

bool zoItemPaths::isAttribute(const std::vector<int>& scopes, const QString& word) const
{
    return std::any_of(scopes.begin(), scopes.end(), [&](int i) {
        return item(i).element.hasAttribute(word) || attributesOf(item(i).element).contains(word);
    });
}

QString zoItemPaths::missing(const Step& step, const std::vector<int>& scopes)
{
    const QString what =
        step.hasKey || step.kind.isEmpty()
            ? QLatin1Char('"') + (step.hasKey ? ::step(step.kind, step.key) : step.key) + QLatin1Char('"')
            : step.kind;
    const bool isOne = scopes.size() == 1 && scopes.front() > 0;
    QString reason =
        isOne ? tr("%1 has no %2").arg(pathOf(scopes.front()), what) : tr("there is no %1").arg(what);
    const QString guess = ++m_guesses > s_mostGuesses ? QString() : meant(step, scopes);
    if (!guess.isEmpty())
        reason += tr("; did you mean \"%1\"?").arg(step.hasKey ? ::step(step.kind, guess) : guess);
    return reason;
}

QString zoItemPaths::meant(const Step& step, const std::vector<int>& scopes)
{
    refresh();
    QStringList known;
    if (scopes.size() == 1 && scopes.front() > 0 && !step.hasKey)
        known << attributesOf(item(scopes.front()).element);
    int next = 0; // networks hold networks: each item once
    for (const int scope : scopes) {
        for (next = std::max(next, scope + 1); next < item(scope).end; ++next) {
            const Item& candidate = item(next);
            if (!candidate.name.isEmpty() && (!step.hasKey || candidate.kind == step.kind))
                known << candidate.name;
        }
    }
    return zoHPCSuggestion::closest(step.key, known);
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
