#include "zoRankMessage.h"

zoServerMessage zoRankMessage::packed(const QByteArray& verb) const
{
    QByteArray payload;
    for (const int rank : ranks) {
        if (!payload.isEmpty())
            payload += ' ';
        payload += QByteArray::number(rank);
    }
    payload += '\n' + message.verb + '\n' + message.payload;
    if (payload.size() > zoServerMessage::MaximumPayload)
        return {};
    return {verb, payload};
}

bool zoRankMessage::unpack(const zoServerMessage& whole)
{
    const int ranksEnd = whole.payload.indexOf('\n');
    const int verbEnd = whole.payload.indexOf('\n', ranksEnd + 1);
    if (ranksEnd < 0 || verbEnd < 0)
        return false;
    QList<int> read;
    const QList<QByteArray> texts = whole.payload.left(ranksEnd).split(' ');
    for (const QByteArray& text : texts) {
        bool ok = false;
        const int rank = text.toInt(&ok);
        if (text.isEmpty() && texts.size() == 1)
            break;
        if (!ok || rank < 0)
            return false;
        read << rank;
    }
    ranks = read;
    message.verb = whole.payload.mid(ranksEnd + 1, verbEnd - ranksEnd - 1);
    message.payload = whole.payload.mid(verbEnd + 1);
    return true;
}
