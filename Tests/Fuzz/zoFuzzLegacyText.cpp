#include "zoFuzzConfiguration.h"
#include "zoFuzzing.h"

#include <zoHPCConfigConverter.h>
#include <zoHPCDocumentText.h>

#include <QDomDocument>
#include <QMap>
#include <QStringList>

#include <algorithm>

// Legacy texts in all four layouts: the conversion gives the same document each time, and the document loads.
//
// An input that begins with "<" is the text itself. Any other has a parameter on each line, "name=value", or
// "name:=value" for one that is kept in Base64.

namespace
{
QString legacyOf(const QString& lines)
{
    QString text = QStringLiteral("<config>");
    const QStringList list = lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : list) {
        const int equals = std::max<int>(0, line.indexOf(QLatin1Char('=')));
        QString name = line.left(equals);
        QString value = line.mid(equals + 1);
        text += QStringLiteral("\n<key");
        if (name.endsWith(QLatin1Char(':'))) {
            name.chop(1);
            value = QString::fromLatin1(value.toUtf8().toBase64());
            text += zoFuzzing::attribute(QStringLiteral("type"), QStringLiteral("QString"));
        }
        text += zoFuzzing::attribute(QStringLiteral("name"), name) + QLatin1Char('>') +
                zoFuzzing::escaped(value) + QLatin1String("</key>");
    }
    return text + QLatin1String("\n</config>");
}

// The parameters as the format defines them.
QMap<QString, QString> parametersOf(const QString& text)
{
    QDomDocument document;
    zoHPCDocumentText::Refusal refusal;
    zoHPCDocumentText::parse(text, document, refusal);
    const QDomNodeList keys = document.elementsByTagName(QStringLiteral("key"));
    QMap<QString, QString> parameters;
    for (int i = 0; i < keys.size(); ++i) {
        const QDomElement key = keys.at(i).toElement();
        QString value = key.text();
        if (key.attribute(QStringLiteral("type")) == QLatin1String("QString")) {
            const QByteArray bytes = QByteArray::fromBase64(value.toLatin1().constData());
            value = bytes.isNull() ? QString() : QString::fromUtf8(bytes.constData());
        }
        parameters.insert(key.attribute(QStringLiteral("name")), value);
    }
    return parameters;
}

int nesting(const QString& text)
{
    return text.count(QLatin1String("<key"));
}

void checkConversion(const QString& text)
{
    zoHPCConfigConverter converter;
    const QString document = converter.convert(text);
    zoHPCConfigConverter again;
    zoFuzzing::requireSame(again.convert(text), document, "the same text converts to the same document");
    zoFuzzing::require(again.remarks() == converter.remarks(), "with the same remarks");

    QDomDocument parsed;
    zoHPCDocumentText::Refusal refusal;
    zoFuzzing::require(zoHPCDocumentText::parse(document, parsed, refusal), "a conversion gives a document",
                       refusal.reason + QLatin1Char('\n') + document);
    const QDomElement root = parsed.documentElement();
    zoFuzzing::require(!root.firstChildElement(QStringLiteral("master"))
                               .firstChildElement(QStringLiteral("network"))
                               .isNull() &&
                           !root.firstChildElement(QStringLiteral("display")).isNull(),
                       "a conversion gives both sections", document);
    if (zoFuzzConfiguration::isSmall(document))
        zoFuzzConfiguration::check(document);
}

// The text with one more parameter, which wins over an earlier one of that name.
QString withProjectionType(const QString& text, const char* type)
{
    QString result = text;
    const int end = result.lastIndexOf(QLatin1String("</"));
    return result.insert(
        qMax(0, end),
        QStringLiteral("<key name=\"zoClusterProjectionType\">%1</key>").arg(QLatin1String(type)));
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QString text = zoFuzzing::textOf(data, size);
    if (!text.startsWith(QLatin1Char('<')))
        text = legacyOf(text);
    const QMap<QString, QString> parameters = parametersOf(text);
    const auto number = [&parameters](const char* key) {
        return qMax(0, parameters.value(QLatin1String(key), QStringLiteral("1")).toInt());
    };
    const bool isSmallWall =
        qint64(number("zoClusterPWRows")) * number("zoClusterPWCols") <= zoFuzzConfiguration::MaximumTiles;

    const QString type = parameters.value(QStringLiteral("zoClusterProjectionType"));
    if (isSmallWall)
        checkConversion(text);
    for (const char* const other : {"Raytracing", "Powerwall", "Custom", "Old"}) {
        const bool isWall =
            qstrcmp(other, "Powerwall") == 0 ||
            (qstrcmp(other, "Old") == 0 && parameters.value(QStringLiteral("zoClusterHosts")).isEmpty());
        if (type != QLatin1String(other) && (isSmallWall || !isWall) && !parameters.isEmpty())
            checkConversion(withProjectionType(text, other));
    }

    if (isSmallWall && nesting(text) <= zoHPCConfigConverter::MaximumNestedParameters) {
        zoHPCConfigConverter converter;
        converter.convert(text);
        zoFuzzing::require(converter.parameterCount() == parameters.size(), "all parameters are found");
    }
    return 0;
}
