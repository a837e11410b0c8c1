#include "zoConfigurationEdit.h"

#include "zoHPCGrammar.h"
#include "zoHPCHostsText.h"
#include "zoHPCLayout.h"
#include "zoHPCOption.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCSuggestion.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"
#include "zoItemPaths.h"
#include "zoItemValues.h"

#include <zoClusterTags.h>

#include <QHash>

#include <algorithm>
#include <functional>

namespace
{
// Names may hold the sign: it ends the path where no bracket is open.
int endOfPath(const QString& assignment)
{
    int depth = 0;
    for (int i = 0; i < assignment.size(); ++i) {
        const QChar c = assignment.at(i);
        if (c == QLatin1Char('['))
            ++depth;
        else if (c == QLatin1Char(']'))
            --depth;
        else if (c == QLatin1Char('=') && depth <= 0)
            return i;
    }
    return -1;
}

bool isTruth(zoHPCGrammar::Type type)
{
    return type == zoHPCGrammar::Type::Truth || type == zoHPCGrammar::Type::OptionTruth;
}

// As documents have it: "1" and "TRUE" are "true", 65.0 is 65.
QString canonical(zoHPCGrammar::Type type, const QString& value)
{
    if (isTruth(type))
        return value == QLatin1String("1") || value.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0
                   ? QStringLiteral("true")
                   : QStringLiteral("false");
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (type == zoHPCGrammar::Type::Number && isNumber)
        return QVariant(number).toString();
    return type == zoHPCGrammar::Type::Integer ? QString::number(value.toLongLong()) : value;
}

QString expectation(const zoHPCGrammar::Attribute& attribute)
{
    switch (attribute.type) {
    case zoHPCGrammar::Type::Truth:
    case zoHPCGrammar::Type::OptionTruth:
        return QCoreApplication::translate("zoConfigurationEdit", "true or false");
    case zoHPCGrammar::Type::Word:
        return QCoreApplication::translate("zoConfigurationEdit", "one of %1")
            .arg(attribute.words.join(QLatin1String(", ")));
    case zoHPCGrammar::Type::Integer:
        return attribute.hasLimits()
                   ? QCoreApplication::translate("zoConfigurationEdit", "a whole number from %1 to %2")
                         .arg(QString::number(attribute.least), QString::number(attribute.most))
                   : QCoreApplication::translate("zoConfigurationEdit", "a whole number");
    default:
        return QCoreApplication::translate("zoConfigurationEdit", "a number");
    }
}

// Lists of hosts would make several hosts of it, or none.
bool isOneWord(const QString& name)
{
    return std::none_of(name.begin(), name.end(), [](QChar c) {
        return zoHPCHostsText::endsWord(c) || c == QLatin1Char(']') || c.isSpace() ||
               c.category() == QChar::Other_Control;
    });
}

QString attributeName(int column, const zoHPCTreeWidgetItem::ColumnMap& columns)
{
    return columns.at(column);
}
// What was meant, looked for once for each word: [*] gives the same one to all.
class Guesses final
{
public:
    QString closest(const QString& word, const std::function<QStringList()>& names)
    {
        const auto known = m_guesses.constFind(word);
        return known != m_guesses.constEnd()
                   ? *known
                   : *m_guesses.insert(word, zoHPCSuggestion::closest(word, names()));
    }

private:
    QHash<QString, QString> m_guesses;
};
} // namespace

zoConfigurationEdit::zoConfigurationEdit(zoClusterSetup& setup) : m_setup(setup), m_document(setup.document())
{
}

void zoConfigurationEdit::set(const QString& assignment)
{
    const int end = endOfPath(assignment);
    if (end <= 0) {
        m_mistakes << tr("\"%1\" is no PATH=VALUE").arg(assignment);
        return;
    }
    const QString path = assignment.left(end);
    const QString value = assignment.mid(end + 1);
    const zoItemPaths paths(m_document.documentElement());
    zoItemPaths::Target target;
    QString reason;
    if (!paths.find(path, target, reason)) {
        m_mistakes << reason;
        return;
    }
    if (target.attribute.isEmpty()) {
        m_mistakes << tr("\"%1\" is an item: say which of its values, as %2")
                          .arg(path,
                               zoItemPaths::attribute(
                                   path, zoItemPaths::attributesOf(paths.item(target.items.front()).element)
                                             .value(0)));
        return;
    }
    // What names others may become another one by this change.
    m_windows.reset();
    m_viewports.reset();
    for (const int index : target.items) {
        const zoItemPaths::Item& item = paths.item(index);
        const QString whole = zoItemPaths::attribute(item.path, target.attribute);
        if (item.isComputed)
            m_mistakes << tr("%1 is computed from the projection above it").arg(whole);
        else
            set(paths, index, target.attribute, value);
    }
}

