#include "zoCommandTable.h"
#include "zoConsole.h"
#include "zoEnvironment.h"

#include <QGuiApplication>
#include <QHash>
#include <QStringList>

#include <memory>

#include <malloc.h>

namespace
{
// Pictures need the toolkit's fonts; nothing else does, and to bring them up takes longer than a whole command.
std::unique_ptr<QCoreApplication> createApplication(bool isPainting, int& argc, char** argv)
{
    if (!isPainting)
        return std::make_unique<QCoreApplication>(argc, argv);
    // No display is needed.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Who asks for the same bytes gets them: the order of fonts in a file follows the toolkit's hashing.
    if (qEnvironmentVariableIsSet("SOURCE_DATE_EPOCH")) {
        qputenv("QT_HASH_SEED", "0");
        qSetGlobalQHashSeed(0); // Qt 6 has read the environment by now
    }
    return std::make_unique<QGuiApplication>(argc, argv);
}
} // namespace

// Run by zohpc for the commands that need the module's classes: "zohpc-document COMMAND [arguments]". Constructs no
// widget and needs no display.
int main(int argc, char** argv)
{
    zoEnvironment::settle();
    // A hundred thousand tiles are millions of small blocks, which the C library goes through and puts together each time
    // a text grows: a sixth of the time of the commands.
    mallopt(M_MXFAST, 0);

    // The toolkit would take options such as -platform out of the arguments.
    int ownCount = 1;
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const QString name = arguments.value(0);
    const zoCommandEntry* command = zoCommandTable::find(name);
    const std::unique_ptr<QCoreApplication> application =
        createApplication(command != nullptr && command->isPainting, ownCount, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zohpc"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZO_VERSION));

    if (command == nullptr) {
        zoConsole::printError(QStringLiteral("zohpc-document is run by zohpc"));
        return zoConsole::Unusable;
    }
    return command->create()->run(name, arguments.mid(1));
}
