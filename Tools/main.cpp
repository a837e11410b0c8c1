#include "zoCommandTable.h"
#include "zoConsole.h"
#include "zoHostsExpandCommand.h"
#include "zoHostsFoldCommand.h"
#include "zoHostsTreeCommand.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

#include <unistd.h>

namespace
{
QString tr(const char* text)
{
    return QCoreApplication::translate("zohpc", text);
}

// The commands whose name begins with `prefix`, a line each.
QString commandList(const QString& prefix = {})
{
    QString text;
    for (const zoCommandEntry& entry : zoCommandTable) {
        const QString name = QString::fromLatin1(entry.name);
        if (name.startsWith(prefix))
            text += QStringLiteral("  %1 %2\n").arg(name.leftJustified(14), tr(entry.summary));
    }
    return text;
}

QString hostsOverview()
{
    return tr("Usage: zohpc hosts COMMAND [options] ...\n"
              "Hosts text and the bracket form of other cluster tools.\n"
              "\n"
              "Commands:\n") +
           commandList(QStringLiteral("hosts ")) +
           tr("\n"
              "  zohpc hosts COMMAND --help   options and examples of a command\n");
}

QString overview()
{
    QString text = tr("Usage: zohpc COMMAND [options] ...\n"
                      "Clusters and walls in configuration files and hosts text, without a window.\n"
                      "\n"
                      "Commands:\n");
    text += commandList();
    text += tr("\n"
               "  zohpc COMMAND --help   options and examples of a command\n"
               "  zohpc --version        the version\n"
               "\n"
               "\"-\" is standard input. Exit codes: 0 fine, 1 problems found, 2 wrong usage or unreadable "
               "input.\n");
    return text;
}

std::unique_ptr<zoCommand> createCommand(const QString& name)
{
    if (name == QLatin1String("hosts expand"))
        return std::make_unique<zoHostsExpandCommand>();
    if (name == QLatin1String("hosts fold"))
        return std::make_unique<zoHostsFoldCommand>();
    if (name == QLatin1String("hosts tree"))
        return std::make_unique<zoHostsTreeCommand>();
    return nullptr;
}

// The entry that the first one or two arguments name; takes them off.
const zoCommandEntry* takeCommand(QStringList& arguments)
{
    for (const zoCommandEntry& entry : zoCommandTable) {
        const QStringList words = QString::fromLatin1(entry.name).split(QLatin1Char(' '));
        if (arguments.mid(0, words.size()) == words) {
            arguments = arguments.mid(words.size());
            return &entry;
        }
    }
    return nullptr;
}

// Becomes the program with the module's classes; returns only when that fails.
int runDocumentProgram(const QString& command, const QStringList& arguments)
{
    const QStringList words = QStringList{QStringLiteral("zohpc"), command} + arguments;
    std::vector<QByteArray> texts;
    texts.reserve(std::size_t(words.size()));
    for (const QString& word : words)
        texts.push_back(word.toLocal8Bit());
    std::vector<char*> argv;
    argv.reserve(texts.size() + 1);
    for (QByteArray& text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);

    const QByteArray program = QFile::encodeName(QCoreApplication::applicationDirPath() +
                                                 QLatin1String("/" ZO_LIBEXEC_DIR "/zohpc-document"));
    execv(program.constData(), argv.data());
    zoConsole::printError(
        tr("zohpc: %1: %2").arg(QFile::decodeName(program), QString::fromLocal8Bit(std::strerror(errno))));
    return zoConsole::Unusable;
}

int usageError(const QString& reason, const QString& help = QStringLiteral("zohpc --help"))
{
    zoConsole::printError(tr("zohpc: %1\nTry '%2'.").arg(reason, help));
    return zoConsole::Unusable;
}

bool isHelp(const QString& argument)
{
    return argument == QLatin1String("--help") || argument == QLatin1String("-h");
}

// "hosts" with none of its commands: help, or an error.
int runHosts(const QStringList& arguments)
{
    if (!arguments.isEmpty() && isHelp(arguments.constFirst()))
        return zoConsole::write(hostsOverview().toUtf8()) ? zoConsole::Fine : zoConsole::Unusable;
    return usageError(arguments.isEmpty() ? tr("hosts needs a command: expand, fold or tree")
                                          : tr("unknown command \"hosts %1\"").arg(arguments.constFirst()),
                      QStringLiteral("zohpc hosts --help"));
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zohpc"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZO_VERSION));

    QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.isEmpty())
        return usageError(tr("no command given"));
    QString first = arguments.constFirst();
    if (first == QLatin1String("help")) {
        arguments.removeFirst();
        if (!arguments.isEmpty())
            arguments << QStringLiteral("--help");
        first = arguments.isEmpty() ? QStringLiteral("--help") : arguments.constFirst();
    }
    if (isHelp(first))
        return zoConsole::write(overview().toUtf8()) ? zoConsole::Fine : zoConsole::Unusable;
    if (first == QLatin1String("--version") || first == QLatin1String("-v"))
        return zoConsole::write("zohpc " ZO_VERSION "\n") ? zoConsole::Fine : zoConsole::Unusable;

    const zoCommandEntry* entry = takeCommand(arguments);
    if (entry == nullptr && first == QLatin1String("hosts"))
        return runHosts(arguments.mid(1));
    if (entry == nullptr)
        return usageError(tr("unknown command \"%1\"").arg(first));
    if (entry->isDocumentCommand)
        return runDocumentProgram(QString::fromLatin1(entry->name), arguments);
    return createCommand(QString::fromLatin1(entry->name))->run(arguments);
}
