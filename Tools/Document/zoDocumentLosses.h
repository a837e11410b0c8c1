#pragma once

#include <QString>
#include <QVector>

// What a text says and what is made of it does not: for people whose files are rewritten.
class zoDocumentLosses final
{
public:
    struct Loss
    {
        int line;
        int column;
        QString text;
    };

    // What is told of a text that goes on after a NUL.
    static QString cutText();

    // Of a configuration that becomes `canonical`. Both texts parse.
    static QVector<Loss> ofFormat(const QString& source, const QString& canonical);

    // Of a legacy configuration: what is no parameter. What becomes of parameters is the converter's to say.
    static QVector<Loss> ofConversion(const QString& source);
};
