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

// Tiles and planes that projections generate.
int tilesOf(zoClusterSetup& setup)
{
    const QTreeWidgetItem& projections = *setup.displays().projectionRoot();
    int count = 0;
    for (int i = 0; i < projections.childCount(); ++i)
        count += projections.child(i)->childCount();
    return count;
}

// What names others.
QString nodeOfWindow()
{
    return zoHPCWindowItem::columns().at(zoHPCWindowItem::Node);
}

QString projectionOfViewport()
{
    return zoHPCViewportItem::columns().at(zoHPCViewportItem::Projection);
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

zoConfigurationEdit::zoConfigurationEdit(zoClusterSetup& setup)
    : m_setup(setup), m_document(setup.outlineDocument()), m_paths(m_document.documentElement())
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
    zoItemPaths::Target target;
    QString reason;
    if (!m_paths.find(path, target, reason)) {
        m_mistakes << reason;
        return;
    }
    if (target.attribute.isEmpty()) {
        m_mistakes << tr("\"%1\" is an item: say which of its values, as %2")
                          .arg(path,
                               zoItemPaths::attribute(
                                   path, zoItemPaths::attributesOf(m_paths.item(target.items.front()).element)
                                             .value(0)));
        return;
    }
    for (const int index : target.items) {
        if (m_paths.item(index).isComputed)
            m_mistakes
                << tr("%1 is computed from the projection above it").arg(pathOf(index, target.attribute));
        else
            set(index, target.attribute, value);
    }
}

QString zoConfigurationEdit::pathOf(int index, const QString& attribute)
{
    return zoItemPaths::attribute(m_paths.pathOf(index), attribute);
}

void zoConfigurationEdit::set(int index, const QString& attribute, const QString& value)
{
    QDomElement element = m_paths.item(index).element;
    QString stored = value;
    if (!accepts(index, attribute, stored))
        return;
    const QString before = zoItemValues::value(element, attribute);
    // What is the default is not written.
    if (stored == zoItemValues::defaultValue(attribute))
        stored.clear();
    element.removeAttribute(attribute);
    if (!stored.isEmpty()) {
        // Not setAttribute(), which goes up to the root and takes its time in deep networks.
        QDomAttr written = m_document.createAttribute(attribute);
        written.setValue(stored);
        element.setAttributeNode(written);
    }
    const QString after = zoItemValues::value(element, attribute);
    if (before != after) {
        m_hasChanged = true;
        if (attribute == zoClusterTags::NameAttribute || attribute == zoHPCOption::Description)
            m_paths.rename(index);
        if (attribute == zoClusterTags::NameAttribute)
            rename(element, before, after);
        addUser(element, attribute);
    }
    m_changes.push_back({index, attribute, after});
}

bool zoConfigurationEdit::accepts(int index, const QString& attribute, QString& value)
{
    const QDomElement element = m_paths.item(index).element;
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
        m_mistakes << tr("%1: there is no such attribute").arg(pathOf(index, attribute));
        return false;
    }
    if (value.isEmpty()) {
        if (!found->isRequired)
            return true;
        m_mistakes << tr("%1: a value is needed").arg(pathOf(index, attribute));
        return false;
    }
    // A person may write a truth as it comes.
    QString shown = value;
    if (isTruth(found->type) && QStringList{"true", "false", "1", "0"}.contains(value.toLower()))
        value = canonical(found->type, value);
    if (!found->accepts(value)) {
        m_mistakes << tr("%1: \"%2\" is not %3").arg(pathOf(index, attribute), shown, expectation(*found));
        const QString guess = zoHPCSuggestion::closest(value, found->words);
        if (!guess.isEmpty())
            m_mistakes.last() += tr("; did you mean \"%1\"?").arg(guess);
        return false;
    }
    if (element.tagName() == zoClusterTags::Node && attribute == zoClusterTags::NameAttribute &&
        !isOneWord(value)) {
        m_mistakes << tr("%1: \"%2\" is no name of one host").arg(pathOf(index, attribute), value);
        return false;
    }
    value = canonical(found->type, value);
    return true;
}

zoConfigurationEdit::Users zoConfigurationEdit::usersOf(const QString& kind, const QString& attribute) const
{
    Users users;
    for (const zoItemPaths::Item& item : m_paths.items()) {
        if (item.kind == kind)
            users[item.element.attribute(attribute)].push_back(item.element);
    }
    return users;
}

void zoConfigurationEdit::addUser(const QDomElement& element, const QString& attribute)
{
    const QString tag = element.tagName();
    if (m_windows && tag == zoClusterTags::Window && attribute == nodeOfWindow())
        (*m_windows)[element.attribute(attribute)].push_back(element);
    if (m_viewports && tag == zoClusterTags::Viewport && attribute == projectionOfViewport())
        (*m_viewports)[element.attribute(attribute)].push_back(element);
}

