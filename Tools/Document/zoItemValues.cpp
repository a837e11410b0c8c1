#include "zoItemValues.h"

#include "zoHPCOption.h"
#include "zoHPCOptionValues.h"
#include "zoItemPaths.h"

#include <zoClusterTags.h>

QStringList zoItemValues::names(const QDomElement& element)
{
    QStringList result;
    const QStringList known = zoItemPaths::attributesOf(element);
    for (const QString& name : known) {
        if (element.hasAttribute(name))
            result << name;
    }
    const QDomNamedNodeMap attributes = element.attributes();
    if (attributes.count() == result.size())
        return result;
    QStringList rest;
    for (int i = 0; i < attributes.count(); ++i) {
        const QString name = attributes.item(i).nodeName();
        if (!known.contains(name))
            rest << name;
    }
    rest.sort();
    return result + rest;
}

QString zoItemValues::value(const QDomElement& element, const QString& attribute)
{
    const QString text = element.attribute(attribute);
    return text.isEmpty() ? defaultValue(attribute) : text;
}

QString zoItemValues::defaultValue(const QString& attribute)
{
    if (attribute == zoHPCOption::Enabled || attribute == zoHPCOption::RenderNode)
        return QStringLiteral("true");
    if (attribute == zoHPCOption::Encrypted || attribute == zoHPCOption::Homogeneous)
        return QStringLiteral("false");
    if (attribute == zoHPCOption::ServicePort)
        return QString::number(zoClusterTags::DefaultServicePort);
    return QString();
}
