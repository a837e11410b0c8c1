#include "zoHPCSchema.h"

#include "zoHPCGrammar.h"
#include "zoText.h"

#include <zoClusterTags.h>

#include <QStringList>
#include <QXmlStreamWriter>

#include <limits>
#include <utility>
#include <vector>

namespace
{
using GrammarAttribute = zoHPCGrammar::Attribute;
using Type = zoHPCGrammar::Type;

// A pattern of the schema, which both syntaxes write.
struct Pattern
{
    enum class Kind {
        Element,
        Attribute,
        Group,
        Interleave,
        Choice,
        Optional,
        ZeroOrMore,
        Reference,
        Word,
        Data,
        Text
    };

    Kind kind;
    QStringList names; // of the element or of the attributes, the reference, the word or the data type
    std::vector<std::pair<QString, QString>> limits; // of the data type
    std::vector<Pattern> parts;
};

using Kind = Pattern::Kind;

struct Definition
{
    QString name;
    QString remark;
    Pattern pattern;
};

Pattern make(Kind kind, const QString& name, std::vector<Pattern> parts = {})
{
    return {kind, {name}, {}, std::move(parts)};
}

Pattern combined(Kind kind, std::vector<Pattern> parts)
{
    return parts.size() == 1 ? parts.front() : Pattern{kind, {}, {}, std::move(parts)};
}

Pattern words(const QStringList& words)
{
    std::vector<Pattern> choices;
    for (const QString& word : words)
        choices.push_back(make(Kind::Word, word));
    return combined(Kind::Choice, choices);
}

Pattern limited(const char* type, std::vector<std::pair<QString, QString>> limits)
{
    return {Kind::Data, {QString::fromLatin1(type)}, std::move(limits), {}};
}

Pattern valueOf(const GrammarAttribute& attribute)
{
    Pattern value = make(Kind::Text, {});
    switch (attribute.type) {
    case Type::Text:
        return value;
    case Type::Number:
        value = make(Kind::Reference, zoText("number"));
        break;
    case Type::Truth:
        value = make(Kind::Reference, zoText("truth"));
        break;
    case Type::OptionTruth:
        value = words({zoText("true"), zoText("false")});
        break;
    case Type::Word:
        value = words(attribute.words);
        break;
    case Type::Integer: {
        std::vector<std::pair<QString, QString>> limits;
        if (attribute.least != std::numeric_limits<int>::min())
            limits.emplace_back(zoText("minInclusive"), QString::number(attribute.least));
        if (attribute.most != std::numeric_limits<int>::max())
            limits.emplace_back(zoText("maxInclusive"), QString::number(attribute.most));
        value = limited("int", limits);
        break;
    }
    }
    if (!attribute.mayBeEmpty)
        return value;
    std::vector<Pattern> choices{make(Kind::Word, zoText(""))};
    if (value.kind == Kind::Choice)
        choices.insert(choices.end(), value.parts.begin(), value.parts.end());
    else
        choices.push_back(value);
    return combined(Kind::Choice, choices);
}

// Attributes that may be missing and hold the same are one pattern: validators that try every optional attribute with and
// without would take a time that doubles with each of them.
std::vector<Pattern> attributesOf(const std::vector<GrammarAttribute>& attributes)
{
    std::vector<Pattern> patterns;
    std::vector<bool> isDone(attributes.size(), false);
    for (size_t i = 0; i < attributes.size(); ++i) {
        if (isDone[i])
            continue;
        Pattern pattern{Kind::Attribute, {attributes[i].name}, {}, {valueOf(attributes[i])}};
        for (size_t k = i + 1; k < attributes.size() && !attributes[i].isRequired; ++k) {
            const GrammarAttribute& other = attributes[k];
            if (isDone[k] || other.isRequired || other.type != attributes[i].type ||
                other.words != attributes[i].words || other.least != attributes[i].least ||
                other.most != attributes[i].most || other.mayBeEmpty != attributes[i].mayBeEmpty)
                continue;
            pattern.names << other.name;
            isDone[k] = true;
        }
        if (!attributes[i].isRequired) {
            const Kind kind = pattern.names.size() > 1 ? Kind::ZeroOrMore : Kind::Optional;
            pattern = Pattern{kind, {}, {}, {pattern}};
        }
        patterns.push_back(pattern);
    }
    return patterns;
}

Definition definitionOf(const zoHPCGrammar::Element& element)
{
    std::vector<Pattern> variants;
    for (const zoHPCGrammar::Variant& variant : element.variants)
        variants.push_back(combined(Kind::Group, attributesOf(variant.attributes)));
    std::vector<Pattern> parts;
    if (variants.size() == 1 && variants.front().kind == Kind::Group)
        parts = variants.front().parts;
    else
        parts.push_back(combined(Kind::Choice, variants));
    std::vector<Pattern> children;
    for (const zoHPCGrammar::Element& child : zoHPCGrammar::elements()) {
        if (!child.parents.contains(element.tag))
            continue;
        const QString reference = child.tag == element.tag ? zoText("computed") : child.tag;
        children.push_back(
            {child.isSingle ? Kind::Optional : Kind::ZeroOrMore, {}, {}, {make(Kind::Reference, reference)}});
    }
    if (!children.empty())
        parts.push_back(combined(Kind::Interleave, children));
    return {element.tag, {}, Pattern{Kind::Element, {element.tag}, {}, parts}};
}

std::vector<Definition> definitions()
{
    std::vector<Definition> all;
    for (const zoHPCGrammar::Element& element : zoHPCGrammar::elements())
        all.push_back(definitionOf(element));
    all.push_back(
        {zoText("computed"), zoText("A tile, which is computed anew when it is read, whatever it says."),
         Pattern{
             Kind::Element,
             {zoClusterTags::Projection},
             {},
             {Pattern{Kind::ZeroOrMore, {}, {}, {make(Kind::Attribute, zoText("*"), {make(Kind::Text, {})})}},
              Pattern{Kind::ZeroOrMore, {}, {}, {make(Kind::Reference, zoText("computed"))}}}}});
    const QString most = zoText("1.7976931348623157e308");
    all.push_back(
        {zoText("number"), zoText("With a decimal point, in millimetres where it is a length."),
         limited("double", {{zoText("pattern"),
                             zoText("\\s*[+\\-]?([0-9]+(\\.[0-9]*)?|\\.[0-9]+)([eE][+\\-]?[0-9]+)?\\s*")},
                            {zoText("minInclusive"), QLatin1Char('-') + most},
                            {zoText("maxInclusive"), most}})});
    all.push_back(
        {zoText("truth"), zoText("Written as one of the two words, read in any case and as 1 and 0."),
         combined(Kind::Choice,
                  {make(Kind::Word, zoText("true")), make(Kind::Word, zoText("false")),
                   limited("string",
                           {{zoText("pattern"), zoText("[tT][rR][uU][eE]|[fF][aA][lL][sS][eE]|[01]")}})})});
    return all;
}

const char* const s_title =
    "Configurations of clusters (.zhpc). Written from the grammar of the program: see dev/schema.";

// The compact syntax.
class CompactWriter final
{
public:
    QString write()
    {
        m_text =
            zoText(
                "# %1\n\ndatatypes xsd = \"http://www.w3.org/2001/XMLSchema-datatypes\"\n\nstart = cluster\n")
                .arg(QString::fromLatin1(s_title));
        for (const Definition& definition : definitions()) {
            m_text += QLatin1Char('\n');
            if (!definition.remark.isEmpty())
                m_text += zoText("# %1\n").arg(definition.remark);
            m_text += definition.name + QLatin1String(" =\n");
            write(definition.pattern, 1);
            m_text += QLatin1Char('\n');
        }
        return m_text;
    }

private:
    void write(const Pattern& pattern, int depth)
    {
        indent(depth);
        switch (pattern.kind) {
        case Kind::Element:
            m_text += zoText("element %1 {\n").arg(pattern.names.first());
            writeParts(pattern, QLatin1String(","), depth + 1);
            m_text += QLatin1Char('\n');
            indent(depth);
            m_text += QLatin1Char('}');
            break;
        case Kind::Group:
            writeBracketed(pattern, QLatin1String(","), depth);
            break;
        case Kind::Interleave:
            writeBracketed(pattern, QLatin1String(" &"), depth);
            break;
        case Kind::Choice:
            writeBracketed(pattern, QLatin1String(" |"), depth);
            break;
        default:
            m_text += inLine(pattern);
        }
    }

