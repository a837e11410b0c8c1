#include "zoCheckCommand.h"
#include "zoConsole.h"
#include "zoConvertCommand.h"
#include "zoDiffCommand.h"
#include "zoDrawCommand.h"
#include "zoExportCommand.h"
#include "zoFormatCommand.h"
#include "zoNewCommand.h"
#include "zoNoServices.h"

#include <QApplication>
#include <QStringList>

#include <cstdio>
#include <cstring>
#include <memory>

namespace
{
std::unique_ptr<zoCommand> createCommand(const QString& name)
{
    if (name == QLatin1String("check"))
        return std::make_unique<zoCheckCommand>();
    if (name == QLatin1String("convert"))
        return std::make_unique<zoConvertCommand>();
    if (name == QLatin1String("diff"))
        return std::make_unique<zoDiffCommand>();
    if (name == QLatin1String("draw"))
        return std::make_unique<zoDrawCommand>();
    if (name == QLatin1String("export"))
        return std::make_unique<zoExportCommand>();
    if (name == QLatin1String("format"))
        return std::make_unique<zoFormatCommand>();
    if (name == QLatin1String("new"))
        return std::make_unique<zoNewCommand>();
    return nullptr;
}

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

    const std::unique_ptr<zoCommand> command =
        arguments.isEmpty() ? nullptr : createCommand(arguments.constFirst());
    if (command == nullptr) {
        zoConsole::printError(QStringLiteral("zohpc-document is run by zohpc"));
        return zoConsole::Unusable;
    }
    return command->run(arguments.mid(1));
}
