#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

// A line of a file with measurements, read word by word. Words end at blanks; one with blanks stands in quotation marks;
// "#" begins a comment. After the first mistake nothing more is taken.
class zoHPCSurveyLine final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCSurveyLine)

public:
    static constexpr int LongestName = 100; // characters

    // `unit` is the factor to millimetres of lengths that name no unit.
    zoHPCSurveyLine(const QString& text, double unit);

    bool isEmpty() const { return m_words.empty(); }
    bool isAtEnd() const { return m_at >= int(m_words.size()); }
    // The first mistake; empty for none.
    const QString& mistake() const { return m_mistake; }
    void setMistake(const QString& text);
    bool isGood() const { return m_mistake.isEmpty(); }

    // The next word, which `what` describes where it is missing.
    QString takeWord(const QString& what);
    // Whether the next word is this one, which is then taken.
    bool takeKeyword(const char* word);
    // A length with or without its unit, in millimetres: "3200", "3.2 m", "12in", "5520/3", "10 ft + 2 in". Of a sum
    // without any unit all is in the line's. What may be two lengths, "2,000", is a mistake.
    double takeLength();
    double takeAngle(); // degrees
    // "3600 x 2000", "3.6m x 2m", "3600x2000".
    void takeSize(double& width, double& height);
    void takeCounts(int& columns, int& rows);
    // "± 3" at the end of a line; what is given unless there is one.
    double takeTolerance(double otherwise, bool isAngle);
    // Nothing may follow.
    void end();

private:
    struct Word
    {
        QString text;
        bool isQuoted;
    };

    void addWord(const QString& text, bool isQuoted);
    QString takeSum();
    bool isTolerance() const;

    std::vector<Word> m_words;
    double m_unit;
    int m_at = 0;
    QString m_mistake;
};