    void writeBracketed(const Pattern& pattern, QLatin1String separator, int depth)
    {
        m_text += QLatin1String("(\n");
        writeParts(pattern, separator, depth + 1);
        m_text += QLatin1Char('\n');
        indent(depth);
        m_text += QLatin1Char(')');
    }

    void writeParts(const Pattern& pattern, QLatin1String separator, int depth)
    {
        for (size_t i = 0; i < pattern.parts.size(); ++i) {
            if (i > 0)
                m_text += separator + QLatin1Char('\n');
            write(pattern.parts[i], depth);
        }
    }

    // What fits into a line.
    static QString inLine(const Pattern& pattern)
    {
        QStringList parts;
        for (const Pattern& part : pattern.parts)
            parts << inLine(part);
        const QString first = pattern.names.isEmpty() ? QString() : pattern.names.first();
        switch (pattern.kind) {
        case Kind::Attribute:
            return zoText("attribute %1 { %2 }")
                .arg(pattern.names.size() > 1
                         ? QLatin1Char('(') + pattern.names.join(QLatin1String(" | ")) + QLatin1Char(')')
                         : first,
                     parts.first());
        case Kind::Optional:
            return parts.first() + QLatin1Char('?');
        case Kind::ZeroOrMore:
            return parts.first() + QLatin1Char('*');
        case Kind::Choice:
            return parts.join(QLatin1String(" | "));
        case Kind::Word:
            return zoText("string \"%1\"").arg(first);
        case Kind::Data:
            return QLatin1String("xsd:") + first + limitsOf(pattern);
        case Kind::Text:
            return zoText("text");
        default:
            return first;
        }
    }

