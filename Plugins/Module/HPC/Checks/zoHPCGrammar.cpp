#include "zoHPCGrammar.h"

#include "zoHPCDisplayItem.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCLayout.h"
#include "zoHPCOptionValues.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <zoClusterTags.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace
{
using Attribute = zoHPCGrammar::Attribute;
using Element = zoHPCGrammar::Element;
using Type = zoHPCGrammar::Type;
using Variant = zoHPCGrammar::Variant;

constexpr int s_mostPort = 65535;

Attribute make(const QString& name, Type type = Type::Text)
{
    Attribute attribute;
    attribute.name = name;
    attribute.type = type;
    return attribute;
}

Attribute words(const QString& name, const QStringList& values)
{
    Attribute attribute = make(name, Type::Word);
    attribute.words = values;
    return attribute;
}

template <class Table>
QStringList valuesOf(const Table& table)
{
    QStringList values;
    for (const auto& row : table)
        values << QString::fromLatin1(row.value);
    return values;
}

Attribute within(Attribute attribute, int least, int most = std::numeric_limits<int>::max())
{
    attribute.least = least;
    attribute.most = most;
    return attribute;
}

Attribute required(Attribute attribute)
{
    attribute.isRequired = true;
    return attribute;
}

// An empty option is the default.
Attribute option(Attribute attribute)
{
    attribute.mayBeEmpty = true;
    return attribute;
}

// The attributes of a section of options in the order of the text.
std::vector<Attribute> inOrder(std::vector<Attribute> attributes, size_t first)
{
    std::sort(attributes.begin() + std::ptrdiff_t(first), attributes.end(),
              [](const Attribute& a, const Attribute& b) { return a.name < b.name; });
    return attributes;
}

template <class Options>
void addWords(const Options& options, std::vector<Attribute>& attributes)
{
    for (const zoHPCOptionValues::ComboOption& combo : options) {
        QStringList values;
        for (size_t i = 0; i < combo.count; ++i) {
            if (*combo.rows[i].value)
                values << QString::fromLatin1(combo.rows[i].value);
        }
        attributes.push_back(option(words(*combo.option, values)));
    }
}

Element clusterElement()
{
    QStringList versions;
    for (int version = 0; version <= zoClusterTags::Version; ++version)
        versions << QString::number(version);
    return {
        zoClusterTags::Cluster,
        {},
        true,
        {},
        {{{}, {words(zoClusterTags::VersionAttribute, versions), make(zoClusterTags::BookingAttribute)}}}};
}

Element masterElement()
{
    std::vector<Attribute> attributes{option(make(zoHPCOption::NodesFile))};
    addWords(zoHPCOptionValues::MasterOptions, attributes);
    attributes.push_back(option(make(zoHPCOption::Homogeneous, Type::OptionTruth)));
    attributes.push_back(option(make(zoHPCOption::PixelFormat)));
    return {zoClusterTags::Master, {zoClusterTags::Cluster}, true, {}, {{{}, inOrder(attributes, 1)}}};
}

Element networkElement()
{
    std::vector<Attribute> attributes;
    addWords(zoHPCOptionValues::NetworkOptions, attributes);
    attributes.push_back(option(make(zoHPCOption::Description)));
    attributes.push_back(option(make(zoHPCOption::Enabled, Type::OptionTruth)));
    attributes.push_back(option(make(zoHPCOption::Encrypted, Type::OptionTruth)));
    attributes.push_back(option(make(zoHPCOption::IbDevice)));
    attributes.push_back(option(make(zoHPCOption::IbPort, Type::Integer)));
    attributes.push_back(option(within(make(zoHPCOption::ServicePort, Type::Integer), 1, s_mostPort)));
    return {zoClusterTags::Network,
            {zoClusterTags::Master, zoClusterTags::Node},
            false,
            {},
            {{{}, inOrder(attributes, 0)}}};
}

Element nodeElement()
{
    const std::vector<Attribute> attributes{
        required(make(zoClusterTags::NameAttribute)), option(make(zoHPCOption::Enabled, Type::OptionTruth)),
        option(make(zoHPCOption::IbDevice)), option(make(zoHPCOption::IbPort, Type::Integer)),
        option(make(zoHPCOption::RenderNode, Type::OptionTruth))};
    return {zoClusterTags::Node, {zoClusterTags::Network}, false, {}, {{{}, attributes}}};
}

// What the reader of a column makes of its text.
Type typeOfProjectionColumn(int column)
{
    using P = zoHPCProjectionColumns;
    switch (column) {
    case P::Name:
        return Type::Text;
    case P::RightOffsetX:
    case P::RightOffsetY:
    case P::Row:
    case P::TileColumn:
    case P::Rows:
    case P::Columns:
        return Type::Integer;
    case P::LeftWall:
    case P::RightWall:
    case P::TopWall:
    case P::BottomWall:
    case P::FrontWall:
    case P::BackWall:
    case P::EdgeBlending:
        return Type::Truth;
    default:
        return Type::Number;
    }
}

Element projectionElement()
{
    using P = zoHPCProjectionColumns;
    Element element{zoClusterTags::Projection,
                    {zoClusterTags::Cluster, zoClusterTags::Projection},
                    false,
                    zoHPCProjectionItem::columns(QString()).at(P::Type),
                    {}};
    for (const zoHPCProjectionType& type : zoHPCProjectionType::all()) {
        Variant variant{QString::fromLatin1(type.value), {}};
        for (const int column : type.columns) {
            const QString name = zoHPCProjectionItem::columns(QString()).at(column);
            variant.attributes.push_back(column == P::Type ? required(words(name, {variant.word}))
                                                           : make(name, typeOfProjectionColumn(column)));
        }
        // What the import of legacy configurations tells of the windows of a wall.
        if (type.kind == zoHPCProjectionType::Kind::Wall) {
            for (const QLatin1String name :
                 {zoClusterTags::OffsetXAttribute, zoClusterTags::OffsetYAttribute,
                  zoClusterTags::TileWidthAttribute, zoClusterTags::TileHeightAttribute})
                variant.attributes.push_back(make(name, Type::Number));
        }
        element.variants.push_back(variant);
    }
    return element;
}

template <class Item>
std::vector<Attribute> attributesOf(const std::map<int, Attribute>& types)
{
    std::vector<Attribute> attributes;
    for (const auto& [column, name] : Item::columns()) {
        const auto found = types.find(column);
        attributes.push_back(found == types.end() ? Attribute() : found->second);
        attributes.back().name = name;
    }
    return attributes;
}

Element displayElement()
{
    using D = zoHPCDisplayItem;
    return {zoClusterTags::Display,
            {zoClusterTags::Cluster},
            false,
            {},
            {{{},
              attributesOf<D>(
                  {{D::EyeSeparation, make({}, Type::Number)}, {D::HardwareSync, make({}, Type::Truth)}})}}};
}

Element windowElement()
{
    using W = zoHPCWindowItem;
    const Attribute integer = make({}, Type::Integer);
    return {zoClusterTags::Window,
            {zoClusterTags::Display},
            false,
            {},
            {{{},
              attributesOf<W>({{W::Screen, within(integer, zoHPCLayout::ExtendedDesktop)},
                               {W::X, integer},
                               {W::Y, integer},
                               {W::Width, integer},
                               {W::Height, integer},
                               {W::FullScreen, make({}, Type::Truth)}})}}};
}

Element viewportElement()
{
    using V = zoHPCViewportItem;
    const Attribute number = make({}, Type::Number);
    const Attribute truth = make({}, Type::Truth);
    std::vector<Attribute> attributes =
        attributesOf<V>({{V::Position, words({}, valuesOf(zoHPCDisplayTables::Positions))},
                         {V::X1, number},
                         {V::Y1, number},
                         {V::X2, number},
                         {V::Y2, number},
                         {V::FlipX, truth},
                         {V::FlipY, truth},
                         {V::Eye, words({}, valuesOf(zoHPCDisplayTables::Eyes))}});
    // What the import of legacy configurations keeps of them.
    attributes.push_back(make(zoClusterTags::RotateAttribute, Type::Number));
    return {zoClusterTags::Viewport, {zoClusterTags::Window}, false, {}, {{{}, attributes}}};
}
} // namespace

