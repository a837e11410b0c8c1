#include "zoHPCTextCheck.h"

#include "zoHPCSuggestion.h"
#include "zoHPCValueGuess.h"
#include "zoText.h"

#include <zoClusterTags.h>

#include <QDomDocument>

#include <algorithm>

namespace
{
using Part = zoHPCTextParts::Part;
using PartKind = zoHPCTextParts::Kind;
using Type = zoHPCGrammar::Type;

// Of a text that is told.
constexpr int s_longestQuote = 40;

QString shortened(const QString& text)
{
    const QString line = text.simplified();
    return line.size() > s_longestQuote ? line.left(s_longestQuote) + QChar(0x2026) : line;
}

QString listed(const QStringList& words)
{
    QStringList quoted;
    for (const QString& word : words)
        quoted << QLatin1Char('"') + word + QLatin1Char('"');
    return quoted.join(QLatin1String(", "));
}

QStringList childrenOf(const QString& tag)
{
    QStringList children;
    for (const zoHPCGrammar::Element& element : zoHPCGrammar::elements()) {
        if (element.parents.contains(tag))
            children << element.tag;
    }
    return children;
}

// Who has an attribute of that name, in words: elements, or types of projections.
QString ownerOf(const QString& name)
{
    for (const zoHPCGrammar::Element& element : zoHPCGrammar::elements()) {
        for (const zoHPCGrammar::Variant& variant : element.variants) {
            if (variant.attribute(name))
                return variant.word.isEmpty() ? element.tag : variant.word;
        }
    }
    return {};
}
} // namespace

zoHPCTextCheck::zoHPCTextCheck(const QString& text) : m_parts(text)
{
    const QVector<Part>& parts = m_parts.parts();
    m_readers.reserve(size_t(parts.size()));
    for (int i = 0; i < parts.size(); ++i) {
        const int parent = parts.at(i).parent;
        m_readers.push_back(parent >= 0 && !zoHPCGrammar::element(tag(parent)) ? m_readers[size_t(parent)]
                                                                               : parent);
        if (parts.at(i).kind == PartKind::Element)
            checkElement(i);
        else if (parts.at(i).kind == PartKind::Text)
            checkStrayText(parts.at(i));
    }
    sort();
}

void zoHPCTextCheck::add(Kind kind, int offset, const QString& message, const QString& fixText)
{
    m_findings.push_back({kind, offset, message, fixText});
}

void zoHPCTextCheck::sort()
{
    std::stable_sort(m_findings.begin(), m_findings.end(),
                     [](const Finding& a, const Finding& b) { return a.offset < b.offset; });
}

QString zoHPCTextCheck::tag(int part) const
{
    const auto meant = m_tags.constFind(part);
    return meant == m_tags.constEnd() ? m_parts.parts().at(part).tag : *meant;
}

void zoHPCTextCheck::checkElement(int part)
{
    const Part& element = m_parts.parts().at(part);
    if (!checkTag(part, element))
        return;
    const zoHPCGrammar::Element& rules = *zoHPCGrammar::element(tag(part));
    const int reader = m_readers[size_t(part)];
    const QString parent = reader < 0 ? QString() : tag(reader);
    checkPlace(part, rules, parent);
    // An element in one of its kind is a tile, which is computed anew whatever the text says.
    if (parent != rules.tag)
        checkAttributes(part, rules);
}

// Whether it is, or was meant to be, an element that somebody reads.
bool zoHPCTextCheck::checkTag(int part, const Part& element)
{
    if (zoHPCGrammar::element(element.tag))
        return true;
    const int reader = m_readers[size_t(part)];
    QString meant;
    if (reader >= 0)
        meant = zoHPCSuggestion::closest(element.tag, childrenOf(tag(reader)));
    if (meant.isEmpty()) {
        add(Kind::UnknownElement, element.offset,
            tr("No configuration has an element \"%1\".").arg(shortened(element.tag)));
        m_isStructureDoubtful = true;
        return false;
    }
    add(Kind::UnknownElement, element.offset,
        tr("No configuration has an element \"%1\": did you mean \"%2\"?").arg(element.tag, meant));
    m_tags.insert(part, meant);
    m_changes.push_back({part, {}, meant, {}});
    return true;
}