// Windows and viewports go on naming what they named.
void zoConfigurationEdit::rename(const QDomElement& element, const QString& before, const QString& after)
{
    const bool isNode = element.tagName() == zoClusterTags::Node;
    const QString attribute = isNode ? nodeOfWindow() : projectionOfViewport();
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
        std::vector<QDomElement>& others = (*known)[renamed];
        for (QDomElement user : users) {
            // It may name another one by now.
            if (user.attribute(attribute) != name)
                continue;
            user.setAttribute(attribute, renamed);
            others.push_back(user);
        }
    }
}

void zoConfigurationEdit::finish()
{
    const std::vector<Window> before = windowsOf(m_setup);
    // Into the setup that was: a hundred thousand tiles are not there twice.
    m_setup.readDocument(m_document);
    const std::vector<Shown> wanted = shownProjections();
    // Nor are elements: with Qt 6 one that has attributes takes two kilobytes.
    leaveDocument();
    m_text = m_setup.text();
    // Nobody can change a tile, so that they need not be looked at once more.
    const QDomDocument document = m_setup.outlineDocument(zoHPCDocumentText::Tiles::None);
    const zoItemPaths read(document.documentElement());
    checkThatChangesStay(read);
    checkProjections(wanted, read);
    checkNodes(before);
}

std::vector<zoConfigurationEdit::Shown> zoConfigurationEdit::shownProjections() const
{
    std::vector<Shown> shown;
    for (const zoItemPaths::Item& item : m_paths.items()) {
        if (item.kind == zoClusterTags::Viewport)
            shown.push_back({item.path, item.element.attribute(projectionOfViewport())});
    }
    return shown;
}

void zoConfigurationEdit::leaveDocument()
{
    m_paths.leaveDocument();
    m_windows.reset();
    m_viewports.reset();
    m_document = QDomDocument();
}

std::vector<zoConfigurationEdit::Window> zoConfigurationEdit::windowsOf(zoClusterSetup& setup)
{
    std::vector<Window> windows;
    const zoHPCLayout layout(setup.displays(), setup.hosts().master());
    for (const zoHPCLayout::Window& window : layout.windows())
        windows.push_back({window.node, window.nodeIndex != zoHPCLayout::None});
    return windows;
}

void zoConfigurationEdit::checkThatChangesStay(const zoItemPaths& after)
{
    // Names may have changed: items keep their places. Without the tiles, which `after` has none of.
    std::vector<int> places;
    int kept = 0;
    for (const zoItemPaths::Item& item : m_paths.items())
        places.push_back(item.isComputed ? -1 : kept++);
    const int tiles = int(places.size()) - kept;
    if (int(after.items().size()) != kept || tilesOf(m_setup) != tiles)
        return;
    QHash<QPair<int, QString>, QString> last; // values by attribute: only the last one has to stay
    for (const Change& change : m_changes)
        last.insert({change.item, change.attribute}, change.value);
    for (const Change& change : m_changes) {
        const int place = places[std::size_t(change.item)];
        const QString value = zoItemValues::value(after.item(place).element, change.attribute);
        // What shows nothing is told with what it should show.
        const bool isProjection = change.attribute == projectionOfViewport();
        if ((isProjection && value.isEmpty()) || value == change.value)
            continue;
        if (last.value({change.item, change.attribute}) == change.value)
            m_mistakes << tr("%1: \"%2\" would not stay, but become \"%3\"")
                              .arg(pathOf(change.item, change.attribute), change.value, value);
    }
}

void zoConfigurationEdit::checkProjections(const std::vector<Shown>& wanted, const zoItemPaths& read)
{
    const QString projection = projectionOfViewport();
    Guesses projections;
    for (const Shown& shown : wanted) {
        const int index = read.indexOf(shown.path);
        if (index < 0 || !read.item(index).element.attribute(projection).isEmpty() ||
            shown.projection.isEmpty())
            continue;
        const QString guess = projections.closest(shown.projection, [&] {
            QStringList names;
            const QList<zoHPCProjectionItem*> items = m_setup.displays().getProjectionItems();
            for (const zoHPCProjectionItem* other : items)
                names << other->getString(zoHPCProjectionItem::Name);
            return names;
        });
        m_mistakes << tr("%1 shows \"%2\", which is not there%3")
                          .arg(shown.path, shown.projection,
                               guess.isEmpty() ? QString() : tr("; did you mean \"%1\"?").arg(guess));
    }
}

// Windows that were wrong before are none of these changes.
void zoConfigurationEdit::checkNodes(const std::vector<Window>& before)
{
    Guesses nodes;
    const zoHPCLayout after(m_setup.displays(), m_setup.hosts().master());
    for (std::size_t i = 0; i < after.windows().size() && i < before.size(); ++i) {
        const zoHPCLayout::Window& window = after.windows()[i];
        const bool isOther = before[i].node != window.node;
        if (window.nodeIndex != zoHPCLayout::None || window.node.isEmpty() || (!before[i].isGood && !isOther))
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