bool Attribute::hasLimits() const
{
    return least != std::numeric_limits<int>::min() || most != std::numeric_limits<int>::max();
}

bool Attribute::isNumber(const QString& value) const
{
    // The toolkit takes any blank around a number, readers of XML those of XML alone.
    const auto isOtherBlank = [](QChar c) { return c.isSpace() && c.unicode() > ' '; };
    if (std::any_of(value.begin(), value.end(), isOtherBlank))
        return false;
    bool ok = false;
    if (type == Type::Integer) {
        value.toInt(&ok);
        return ok;
    }
    return std::isfinite(value.toDouble(&ok)) && ok;
}

bool Attribute::isInLimits(const QString& value) const
{
    const int number = value.toInt();
    return type != Type::Integer || (number >= least && number <= most);
}

bool Attribute::isWord(const QString& value) const
{
    const QString lower = value.toLower();
    switch (type) {
    case Type::Truth:
        return lower == QLatin1String("true") || lower == QLatin1String("false") ||
               lower == QLatin1String("1") || lower == QLatin1String("0");
    case Type::OptionTruth:
        return value == QLatin1String("true") || value == QLatin1String("false");
    case Type::Word:
        return words.contains(value);
    default:
        return true;
    }
}

bool Attribute::accepts(const QString& value) const
{
    if (type == Type::Text || (value.isEmpty() && mayBeEmpty))
        return true;
    if (type == Type::Integer || type == Type::Number)
        return isNumber(value) && isInLimits(value);
    return isWord(value);
}

