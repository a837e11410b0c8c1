#pragma once

#include <zoHPCConfigConverter.h>
#include <zoHPCDocumentText.h>

#include <QDomDocument>
#include <QList>
#include <QPair>
#include <QRegularExpression>
#include <QStringList>

// Legacy texts to convert, and the parts of what comes out, for the tests of the conversion.
namespace zoLegacyParts
{
using Parameters = QList<QPair<QString, QString>>;

// The text of one parameter element; the type "QString" encodes the value.
inline QString keyElement(const QString& name, const QString& value,
                          const QString& type = QStringLiteral("int"))
{
    const bool encode = type == QLatin1String("QString");
    const QString text = encode ? QString::fromLatin1(value.toUtf8().toBase64()) : value.toHtmlEscaped();
    return QStringLiteral("<key name=\"%1\" type=\"%2\">%3</key>").arg(name.toHtmlEscaped(), type, text);
}

inline QString legacyText(const Parameters& parameters)
{
    QString text = QStringLiteral("<config>");
    for (const auto& parameter : parameters)
        text += keyElement(parameter.first, parameter.second, QStringLiteral("QString"));
    return text + QStringLiteral("</config>");
}

inline QDomDocument parsed(const QString& text)
{
    QDomDocument document;
    zoHPCDocumentText::parse(text, document);
    return document;
}

inline QRegularExpression notWellFormed()
{
    return QRegularExpression(QStringLiteral("line \\d+, column \\d+: "));
}

// Converts in a fresh converter.
inline QDomElement converted(const QString& text)
{
    return parsed(zoHPCConfigConverter().convert(text)).documentElement();
}

inline QDomElement converted(const Parameters& parameters)
{
    return converted(legacyText(parameters));
}

inline QList<QDomElement> childrenOf(const QDomElement& parent, const QString& tag = QString())
{
    QList<QDomElement> found;
    for (QDomElement e = parent.firstChildElement(tag); !e.isNull(); e = e.nextSiblingElement(tag))
        found.append(e);
    return found;
}

inline QDomElement masterOf(const QDomElement& cluster)
{
    return cluster.firstChildElement(QStringLiteral("master"));
}

inline QDomElement networkOf(const QDomElement& cluster)
{
    return masterOf(cluster).firstChildElement(QStringLiteral("network"));
}

inline QDomElement displayOf(const QDomElement& cluster)
{
    return cluster.firstChildElement(QStringLiteral("display"));
}

inline QList<QDomElement> windowsOf(const QDomElement& cluster)
{
    return childrenOf(displayOf(cluster), QStringLiteral("window"));
}

inline QList<QDomElement> projectionsOf(const QDomElement& cluster)
{
    return childrenOf(cluster, QStringLiteral("projection"));
}

// An element on one line: tag, attributes sorted, children in brackets.
inline QString lineOf(const QDomElement& element)
{
    QStringList attributes;
    const QDomNamedNodeMap map = element.attributes();
    for (int i = 0; i < map.count(); ++i)
        attributes << map.item(i).nodeName() + QLatin1Char('=') + map.item(i).nodeValue();
    attributes.sort();
    attributes.prepend(element.tagName());
    QString line = attributes.join(QLatin1Char(' '));
    const QList<QDomElement> children = childrenOf(element);
    if (children.isEmpty())
        return line;
    QStringList lines;
    for (const QDomElement& child : children)
        lines << lineOf(child);
    return line + QLatin1String(" [") + lines.join(QLatin1String("; ")) + QLatin1Char(']');
}

inline QStringList linesOf(const QList<QDomElement>& elements)
{
    QStringList lines;
    for (const QDomElement& element : elements)
        lines << lineOf(element);
    return lines;
}

inline QStringList attributesOf(const QList<QDomElement>& elements, const QString& name)
{
    QStringList values;
    for (const QDomElement& element : elements)
        values << element.attribute(name);
    return values;
}

// Eyes of the viewports of each window, for instance "left right".
inline QStringList eyesOf(const QDomElement& cluster)
{
    QStringList eyes;
    for (const QDomElement& window : windowsOf(cluster))
        eyes << attributesOf(childrenOf(window), QStringLiteral("eye")).join(QLatin1Char(' '));
    return eyes;
}

// "node x y" of each window.
inline QStringList placesOf(const QDomElement& cluster)
{
    QStringList places;
    for (const QDomElement& window : windowsOf(cluster)) {
        places << QStringList{window.attribute(QStringLiteral("node")), window.attribute(QStringLiteral("x")),
                              window.attribute(QStringLiteral("y"))}
                      .join(QLatin1Char(' '));
    }
    return places;
}

inline QStringList rectangleOf(const QDomElement& viewport)
{
    return {viewport.attribute(QStringLiteral("x1")), viewport.attribute(QStringLiteral("y1")),
            viewport.attribute(QStringLiteral("x2")), viewport.attribute(QStringLiteral("y2"))};
}

inline QStringList cornersOf(const QDomElement& plane)
{
    QStringList corners;
    for (const char* name : {"x1", "y1", "z1", "x2", "y2", "z2", "x3", "y3", "z3"})
        corners << plane.attribute(QLatin1String(name));
    return corners;
}

// A wall that gives each of the first `windows` hosts a window, to look at the lists of hosts.
inline Parameters wallOf(const QString& servers, int windows)
{
    return {{QStringLiteral("zoClusterProjectionType"), QStringLiteral("Powerwall")},
            {QStringLiteral("zoClusterPWServers"), servers},
            {QStringLiteral("zoClusterPWCols"), QString::number(windows)}};
}

inline Parameters pipesOf(const QStringList& pipes)
{
    Parameters parameters;
    for (int i = 0; i < pipes.size(); ++i)
        parameters.append({QStringLiteral("zoClusterPipe%1").arg(i), pipes.at(i)});
    return parameters;
}
} // namespace zoLegacyParts