void zoHPCTextCheck::checkPlace(int part, const zoHPCGrammar::Element& element, const QString& parent)
{
    const int offset = m_parts.parts().at(part).offset;
    const bool belongs = parent.isEmpty() ? element.parents.isEmpty() : element.parents.contains(parent);
    if (!belongs) {
        m_isStructureDoubtful = true;
        add(Kind::MisplacedElement, offset,
            parent.isEmpty()
                ? tr("\"%1\" is no root element.").arg(element.tag)
                : tr("\"%1\" has no place in \"%2\": it belongs in %3.")
                      .arg(element.tag, parent,
                           element.parents.isEmpty()
                               ? tr("no element")
                               : listed(element.parents).replace(QLatin1String("\", \""), tr("\" or \""))));
    }
    if (!element.isSingle)
        return;
    if (belongs && m_singles.contains(element.tag))
        add(Kind::MisplacedElement, offset, tr("There is a second \"%1\".").arg(element.tag));
    m_singles.insert(element.tag);
}

void zoHPCTextCheck::checkAttributes(int part, const zoHPCGrammar::Element& element)
{
    const Part& text = m_parts.parts().at(part);
    QSet<QString> given;
    QString word;
    for (const zoHPCTextParts::Attribute& attribute : text.attributes) {
        given.insert(attribute.name);
        if (attribute.name == element.selector)
            word = attribute.value;
    }
    zoHPCGrammar::Variant variant{word, element.attributes(word)};
    // With the type that was meant: the other attributes belong to that.
    if (const zoHPCGrammar::Attribute* selector = variant.attribute(element.selector)) {
        const QString meant = zoHPCValueGuess::find(*selector, word);
        if (!element.variant(word) && !meant.isEmpty()) {
            checkValue(part, *selector, *text.attribute(element.selector));
            variant = {meant, element.attributes(meant)};
            variant.attributes.erase(
                std::remove_if(variant.attributes.begin(), variant.attributes.end(),
                               [&](const auto& each) { return each.name == element.selector; }),
                variant.attributes.end());
            given.insert(element.selector);
        }
    }
    QSet<QString> seen;
    for (const zoHPCTextParts::Attribute& attribute : text.attributes) {
        if (seen.contains(attribute.name)) {
            add(Kind::RepeatedAttribute, attribute.offset,
                tr("\"%1\" has the attribute \"%2\" twice: the last one counts.")
                    .arg(element.tag, attribute.name));
            continue;
        }
        seen.insert(attribute.name);
        if (const zoHPCGrammar::Attribute* rule = variant.attribute(attribute.name))
            checkValue(part, *rule, attribute);
        else if (attribute.name != element.selector)
            checkUnknownAttribute(part, element, variant, attribute, given);
    }
    for (const zoHPCGrammar::Attribute& rule : variant.attributes) {
        if (!rule.isRequired || given.contains(rule.name))
            continue;
        add(Kind::MissingAttribute, text.offset,
            tr("\"%1\" has no attribute \"%2\".").arg(element.tag, rule.name));
        setDoubtful(part);
    }
}

void zoHPCTextCheck::checkUnknownAttribute(int part, const zoHPCGrammar::Element& element,
                                           const zoHPCGrammar::Variant& variant,
                                           const zoHPCTextParts::Attribute& attribute, QSet<QString>& given)
{
    QStringList candidates;
    for (const zoHPCGrammar::Attribute& rule : variant.attributes) {
        if (!given.contains(rule.name))
            candidates << rule.name;
    }
    const QString who = element.selector.isEmpty() || variant.word.isEmpty() ? element.tag : variant.word;
    const QString name = shortened(attribute.name);
    const QString meant = zoHPCSuggestion::closest(attribute.name, candidates);
    if (!meant.isEmpty()) {
        add(Kind::UnknownAttribute, attribute.offset,
            tr("\"%1\" has no attribute \"%2\": did you mean \"%3\"?").arg(who, name, meant));
        given.insert(meant);
        // A value that cannot be read may wait until the name is mended.
        if (variant.attribute(meant)->accepts(attribute.value))
            m_changes.push_back({part, attribute.name, meant, attribute.value});
        else
            setDoubtful(part);
        return;
    }
    const QString owner = ownerOf(attribute.name);
    add(Kind::UnknownAttribute, attribute.offset,
        owner.isEmpty() ? tr("\"%1\" has no attribute \"%2\".").arg(who, name)
                        : tr("\"%1\" has no attribute \"%2\"; \"%3\" has it.").arg(who, name, owner));
}

