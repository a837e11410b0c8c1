#pragma once

#include "zoServerMessage.h"

#include <QString>

// Takes messages out of a stream of bytes that arrives in pieces. What a login script prints before the first
// HELLO is skipped when the stream comes from one.
class zoServerMessageReader final
{
public:
    enum class Start { AtOnce, AfterNoise };
    enum class Outcome { Message, Incomplete, Broken };

    // Noise in bytes that is skipped; more is no login script.
    static constexpr int MaximumNoise = 64 * 1024;
    // A HELLO is short; a line of noise that looks like one is told by this.
    static constexpr int MaximumHello = 16 * 1024;

    explicit zoServerMessageReader(Start start = Start::AtOnce);

    void feed(const QByteArray& bytes);

    // The next message. Once broken, always broken: errorString() says why.
    Outcome next(zoServerMessage& message);
    QString errorString() const { return m_error; }

    // The last line of the noise, for whoever wants to know what came instead of a HELLO.
    QString lastNoise() const { return m_lastNoise; }

private:
    struct Header
    {
        QByteArray verb;
        qint64 size = 0;
    };

    Outcome skipNoise();
    Outcome broken(const QString& reason);
    static bool readHeader(const QByteArray& line, Header& header);
    static bool isHello(const QByteArray& payload);

    QByteArray m_bytes;
    int m_position = 0; // of what was not read yet
    int m_noise = 0;    // bytes
    bool m_afterNoise;
    bool m_isBroken = false;
    QString m_error;
    QString m_lastNoise;
};
