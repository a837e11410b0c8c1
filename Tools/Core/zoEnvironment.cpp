#include "zoEnvironment.h"

#include "zoConsole.h"

#include <zoCommandLine.h>

#include <QByteArray>
#include <QList>
#include <QLoggingCategory>

#include <cstring>

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
} // namespace

void zoEnvironment::settle()
{
    zoCommandLine::holdStandardStreams();
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