void zoConfigurationEdit::set(const zoItemPaths& paths, int index, const QString& attribute,
                              const QString& value)
{
    QDomElement element = paths.item(index).element;
    QString stored = value;
    const QString whole = zoItemPaths::attribute(paths.item(index).path, attribute);
    if (!accepts(element, whole, attribute, stored))
        return;
    const QString before = zoItemValues::value(element, attribute);
    // What is the default is not written.
    QDomElement plain = element.cloneNode(false).toElement();
    plain.removeAttribute(attribute);
    if (stored == zoItemValues::value(plain, attribute))
        stored.clear();
    if (stored.isEmpty())
        element.removeAttribute(attribute);
    else
        element.setAttribute(attribute, stored);
    const QString after = zoItemValues::value(element, attribute);
    m_hasChanged = m_hasChanged || before != after;
    if (attribute == zoClusterTags::NameAttribute && before != after)
        rename(element, before, after);
    m_changes.push_back({whole, index, attribute, after});
}

bool zoConfigurationEdit::accepts(const QDomElement& element, const QString& path, const QString& attribute,
                                  QString& value)
{
    const zoHPCGrammar::Element* const kind = zoHPCGrammar::element(element.tagName());
    if (kind == nullptr)
        return true;
    const std::vector<zoHPCGrammar::Attribute> known =
        // The word that selects the others may become another one.
        kind->attributes(kind->selector.isEmpty() || attribute == kind->selector
                             ? QString()
                             : element.attribute(kind->selector));
    const auto found =
        std::find_if(known.begin(), known.end(),
                     [&](const zoHPCGrammar::Attribute& candidate) { return candidate.name == attribute; });
    if (found == known.end()) {
        m_mistakes << tr("%1: there is no such attribute").arg(path);
        return false;
    }
    if (value.isEmpty()) {
        if (!found->isRequired)
            return true;
        m_mistakes << tr("%1: a value is needed").arg(path);
        return false;
    }
    // A person may write a truth as it comes.
    QString shown = value;
    if (isTruth(found->type) && QStringList{"true", "false", "1", "0"}.contains(value.toLower()))
        value = canonical(found->type, value);
    if (!found->accepts(value)) {
        m_mistakes << tr("%1: \"%2\" is not %3").arg(path, shown, expectation(*found));
        const QString guess = zoHPCSuggestion::closest(value, found->words);
        if (!guess.isEmpty())
            m_mistakes.last() += tr("; did you mean \"%1\"?").arg(guess);
        return false;
    }
    if (element.tagName() == zoClusterTags::Node && attribute == zoClusterTags::NameAttribute &&
        !isOneWord(value)) {
        m_mistakes << tr("%1: \"%2\" is no name of one host").arg(path, value);
        return false;
    }
    value = canonical(found->type, value);
    return true;
}

zoConfigurationEdit::Users zoConfigurationEdit::usersOf(const QString& kind, const QString& attribute) const
{
    const zoItemPaths paths(m_document.documentElement());
    Users users;
    for (const zoItemPaths::Item& item : paths.items()) {
        if (item.kind == kind)
            users[item.element.attribute(attribute)].push_back(item.element);
    }
    return users;
}

