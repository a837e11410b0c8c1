#pragma once

#include "zoCommandRun.h"

#include <QByteArray>
#include <QProcess>
#include <QStringList>

#include <functional>

// Texts of a mebibyte that are meant to use up time or memory, and the run of a command on them.
namespace zoHostileText
{
constexpr int Size = 1024 * 1024;

// The text as often as it fits into a mebibyte.
inline QByteArray filled(const QByteArray& text)
{
    return text.repeated(Size / text.size());
}

// One after the other, numbered, up to a mebibyte.
inline QByteArray numbered(const std::function<QByteArray(const QByteArray&)>& part)
{
    QByteArray text;
    for (int i = 0; text.size() < Size; ++i)
        text += part(QByteArray::number(i));
    return text;
}

inline QByteArray document(const QByteArray& nodes, const QByteArray& displays = QByteArray())
{
    return "<cluster version=\"1\"><master><network>" + nodes + "</network></master>" + displays +
           "</cluster>";
}

// Within a gibibyte of memory, or as many mebibytes.
inline zoCommandRun runLimited(const QStringList& command, const QByteArray& input, int mebibytes = 1024)
{
    const QString limit = QStringLiteral("ulimit -v %1 && exec \"$0\" \"$@\"").arg(mebibytes * 1024);
    return zoCommandRun::program(QStringLiteral("/bin/sh"),
                                 QStringList{"-c", limit, QStringLiteral(ZO_ZOHPC)} + command, input,
                                 QProcess::systemEnvironment() << QStringLiteral("LC_ALL=C.UTF-8"));
}
} // namespace zoHostileText
