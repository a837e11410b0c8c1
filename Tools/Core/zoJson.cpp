#include "zoJson.h"

#include <QJsonDocument>

#include <algorithm>

QByteArray zoJson::text(const QJsonArray& list)
{
    // One document: one for each entry of a long list takes twice the time of the whole command.
    const QByteArray compact = QJsonDocument(list).toJson(QJsonDocument::Compact);
    QByteArray text;
    text.reserve(compact.size() + 2 * list.size() + 1);
    int depth = 0;
    bool isString = false;
    bool isEscaped = false;
    for (const char c : compact) {
        text += c;
        if (isEscaped)
            isEscaped = false;
        else if (c == '"')
            isString = !isString;
        else if (isString)
            isEscaped = c == '\\';
        else if (c == '[' || c == '{')
            ++depth;
        else if (c == ']' || c == '}')
            --depth;
        else if (c == ',' && depth == 1)
            text += "\n ";
    }
    return text + '\n';
}

QByteArray zoJson::text(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QByteArray zoJson::quoted(const QString& text)
{
    // A document for each of millions of values takes seconds.
    if (std::all_of(text.begin(), text.end(), [](QChar c) {
            return c >= QLatin1Char(' ') && c <= QLatin1Char('~') && c != QLatin1Char('"') &&
                   c != QLatin1Char('\\');
        }))
        return '"' + text.toLatin1() + '"';
    // Documents hold lists and objects only.
    const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}
