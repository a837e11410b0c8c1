#pragma once

#include <QChar>
#include <QCoreApplication>
#include <QString>
#include <QStringView>

#include <vector>

// Finds what nobody means who types hosts text or the bracket form. The cluster window reads on over such places
// and drops what it does not know; a script would go on with hosts that nobody asked for.
class zoHPCHostsSyntax final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCHostsSyntax)

public:
    struct Problem
    {
        int offset; // in the text; -1 for none
        QString reason;
    };

    // Names as they stand are words with brackets of numbers; all else may be part of a name.
    enum class Form { HostsText, Names };

    // The first mistake from the left.
    static Problem firstProblem(const QString& text, Form form);

private:
    struct Brace
    {
        QChar opening;
        int offset;
    };

    zoHPCHostsSyntax(const QString& text, Form form);

    bool readAll();
    bool readWord();
    bool readBlocks();
    bool readBlock(int end);
    bool readOptions(int begin, int end);
    bool readBrace();
    bool readForwards(int begin, int end);
    bool refuseWord(int begin, QStringView word);
    bool fail(int offset, const QString& reason);

    const QStringView m_text;
    const Form m_form;
    int m_position = 0;
    std::vector<Brace> m_braces;
    bool m_canOpen = true; // whether a brace here opens a network
    Problem m_problem = {-1, QString()};
};
