#pragma once

#include <QString>
#include <QVector>

// The parts of a document's text and where they stand, in the order of the text. What QDom reads is read, also what
// stricter readers refuse, such as attributes given twice; for texts that zoClusterXml::read() takes.
class zoHPCTextParts final
{
public:
    enum class Kind { Element, Text, Comment, Instruction };

    struct Attribute
    {
        QString name;
        QString value;
        int offset = 0;      // of the name in the text
        int valueOffset = 0; // of what is between the quotation marks
        bool isWhole = true; // false for a value with entities of the document's own, which stand as they are
    };

    struct Part
    {
        Kind kind = Kind::Element;
        int offset = 0;   // of the "<", or of the first character that is no blank
        int parent = -1;  // the element around it; -1 at the top
        int closing = -1; // offset of the end tag; -1 without one
        QString tag;      // of an element
        QVector<Attribute> attributes;

        // The last one of that name, which is the one that counts; null without one.
        const Attribute* attribute(const QString& name) const;
        QString value(const QString& name) const;
    };

    struct Place
    {
        int line = 1; // from 1
        int column = 1;
    };

    explicit zoHPCTextParts(const QString& text);

    const QVector<Part>& parts() const { return m_parts; }
    const QString& text() const { return m_text; }
    Place place(int offset) const;

private:
    void readMarkup();
    void readStartTag();
    void readEndTag();
    void readText();
    int readAttributes(int from, Part& part) const;
    QString decoded(int from, int to, bool& isWhole) const;
    int skipDocumentType(int from) const;
    QChar at(int offset) const { return offset < m_text.size() ? m_text.at(offset) : QChar(); }
    // Behind the mark; the end of the text without one.
    int behind(const char* mark, int from) const;
    void add(Kind kind, int offset);

    QString m_text;
    int m_at = 0;
    QVector<Part> m_parts;
    QVector<int> m_open;
    QVector<int> m_lines; // where each begins
};
