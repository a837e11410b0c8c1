#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QMetaType>

// What host, controller, heads and servers say to each other: a verb and a payload. On the wire it is
// "VERB BYTES\n", that many bytes of payload, and "\n".
struct zoServerMessage final
{
    // The longest payload in bytes; a picture of a large window fits.
    static constexpr qint64 MaximumPayload = 64 * qint64(1024 * 1024);
    static constexpr int MaximumVerb = 16;

    QByteArray verb; // capital letters
    QByteArray payload;

    static zoServerMessage of(const QByteArray& verb, const QJsonObject& object);

    // The payload as an object; empty when it is none.
    QJsonObject object() const;

    // Empty when the payload is too long.
    QByteArray encoded() const;
};

Q_DECLARE_METATYPE(zoServerMessage)
