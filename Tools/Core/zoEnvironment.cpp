#include "zoEnvironment.h"

#include "zoConsole.h"

#include <QByteArray>
#include <QList>
#include <QLoggingCategory>

#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace
{
void writeMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool isOurs = context.category != nullptr && std::strcmp(context.category, "zo") == 0;
    if (isOurs ? type != QtInfoMsg && type != QtDebugMsg : type == QtFatalMsg || type == QtCriticalMsg)
        zoConsole::printError(QStringLiteral("zohpc: ") + text);
}

QList<QByteArray> toolkitVariables()
{
    QList<QByteArray> names;
    for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        const QByteArray text = *variable;
        if (text.startsWith("QT_") || text.startsWith("QML_") || text.startsWith("QSG_"))
            names << text.left(text.indexOf('='));
    }
    return names;
}

// Whatever is opened next would stand in for a standard stream that is closed, and be read or written over in its place.
// These end in an error for each use.
void holdClosedStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null",
                   stream == STDIN_FILENO ? O_WRONLY : O_RDONLY); // the lowest that is free: this one
    }
}
} // namespace

void zoEnvironment::settle()
{
    holdClosedStreams();
    const QList<QByteArray> names = toolkitVariables();
    for (const QByteArray& name : names)
        qunsetenv(name.constData());
    qunsetenv("LANGUAGE");
    qputenv("LC_ALL", "C.UTF-8");
    qInstallMessageHandler(writeMessage);
    // Above those of a file in the settings of the user.
    QLoggingCategory::setFilterRules(
        QStringLiteral("*.debug=false\n*.info=false\n*.warning=true\n*.critical=true"));
}