// Windows and viewports go on naming what they named.
void zoConfigurationEdit::rename(const QDomElement& element, const QString& before, const QString& after)
{
    const bool isNode = element.tagName() == zoClusterTags::Node;
    const QString attribute =
        isNode ? attributeName(zoHPCWindowItem::Node, zoHPCWindowItem::columns())
               : attributeName(zoHPCViewportItem::Projection, zoHPCViewportItem::columns());
    std::optional<Users>& known = isNode ? m_windows : m_viewports;
    if (!known)
        known = usersOf(isNode ? zoClusterTags::Window : zoClusterTags::Viewport, attribute);
    // Tiles and walls have the name of their projection before a blank: they stand behind it in the map.
    const QString part = before + QLatin1Char(' ');
    QStringList names;
    if (known->contains(before))
        names << before;
    for (auto i = known->lowerBound(part); !isNode && i != known->end() && i.key().startsWith(part); ++i)
        names << i.key();
    for (const QString& name : qAsConst(names)) {
        const std::vector<QDomElement> users = known->take(name);
        const QString renamed = after + name.mid(before.size());
        for (QDomElement user : users)
            user.setAttribute(attribute, renamed);
        std::vector<QDomElement>& others = (*known)[renamed];
        others.insert(others.end(), users.begin(), users.end());
    }
}

void zoConfigurationEdit::finish()
{
    zoClusterSetup result;
    result.readDocument(m_document);
    m_text = result.text();
    const QDomDocument document = result.document();
    checkThatChangesStay(document.documentElement());
    checkReferences(document.documentElement(), result);
}

void zoConfigurationEdit::checkThatChangesStay(const QDomElement& root)
{
    // Names may have changed: items keep their places.
    const zoItemPaths after(root);
    if (after.items().size() != zoItemPaths(m_document.documentElement()).items().size())
        return;
    QHash<QString, QString> last; // values by path: only the last one has to stay
    for (const Change& change : m_changes)
        last.insert(change.path, change.value);
    for (const Change& change : m_changes) {
        const QString value = zoItemValues::value(after.item(change.item).element, change.attribute);
        // What shows nothing is told with what it should show.
        const bool isProjection =
            change.attribute == attributeName(zoHPCViewportItem::Projection, zoHPCViewportItem::columns());
        if ((isProjection && value.isEmpty()) || value == change.value)
            continue;
        if (last.value(change.path) == change.value)
            m_mistakes
                << tr("%1: \"%2\" would not stay, but become \"%3\"").arg(change.path, change.value, value);
    }
}

void zoConfigurationEdit::checkReferences(const QDomElement& root, zoClusterSetup& result)
{
    const QString projection = attributeName(zoHPCViewportItem::Projection, zoHPCViewportItem::columns());
    const zoItemPaths asked(m_document.documentElement());
    const zoItemPaths read(root);
    Guesses projections;
    Guesses nodes;
    for (const zoItemPaths::Item& item : asked.items()) {
        if (item.kind != zoClusterTags::Viewport)
            continue;
        const QString shown = item.element.attribute(projection);
        const int index = read.indexOf(item.path);
        if (index < 0 || !read.item(index).element.attribute(projection).isEmpty() || shown.isEmpty())
            continue;
        const QString guess = projections.closest(shown, [&] {
            QStringList names;
            for (const zoItemPaths::Item& other : read.items()) {
                if (other.kind == zoClusterTags::Projection)
                    names << other.name;
            }
            return names;
        });
        m_mistakes << tr("%1 shows \"%2\", which is not there%3")
                          .arg(item.path, shown,
                               guess.isEmpty() ? QString() : tr("; did you mean \"%1\"?").arg(guess));
    }
    // Windows that were wrong before are none of these changes.
    const zoHPCLayout before(m_setup.displays(), m_setup.hosts().master());
    const zoHPCLayout after(result.displays(), result.hosts().master());
    for (std::size_t i = 0; i < after.windows().size() && i < before.windows().size(); ++i) {
        const zoHPCLayout::Window& window = after.windows()[i];
        const bool wasGood = before.windows()[i].nodeIndex != zoHPCLayout::None;
        const bool isOther = before.windows()[i].node != window.node;
        if (window.nodeIndex != zoHPCLayout::None || window.node.isEmpty() || (!wasGood && !isOther))
            continue;
        const QString guess = nodes.closest(window.node, [&] {
            QStringList names;
            for (const zoHPCLayout::Node& node : after.nodes())
                names << node.name;
            return names;
        });
        m_mistakes << tr("%1 names the node \"%2\", which is not there%3")
                          .arg(zoItemPaths::window(window.display, window.number), window.node,
                               guess.isEmpty() ? QString() : tr("; did you mean \"%1\"?").arg(guess));
    }
}
