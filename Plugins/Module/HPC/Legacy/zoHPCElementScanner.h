#pragma once

#include <QString>
#include <QStringList>
#include <QXmlStreamReader>

// Goes through the elements of a text and tells where each of them begins; for texts that parse.
class zoHPCElementScanner final
{
public:
    struct Place
    {
        int line = 1; // from 1
        int column = 1;
    };

    explicit zoHPCElementScanner(const QString& text);

    // Goes to the next start tag; false at the end and at an error.
    bool next();

    QString tag() const { return m_reader.qualifiedName().toString(); }
    // Empty without such an attribute.
    QString attribute(const QString& name) const;
    // Tags of the elements around this one, the root first.
    const QStringList& around() const { return m_around; }
    const Place& place() const { return m_place; }

private:
    void countTo(int offset);

    QString m_text;
    QXmlStreamReader m_reader;
    QStringList m_around;
    QString m_opened;  // the current element, around the ones to come; null when it was left
    int m_counted = 0; // characters of the text that are in m_place
    Place m_place;
};
