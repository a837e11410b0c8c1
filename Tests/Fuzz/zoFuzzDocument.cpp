#include "zoFuzzConfiguration.h"
#include "zoFuzzing.h"

#include <QStringList>

#include <algorithm>

// Configuration documents: a text that the window writes loads to itself, whatever text was loaded before.
//
// An input that begins with "<" is the text itself. Any other is an outline of elements, which the fuzzer
// changes without breaking the XML: a line each, "tag name=value name=value", a blank in front per level, "~"
// for a blank in a value.

namespace
{
QString nameOf(const QString& text)
{
    QString name;
    for (const QChar c : text) {
        if ((c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
            (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
            (!name.isEmpty() && c >= QLatin1Char('0') && c <= QLatin1Char('9')))
            name += c;
    }
    return name;
}

QString documentOf(const QString& outline)
{
    QString text;
    QStringList open;
    const QStringList lines = outline.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        int depth = 0;
        while (depth < line.size() && line.at(depth) == QLatin1Char(' '))
            ++depth;
        const QStringList words = line.mid(depth).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const QString tag = words.isEmpty() ? QString() : nameOf(words.constFirst());
        if (tag.isEmpty())
            continue;
        // One root.
        depth = std::min(open.size(), std::max(depth, text.isEmpty() ? 0 : 1));
        while (open.size() > depth)
            text += QLatin1String("</") + open.takeLast() + QLatin1Char('>');
        text += QLatin1Char('<') + tag;
        QStringList seen;
        for (int i = 1; i < words.size(); ++i) {
            const int equals = words.at(i).indexOf(QLatin1Char('='));
            const QString name = nameOf(words.at(i).left(equals));
            if (name.isEmpty() || seen.contains(name))
                continue;
            seen << name;
            QString value = equals < 0 ? QString() : words.at(i).mid(equals + 1);
            text += zoFuzzing::attribute(name, value.replace(QLatin1Char('~'), QLatin1Char(' ')));
        }
        text += QLatin1Char('>');
        open << tag;
    }
    while (!open.isEmpty())
        text += QLatin1String("</") + open.takeLast() + QLatin1Char('>');
    return text;
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QString text = zoFuzzing::textOf(data, size);
    if (!text.startsWith(QLatin1Char('<')))
        text = documentOf(text);
    if (zoFuzzConfiguration::isSmall(text)) {
        zoFuzzConfiguration::check(text);
        zoFuzzConfiguration::checkFixes();
    }
    return 0;
}