const Attribute* Variant::attribute(const QString& name) const
{
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&name](const Attribute& attribute) { return attribute.name == name; });
    return found == attributes.end() ? nullptr : &*found;
}

QStringList Variant::names() const
{
    QStringList names;
    for (const Attribute& attribute : attributes)
        names << attribute.name;
    return names;
}

const Variant* Element::variant(const QString& word) const
{
    if (selector.isEmpty())
        return &variants.front();
    const auto found = std::find_if(variants.begin(), variants.end(),
                                    [&word](const Variant& variant) { return variant.word == word; });
    return found == variants.end() ? nullptr : &*found;
}

std::vector<Attribute> Element::attributes(const QString& word) const
{
    if (const Variant* const one = variant(word))
        return one->attributes;
    Variant all;
    QStringList words;
    for (const Variant& each : variants) {
        words << each.word;
        for (const Attribute& attribute : each.attributes) {
            if (!all.attribute(attribute.name))
                all.attributes.push_back(attribute);
        }
    }
    for (Attribute& attribute : all.attributes) {
        if (attribute.name == selector)
            attribute.words = words;
    }
    return all.attributes;
}

const std::vector<Element>& zoHPCGrammar::elements()
{
    static const std::vector<Element> s_elements{clusterElement(), masterElement(),     networkElement(),
                                                 nodeElement(),    projectionElement(), displayElement(),
                                                 windowElement(),  viewportElement()};
    return s_elements;
}

const Element* zoHPCGrammar::element(const QString& tag)
{
    for (const Element& element : elements()) {
        if (element.tag == tag)
            return &element;
    }
    return nullptr;
}

QStringList zoHPCGrammar::tags()
{
    QStringList tags;
    for (const Element& element : elements())
        tags << element.tag;
    return tags;
}
