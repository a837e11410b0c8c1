#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

// Splits hosts text into its tokens in one pass: braces, "-", option blocks and hosts with their option block
// glued to them ("gw1[rt=0,a=b]").
class zoHPCHostsText final
{
public:
    explicit zoHPCHostsText(const QString& text);

    // Goes to the next token; false at the end.
    bool next();
    // Parentheses read as braces. Valid until the next call of next().
    QStringView token() const { return m_token; }
    // Where the token begins in the text.
    int offset() const;

    static QStringList tokens(const QString& text); // for tests

    // White space of the text: ASCII only.
    static bool isBlank(QChar c);
    // What a host's name ends at: blanks, separators, braces, an option block.
    static bool endsWord(QChar c);
    // Letters, digits, "-" and ".": what host names are made of.
    static bool isNameChar(QChar c);

    // What a host token names: the part before its option block without characters that names cannot have.
    static QString hostName(QStringView token);
    // The value of "rt" in the token's option block; false when there is none.
    static bool renderOption(QStringView token, QString& value);

private:
    // A stretch of the text that was moved: "forwards=" goes behind its block.
    struct Piece
    {
        int position; // in m_text
        int offset;   // in the text as it was given
    };

    static QString moveForwards(const QString& text, std::vector<Piece>& pieces);
    void readBlock(const QChar* position);

    std::vector<Piece> m_pieces; // empty: nothing was moved
    QString m_text;
    QString m_buffer;
    QStringView m_token;
    const QChar* m_begin; // of the token
    const QChar* m_position;
    const QChar* m_end;
};
