#include "zoAttributeValue.h"

#include "zoDifferences.h"
#include "zoHPCDisplayItem.h"
#include "zoHPCDisplayTables.h"
#include "zoHPCOption.h"
#include "zoHPCOptionValues.h"
#include "zoHPCProjectionItem.h"
#include "zoHPCViewportItem.h"
#include "zoHPCWindowItem.h"

#include <zoClusterTags.h>

#include <QVariant>

#include <algorithm>
#include <iterator>

namespace
{
enum class Type { Text, Whole, Number, Flag };

using P = zoHPCProjectionItem;
using D = zoHPCDisplayItem;
using W = zoHPCWindowItem;
using V = zoHPCViewportItem;

constexpr int s_projectionWholes[] = {P::RightOffsetX, P::RightOffsetY, P::Row,
                                      P::TileColumn,   P::Rows,         P::Columns};
constexpr int s_projectionFlags[] = {P::LeftWall,  P::RightWall, P::TopWall,     P::BottomWall,
                                     P::FrontWall, P::BackWall,  P::EdgeBlending};
constexpr int s_projectionTexts[] = {P::Name, P::Type};
constexpr int s_windowWholes[] = {W::Screen, W::X, W::Y, W::Width, W::Height};
constexpr int s_viewportNumbers[] = {V::X1, V::Y1, V::X2, V::Y2};

template <std::size_t Count>
bool contains(const int (&list)[Count], int column)
{
    return std::find(std::begin(list), std::end(list), column) != std::end(list);
}

// The column of the attribute; -1 for none.
int columnOf(const zoHPCTreeWidgetItem::ColumnMap& columns, const QString& attribute)
{
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const auto& column) { return column.second == attribute; });
    return found == columns.end() ? -1 : found->first;
}

Type projectionType(int column)
{
    if (column < 0 || contains(s_projectionTexts, column))
        return Type::Text;
    return contains(s_projectionWholes, column)  ? Type::Whole
           : contains(s_projectionFlags, column) ? Type::Flag
                                                 : Type::Number;
}

Type typeOf(const QString& tag, const QString& attribute)
{
    if (tag == zoClusterTags::Projection)
        return projectionType(columnOf(P::columns(QString()), attribute));
    if (tag == zoClusterTags::Display) {
        const int column = columnOf(D::columns(), attribute);
        return column == D::EyeSeparation  ? Type::Number
               : column == D::HardwareSync ? Type::Flag
                                           : Type::Text;
    }
    if (tag == zoClusterTags::Window) {
        const int column = columnOf(W::columns(), attribute);
        return contains(s_windowWholes, column) ? Type::Whole
               : column == W::FullScreen        ? Type::Flag
                                                : Type::Text;
    }
    if (tag == zoClusterTags::Viewport) {
        const int column = columnOf(V::columns(), attribute);
        return contains(s_viewportNumbers, column)        ? Type::Number
               : column == V::FlipX || column == V::FlipY ? Type::Flag
                                                          : Type::Text;
    }
    return Type::Text;
}

QString flag(bool isOn)
{
    return isOn ? QStringLiteral("true") : QStringLiteral("false");
}

// Of options of networks and nodes; they are read as exact words.
QString optionMeaning(const QString& option, const QString& text)
{
    if (option == zoHPCOption::Enabled || option == zoHPCOption::RenderNode)
        return flag(text != QLatin1String("false"));
    if (option == zoHPCOption::Encrypted || option == zoHPCOption::Homogeneous)
        return flag(text == QLatin1String("true"));
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (option == zoHPCOption::ServicePort)
        return text.isEmpty() ? QString::number(zoClusterTags::DefaultServicePort)
               : isNumber     ? QString::number(number)
                              : text;
    return option == zoHPCOption::IbPort && isNumber ? QString::number(number) : text;
}

bool isHostItem(const QString& tag)
{
    return tag == zoClusterTags::Master || tag == zoClusterTags::Network || tag == zoClusterTags::Node;
}

bool isComputed(const QDomElement& element)
{
    return element.tagName() == zoClusterTags::Projection &&
           element.parentNode().toElement().tagName() == zoClusterTags::Projection;
}

bool haveSameAttributes(const QDomElement& before, const QDomElement& after)
{
    const QStringList names = zoDifferences::attributeNames(before, after);
    return before.tagName() == after.tagName() &&
           std::all_of(names.begin(), names.end(),
                       [&](const QString& name) { return zoAttributeValue::isSame(before, after, name); });
}

QDomElement childOf(const QDomElement& element)
{
    const QDomElement child = element.firstChildElement();
    return isComputed(child) ? QDomElement() : child;
}
} // namespace

QString zoAttributeValue::meaning(const QDomElement& element, const QString& attribute)
{
    const QString tag = element.tagName();
    const QString text = element.attribute(attribute);
    if (isHostItem(tag))
        return attribute == zoClusterTags::NameAttribute ? text : optionMeaning(attribute, text);
    bool isNumber = text.isEmpty();
    switch (typeOf(tag, attribute)) {
    case Type::Whole: {
        const int number = isNumber ? 0 : text.toInt(&isNumber);
        return isNumber ? QString::number(number) : text;
    }
    case Type::Number: {
        const double number = isNumber ? 0.0 : text.toDouble(&isNumber);
        // Zero has two signs.
        return isNumber ? QString::number(number == 0.0 ? 0.0 : number, 'g', 17) : text;
    }
    case Type::Flag:
        return flag(QVariant(text).toBool());
    case Type::Text:
        break;
    }
    const bool isEye = tag == zoClusterTags::Viewport && attribute == V::columns().at(V::Eye);
    return isEye && text.isEmpty() ? QLatin1String(zoHPCDisplayTables::Eyes[0].value) : text;
}

bool zoAttributeValue::isSame(const QDomElement& before, const QDomElement& after, const QString& attribute)
{
    return before.attribute(attribute) == after.attribute(attribute) ||
           meaning(before, attribute) == meaning(after, attribute);
}

bool zoAttributeValue::isSame(const QDomElement& before, const QDomElement& after)
{
    // No recursion: networks behind gateways may be deep.
    QDomElement from = before;
    QDomElement to = after;
    while (haveSameAttributes(from, to)) {
        QDomElement nextFrom = childOf(from);
        QDomElement nextTo = childOf(to);
        while (nextFrom.isNull() && nextTo.isNull()) {
            if (from == before)
                return true;
            nextFrom = from.nextSiblingElement();
            nextTo = to.nextSiblingElement();
            from = from.parentNode().toElement();
            to = to.parentNode().toElement();
        }
        if (nextFrom.isNull() || nextTo.isNull())
            return false;
        from = nextFrom;
        to = nextTo;
    }
    return false;
}
