#include "zoLauncher.h"

#include <QProcess>

#include <algorithm>

namespace
{
constexpr int s_maximumName = 255;

const QString& hostPlace()
{
    static const QString place = QStringLiteral("%h");
    return place;
}

const QString& programPlace()
{
    static const QString place = QStringLiteral("%program");
    return place;
}

bool isOneOf(QChar character, const char* others)
{
    const ushort code = character.unicode();
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9') ||
           (code < 128 && QLatin1String(others).contains(character));
}

// Whether the shell of the other machine takes the word as it is.
bool isPlainWord(const QString& word)
{
    return !word.isEmpty() && std::all_of(word.begin(), word.end(),
                                          [](QChar character) { return isOneOf(character, "_-./+:=,@%"); });
}
} // namespace

QStringList zoLauncher::fromText(const QString& text, QString& reason)
{
    const QStringList words = QProcess::splitCommand(text);
    if (words.isEmpty() || words.constFirst().startsWith(QLatin1Char('-')) ||
        words.constFirst().contains(QLatin1Char('%')))
        reason = QStringLiteral("it does not begin with a program");
    else if (words.count(hostPlace()) != 1)
        reason = QStringLiteral("it needs %h once, as a word of its own, for the name of the host");
    else if (words.constLast() != programPlace() || words.count(programPlace()) != 1)
        reason = QStringLiteral("it needs %program as its last word");
    else
        return words;
    return {};
}

bool zoLauncher::isHostName(const QString& name)
{
    return !name.isEmpty() && name.size() <= s_maximumName && !name.startsWith(QLatin1Char('-')) &&
           !name.startsWith(QLatin1Char('.')) &&
           std::all_of(name.begin(), name.end(), [](QChar character) { return isOneOf(character, "_-.:"); });
}

zoLauncher::zoLauncher(QStringList words) : m_words(std::move(words)) {}

QStringList zoLauncher::command(const QStringList& hosts, const QStringList& program, QString& reason) const
{
    const auto badHost = std::find_if_not(hosts.begin(), hosts.end(), isHostName);
    if (badHost != hosts.end()) {
        reason = QStringLiteral("\"%1\" cannot be the name of a host").arg(*badHost);
        return {};
    }
    const auto badWord = std::find_if_not(program.begin(), program.end(), isPlainWord);
    if (!hosts.isEmpty() && badWord != program.end()) {
        reason =
            QStringLiteral("\"%1\" holds characters that a remote shell would not pass on").arg(*badWord);
        return {};
    }
    QStringList command = program;
    for (int i = hosts.size() - 1; i >= 0; --i) {
        QStringList outer;
        for (const QString& word : m_words) {
            if (word == programPlace())
                outer += command;
            else
                outer << (word == hostPlace() ? hosts.at(i) : word);
        }
        // Only the first machine is told by a list; the others read it as a text.
        const auto bad = i > 0 ? std::find_if_not(outer.begin(), outer.end(), isPlainWord) : outer.end();
        if (bad != outer.end()) {
            reason =
                QStringLiteral("\"%1\" holds characters that a remote shell would not pass on").arg(*bad);
            return {};
        }
        command = outer;
    }
    return command;
}

QStringList zoLauncher::agent() const
{
    const int host = m_words.indexOf(hostPlace());
    return host == m_words.size() - 2 ? m_words.mid(0, host) : QStringList();
}
