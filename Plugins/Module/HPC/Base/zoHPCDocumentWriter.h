#pragma once

#include <QString>
#include <QStringList>

// Writes elements, attributes and text one after the other in the form of QDomDocument::toString(1).
class zoHPCDocumentWriter final
{
public:
    // Lines as people and files have them; or all on one line, for readers: the text of a deep tree does not grow with
    // the square of its depth then.
    enum class Form { Lines, OneLine };

    explicit zoHPCDocumentWriter(Form form = Form::Lines) : m_hasLines(form == Form::Lines) {}

    // Elements are closed in reverse order.
    void openElement(const QString& tag);
    // Of the element just opened, before anything goes into it; attributes stand in the order of the calls. A
    // name that is no XML name is left out and reported in the log; so are, in silence, characters that XML
    // cannot hold.
    void addAttribute(const QString& name, const QString& value);
    void addText(const QString& text);
    void addSection(const QString& text); // CDATA
    void addComment(const QString& text);
    void closeElement();

    // Where the first character of a text stands that XML cannot hold; -1 for none.
    static int findUnwritable(const QString& text);

    // The text so far; nothing is written after this.
    QString takeText();

private:
    void beginNode(bool isText);
    void endLine();
    void indent();

    const bool m_hasLines;
    QString m_text;
    QString m_blanks;
    QStringList m_tags; // of the open elements
    bool m_tagIsOpen = false;
    bool m_lineIsDue = false;
    bool m_isAfterText = false;
};
