#include "zoFuzzing.h"

#include <zoServerMessageReader.h>

#include <vector>

// Messages of servers: a stream gives the same messages in whatever pieces it comes, and what was read is
// written as it came.

namespace
{
using Start = zoServerMessageReader::Start;

QByteArray read(const QByteArray& stream, Start start, int piece)
{
    zoServerMessageReader reader(start);
    QByteArray written;
    for (int i = 0; i < stream.size(); i += piece) {
        reader.feed(stream.mid(i, piece));
        zoServerMessage message;
        while (reader.next(message) == zoServerMessageReader::Outcome::Message)
            written += message.encoded();
    }
    return written;
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray stream(reinterpret_cast<const char*>(data), int(size));
    for (const Start start : {Start::AtOnce, Start::AfterNoise}) {
        const QByteArray whole = read(stream, start, stream.size() + 1);
        zoFuzzing::require(whole == read(stream, start, 1), "pieces give the same messages");
        zoFuzzing::require(stream.contains(whole) || start == Start::AtOnce,
                           "messages are written as they came");
        zoFuzzing::require(stream.startsWith(whole) || start == Start::AfterNoise, "from the first on");
        zoFuzzing::require(read(whole, Start::AtOnce, 3) == whole, "and read back the same");
    }
    return 0;
}
