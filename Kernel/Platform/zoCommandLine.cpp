#include "zoCommandLine.h"

#include "zoQt.h"

#include <QCoreApplication>
#include <QFile>

#include <fcntl.h>
#include <unistd.h>

#include <cctype>

namespace
{
// As a shell would take it back: printable characters, other bytes as "\xff".
QString shown(const QByteArray& argument)
{
    QString text;
    for (const char c : argument) {
        const auto byte = uchar(c);
        if (byte < 0x80 && std::isprint(byte) != 0)
            text += QLatin1Char(c);
        else
            text += QStringLiteral("\\x%1").arg(byte, 2, 16, QLatin1Char('0'));
    }
    return text;
}
} // namespace

void zoCommandLine::holdStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest free number is the one that is closed, and the wrong direction fails as a closed one does.
        if (::fcntl(stream, F_GETFD) == -1)
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

QString zoCommandLine::flawOf(int argc, const char* const* argv)
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        // The decoder leaves out a byte order mark, which is text as well.
        const QByteArray text = argument.startsWith("\xef\xbb\xbf") ? argument.mid(3) : argument;
        if (QFile::encodeName(QString::fromLocal8Bit(text)) == text)
            continue;
        return QCoreApplication::translate("zoCommandLine",
                                           "the argument $'%1' is no text in the encoding of the locale "
                                           "(%2); rename the file")
            .arg(shown(argument), QString::fromLatin1(zoQt::localEncoding()));
    }
    return {};
}
