#include "zoFuzzOutline.h"

#include "zoFuzzing.h"

#include <QStringList>

#include <algorithm>

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
} // namespace

QString zoFuzzOutline::documentOf(const QString& outline)
{
    if (outline.startsWith(QLatin1Char('<')))
        return outline;
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
        depth = std::min<int>(open.size(), std::max(depth, text.isEmpty() ? 0 : 1));
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
