#include "zoDifferences.h"

#include "zoItemPaths.h"

#include <QCoreApplication>
#include <QDomElement>
#include <QSet>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("zoDifferences", text);
}

QStringList attributeNames(const QDomElement& element)
{
    QStringList names;
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.count(); ++i)
        names << attributes.item(i).nodeName();
    return names;
}
} // namespace

void zoDifferences::add(const QString& kind, const QString& text, Changes changes)
{
    m_list.push_back({kind, text, std::move(changes)});
}

void zoDifferences::addChange(const QString& kind, const QString& label, const QString& words,
                              const QString& before, const QString& after, Changes changes)
{
    add(kind, tr("%1: %2 changed from %3 to %4").arg(label, words, before, after), std::move(changes));
}

zoDifferences::Change zoDifferences::change(const QString& path, const QString& attribute,
                                            const QDomElement& before, const QDomElement& after)
{
    const auto value = [&](const QDomElement& element) {
        return element.hasAttribute(attribute) ? QJsonValue(element.attribute(attribute)) : QJsonValue();
    };
    return {zoItemPaths::attribute(path, attribute), value(before), value(after)};
}

QString zoDifferences::shown(const QString& value)
{
    if (value.isEmpty())
        return tr("none");
    if (value == QLatin1String("true"))
        return tr("on");
    if (value == QLatin1String("false"))
        return tr("off");
    return value;
}

QString zoDifferences::quoted(const QString& name)
{
    return name.isEmpty() ? tr("nothing") : QLatin1Char('"') + name + QLatin1Char('"');
}

QStringList zoDifferences::attributeNames(const QDomElement& before, const QDomElement& after)
{
    QStringList names = ::attributeNames(before) + ::attributeNames(after);
    names.removeDuplicates();
    names.sort();
    return names;
}

QStringList zoDifferences::common(const QStringList& keys, const QStringList& others)
{
    const QSet<QString> known(others.cbegin(), others.cend());
    QStringList result;
    for (const QString& key : keys) {
        if (known.contains(key))
            result << key;
    }
    return result;
}