    static QString limitsOf(const Pattern& pattern)
    {
        if (pattern.limits.empty())
            return {};
        QStringList limits;
        for (const auto& limit : pattern.limits)
            limits << zoText("%1 = \"%2\"").arg(limit.first, limit.second);
        return QLatin1String(" { ") + limits.join(QLatin1Char(' ')) + QLatin1String(" }");
    }

    void indent(int depth) { m_text += QString(2 * depth, QLatin1Char(' ')); }

    QString m_text;
};

// The XML syntax.
class XmlWriter final
{
public:
    QString write()
    {
        m_writer.setAutoFormatting(true);
        m_writer.setAutoFormattingIndent(1);
        m_writer.writeStartDocument();
        m_writer.writeComment(QLatin1Char(' ') + QString::fromLatin1(s_title) + QLatin1Char(' '));
        m_writer.writeStartElement(zoText("grammar"));
        m_writer.writeDefaultNamespace(zoText("http://relaxng.org/ns/structure/1.0"));
        m_writer.writeAttribute(zoText("datatypeLibrary"),
                                zoText("http://www.w3.org/2001/XMLSchema-datatypes"));
        m_writer.writeStartElement(zoText("start"));
        write(make(Kind::Reference, zoText("cluster")));
        m_writer.writeEndElement();
        for (const Definition& definition : definitions()) {
            if (!definition.remark.isEmpty())
                m_writer.writeComment(QLatin1Char(' ') + definition.remark + QLatin1Char(' '));
            m_writer.writeStartElement(zoText("define"));
            m_writer.writeAttribute(zoText("name"), definition.name);
            write(definition.pattern);
            m_writer.writeEndElement();
        }
        m_writer.writeEndDocument();
        return m_text;
    }

private:
    void write(const Pattern& pattern)
    {
        const QString first = pattern.names.isEmpty() ? QString() : pattern.names.first();
        switch (pattern.kind) {
        case Kind::Element:
        case Kind::Attribute:
            writeNamed(pattern);
            return;
        case Kind::Reference:
            m_writer.writeEmptyElement(zoText("ref"));
            m_writer.writeAttribute(zoText("name"), first);
            return;
        case Kind::Word:
            m_writer.writeStartElement(zoText("value"));
            m_writer.writeAttribute(zoText("type"), zoText("string"));
            m_writer.writeAttribute(zoText("datatypeLibrary"), QString());
            m_writer.writeCharacters(first);
            m_writer.writeEndElement();
            return;
        case Kind::Data:
            m_writer.writeStartElement(zoText("data"));
            m_writer.writeAttribute(zoText("type"), first);
            for (const auto& limit : pattern.limits) {
                m_writer.writeStartElement(zoText("param"));
                m_writer.writeAttribute(zoText("name"), limit.first);
                m_writer.writeCharacters(limit.second);
                m_writer.writeEndElement();
            }
            m_writer.writeEndElement();
            return;
        case Kind::Text:
            m_writer.writeEmptyElement(zoText("text"));
            return;
        case Kind::Group:
            writeParts("group", pattern);
            return;
        case Kind::Interleave:
            writeParts("interleave", pattern);
            return;
        case Kind::Choice:
            writeParts("choice", pattern);
            return;
        case Kind::Optional:
            writeParts("optional", pattern);
            return;
        case Kind::ZeroOrMore:
            writeParts("zeroOrMore", pattern);
            return;
        }
    }

    void writeNamed(const Pattern& pattern)
    {
        m_writer.writeStartElement(pattern.kind == Kind::Element ? zoText("element") : zoText("attribute"));
        if (pattern.names.first() == QLatin1String("*")) {
            m_writer.writeEmptyElement(zoText("anyName"));
        } else if (pattern.names.size() == 1) {
            m_writer.writeAttribute(zoText("name"), pattern.names.first());
        } else {
            m_writer.writeStartElement(zoText("choice"));
            for (const QString& name : pattern.names)
                m_writer.writeTextElement(zoText("name"), name);
            m_writer.writeEndElement();
        }
        for (const Pattern& part : pattern.parts)
            write(part);
        m_writer.writeEndElement();
    }

    void writeParts(const char* tag, const Pattern& pattern)
    {
        m_writer.writeStartElement(QString::fromLatin1(tag));
        for (const Pattern& part : pattern.parts)
            write(part);
        m_writer.writeEndElement();
    }

    QString m_text;
    QXmlStreamWriter m_writer{&m_text};
};
} // namespace

QString zoHPCSchema::compact()
{
    return CompactWriter().write();
}

QString zoHPCSchema::xml()
{
    return XmlWriter().write();
}
