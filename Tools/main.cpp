#include "zoCommandTable.h"
#include "zoConsole.h"
#include "zoEnvironment.h"
#include "zoHPCSuggestion.h"

#include <zoCommandLine.h>

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <cerrno>
#include <cstring>
#include <vector>

#include <unistd.h>

namespace
{
const QLatin1String s_hosts("hosts "); // begins the names of the hosts commands

QString tr(const char* text)
{
    return QCoreApplication::translate("zohpc", text);
}

// The commands whose name begins with `prefix`, a line each.
QString commandList(const QString& prefix = {})
{
    QString text;
    for (const zoCommandEntry& entry : zoCommandTable::entries()) {
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
           commandList(s_hosts) +
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

// The entry that the first one or two arguments name; takes them off.
const zoCommandEntry* takeCommand(QStringList& arguments)
{
    for (const zoCommandEntry& entry : zoCommandTable::entries()) {
        const QStringList words = QString::fromLatin1(entry.name).split(QLatin1Char(' '));
        if (arguments.mid(0, words.size()) == words) {
            arguments = arguments.mid(words.size());
            return &entry;
        }
    }
    return nullptr;
}

// The names of the commands, a line each, for the completion of the shell.
QByteArray commandNames()
{
    QByteArray text;
    for (const zoCommandEntry& entry : zoCommandTable::entries())
        text += QByteArray(entry.name) + '\n';
    return text;
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

// What was typed, and what it may have meant: the last word of a command is enough.
QString unknownCommand(const QString& typed)
{
    if (typed.startsWith(QLatin1Char('-')))
        return tr("no command before \"%1\"; options of a command stand behind it").arg(typed);
    QStringList names;
    QString named;
    for (const zoCommandEntry& entry : zoCommandTable::entries()) {
        names << QString::fromLatin1(entry.name);
        if (names.constLast() == s_hosts + typed)
            named = names.constLast();
    }
    names << QStringLiteral("hosts");
    const QString meant = named.isEmpty() ? zoHPCSuggestion::closest(typed, names) : named;
    return meant.isEmpty() ? tr("unknown command \"%1\"").arg(typed)
                           : tr("unknown command \"%1\"; did you mean \"%2\"?").arg(typed, meant);
}

// "a, b or c"
QString listed(const QStringList& words)
{
    return tr("%1 or %2").arg(words.mid(0, words.size() - 1).join(QLatin1String(", ")), words.constLast());
}

// "hosts" with none of its commands: help, or an error.
int runHosts(const QStringList& arguments)
{
    if (!arguments.isEmpty() && isHelp(arguments.constFirst()))
        return zoConsole::write(hostsOverview().toUtf8()) ? zoConsole::Fine : zoConsole::Unusable;
    QStringList commands;
    for (const zoCommandEntry& entry : zoCommandTable::entries()) {
        const QString name = QString::fromLatin1(entry.name);
        if (name.startsWith(s_hosts))
            commands << name.mid(s_hosts.size());
    }
    return usageError(arguments.isEmpty() ? tr("hosts needs a command: %1").arg(listed(commands))
                                          : unknownCommand(s_hosts + arguments.constFirst()),
                      QStringLiteral("zohpc hosts --help"));
}
} // namespace

int main(int argc, char** argv)
{
    zoEnvironment::settle();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zohpc"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZO_VERSION));

    const QString flaw = zoCommandLine::flawOf(argc, argv);
    if (!flaw.isEmpty())
        return usageError(flaw);
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

    // Not in the overview: the completion asks for it.
    if (first == QLatin1String("--list-commands"))
        return zoConsole::write(commandNames()) ? zoConsole::Fine : zoConsole::Unusable;

    const zoCommandEntry* entry = takeCommand(arguments);
    if (entry == nullptr && first == QLatin1String("hosts"))
        return runHosts(arguments.mid(1));
    if (entry == nullptr)
        return usageError(unknownCommand(first));
    const QString name = QString::fromLatin1(entry->name);
    return entry->create == nullptr ? runDocumentProgram(name, arguments)
                                    : entry->create()->run(name, arguments);
}
