#include "zoServerMessage.h"

#include <QJsonDocument>

zoServerMessage zoServerMessage::of(const QByteArray& verb, const QJsonObject& object)
{
    return {verb, QJsonDocument(object).toJson(QJsonDocument::Compact)};
}

QJsonObject zoServerMessage::object() const
{
    return QJsonDocument::fromJson(payload).object();
}

QByteArray zoServerMessage::encoded() const
{
    if (payload.size() > MaximumPayload)
        return {};
    QByteArray bytes;
    bytes.reserve(verb.size() + payload.size() + 16);
    bytes += verb;
    bytes += ' ';
    bytes += QByteArray::number(payload.size());
    bytes += '\n';
    bytes += payload;
    bytes += '\n';
    return bytes;
}