void zoHPCTextCheck::checkValue(int part, const zoHPCGrammar::Attribute& rule,
                                const zoHPCTextParts::Attribute& attribute)
{
    const QString& value = attribute.value;
    if (!attribute.isWhole || rule.accepts(value))
        return;
    const bool isNumber = rule.type == Type::Integer || rule.type == Type::Number;
    const bool isVersion =
        rule.name == zoClusterTags::VersionAttribute && tag(part) == zoClusterTags::Cluster;
    if (isVersion && value.toInt() > zoClusterTags::Version) {
        add(Kind::LaterVersion, attribute.valueOffset,
            tr("The configuration is of version %1, this program reads up to version %2.")
                .arg(value.trimmed(), QString::number(zoClusterTags::Version)));
        return;
    }
    const QString subject = zoText("%1=\"%2\"").arg(rule.name, shortened(value));
    const QString meant = zoHPCValueGuess::find(rule, value);
    if (!meant.isEmpty())
        m_changes.push_back({part, rule.name, rule.name, meant});
    else
        setDoubtful(part);
    const Kind kind = isNumber && rule.isNumber(value)             ? Kind::NumberOutOfRange
                      : isNumber || isVersion                      ? Kind::UnreadNumber
                      : rule.type == Type::Word && rule.mayBeEmpty ? Kind::UnknownOptionValue
                                                                   : Kind::UnknownValue;
    QString message;
    if (kind == Kind::NumberOutOfRange)
        message = rule.most == std::numeric_limits<int>::max()
                      ? tr("%1: it is at least %2.").arg(subject, QString::number(rule.least))
                      : tr("%1: it is from %2 to %3.")
                            .arg(subject, QString::number(rule.least), QString::number(rule.most));
    else if (!meant.isEmpty())
        message = tr("%1: did you mean \"%2\"?").arg(subject, meant);
    else if (isNumber)
        message = rule.type == Type::Integer ? tr("%1 is no whole number.").arg(subject)
                                             : tr("%1 is no number.").arg(subject);
    else
        message =
            tr("%1: it is one of %2.")
                .arg(subject, listed(rule.type == Type::Word ? rule.words
                                                             : QStringList{QString::fromLatin1("true"),
                                                                           QString::fromLatin1("false")}));
    add(kind, attribute.valueOffset, message);
}

void zoHPCTextCheck::checkStrayText(const Part& part)
{
    const int end = m_parts.text().indexOf(QLatin1Char('<'), part.offset + 1);
    add(Kind::StrayText, part.offset,
        tr("Nobody reads the text \"%1\".")
            .arg(shortened(
                m_parts.text().mid(part.offset, (end < 0 ? m_parts.text().size() : end) - part.offset))));
}

bool zoHPCTextCheck::mend(QDomDocument& document) const
{
    if (m_changes.empty())
        return false;
    // The elements in their order; with entities of its own a document has others.
    std::vector<QDomElement> elements;
    QDomElement next = document.documentElement();
    while (!next.isNull()) {
        elements.push_back(next);
        QDomElement following = next.firstChildElement();
        while (following.isNull() && !next.isNull()) {
            following = next.nextSiblingElement();
            next = next.parentNode().toElement();
        }
        next = following;
    }
    std::vector<int> parts;
    for (int i = 0; i < m_parts.parts().size(); ++i) {
        if (m_parts.parts().at(i).kind == PartKind::Element)
            parts.push_back(i);
    }
    if (elements.size() != parts.size())
        return false;
    for (const Change& change : m_changes) {
        const auto at = std::lower_bound(parts.begin(), parts.end(), change.part) - parts.begin();
        QDomElement element = elements[size_t(at)];
        if (change.name.isEmpty()) {
            element.setTagName(change.newName);
        } else {
            element.removeAttribute(change.name);
            element.setAttribute(change.newName, change.newValue);
        }
    }
    return true;
}
