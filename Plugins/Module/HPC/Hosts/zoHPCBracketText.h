#pragma once

#include <zoClusterLimits.h>

#include <QCoreApplication>
#include <QString>
#include <QStringView>

#include <vector>

// Reads the bracket form of cluster tools, "gpu[01-16,20]-ib[0-1]": numbers with their padding, ranges,
// ranges with a step ("[1-9/2]"), several brackets in one name. Everything else of hosts text stays as it is,
// option blocks ("gw[rt=0]") too.
class zoHPCBracketText final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCBracketText)

public:
    struct Problem
    {
        int offset; // in the text
        QString reason;
    };

    // The text with each word of brackets replaced by the names that it stands for, separated by blanks. Empty
    // when the brackets cannot be read: error() tells then why.
    QString expanded(const QString& text);
    // Where a place of the expanded text comes from; the begin of its word for what was in brackets.
    int sourceOffset(int expandedOffset) const;

    bool hasError() const { return m_hasError; }
    const Problem& error() const { return m_error; }

    // Whether what stands between brackets is meant as numbers.
    static bool isRange(QStringView block);

private:
    struct Range
    {
        qint64 first;
        qint64 last;
        qint64 step;
        int width; // with zeros before the number
    };
    using Ranges = std::vector<Range>;
    struct Piece
    {
        int expandedOffset;
        int sourceOffset;
        bool isCopy; // as it stood
    };
    struct Word
    {
        std::vector<QStringView> texts; // one more than there are brackets
        std::vector<Ranges> brackets;
    };

    bool readRanges(int begin, int end, Ranges& ranges);
    bool readRange(int begin, int end, Range& range);
    bool readWord(int firstBracket, Word& word, int& end);
    int optionBlock(int place) const;
    bool appendNames(const Word& word, int offset, QString& result);
    bool fail(int offset, const QString& reason);

    QStringView m_text;
    std::vector<Piece> m_pieces; // empty: nothing was expanded
    qint64 m_count = 0;
    qint64 m_characters = 0;
    bool m_hasError = false;
    Problem m_error = {0, QString()};
};
