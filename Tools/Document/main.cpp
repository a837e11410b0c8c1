#include "zoCommandTable.h"
#include "zoConsole.h"
#include "zoNoServices.h"

#include <QApplication>
#include <QStringList>

#include <cstdio>
#include <cstring>

namespace
{
// What the module logs of a document goes to standard error, one line each.
void writeMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const bool isOurs = context.category != nullptr && std::strcmp(context.category, "zo") == 0;
    if (isOurs ? type != QtInfoMsg && type != QtDebugMsg : type == QtFatalMsg || type == QtCriticalMsg)
        zoConsole::printError(QStringLiteral("zohpc: ") + text);
}
} // namespace

// Run by zohpc for the commands that need the module's classes: "zohpc-document COMMAND [arguments]". Its
// widgets are never shown, so it needs no display.
int main(int argc, char** argv)
{
    qInstallMessageHandler(writeMessage);
    // Whatever the environment says.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    qunsetenv("QT_STYLE_OVERRIDE");

    // The toolkit would take options such as -style out of the arguments.
    int ownCount = 1;
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    QApplication application(ownCount, argv);
    QApplication::setApplicationName(QStringLiteral("zohpc"));
    const zoNoServices services;

    const QString name = arguments.value(0);
    const zoCommandEntry* command = zoCommandTable::find(name);
    if (command == nullptr) {
        zoConsole::printError(QStringLiteral("zohpc-document is run by zohpc"));
        return zoConsole::Unusable;
    }
    return command->create()->run(name, arguments.mid(1));
}
