#pragma once

#include <QString>
#include <QStringList>

// Turns the template with which programs are started on other machines into lists of arguments. Nothing here
// passes through a shell of this machine; what the shell of another one reads holds no character that it minds.
class zoLauncher final
{
public:
    static constexpr char DefaultTemplate[] = "ssh -T -o BatchMode=yes -o ConnectTimeout=3 %h %program";

    // Splits the text at blanks; quotes keep them. Empty, with a reason, unless the first word is a program
    // and the others hold %h and, last, %program.
    static QStringList fromText(const QString& text, QString& reason);

    // Whether the name can be one of a machine, or an address. One that begins with "-" would be an option.
    static bool isHostName(const QString& name);

    explicit zoLauncher(QStringList words = {}); // as fromText() gives them

    // The command that runs `program` (the program and its arguments) on a host. Hosts may lie behind each
    // other: the first one is reached from here, the last one is where the program runs. Empty, with a
    // reason, for a name or a program that cannot be passed on.
    QStringList command(const QStringList& hosts, const QStringList& program, QString& reason) const;

    // What opens a connection to a host that follows it; empty when the template has anything between host and
    // program.
    QStringList agent() const;

private:
    QStringList m_words;
};
