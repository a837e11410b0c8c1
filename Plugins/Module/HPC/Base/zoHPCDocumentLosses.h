#pragma once

#include <QCoreApplication>
#include <QString>
#include <QVector>

#include <functional>

// What a text says and what is made of it does not: for people whose files are rewritten.
class zoHPCDocumentLosses final
{
    Q_DECLARE_TR_FUNCTIONS(zoHPCDocumentLosses)

public:
    struct Loss
    {
        int line;
        int column;
        QString text;
    };

    // What is told of a text that goes on after a NUL.
    static QString cutText();

    // Of a configuration that becomes what `canonical` gives: with the values of tiles only where the source has tiles,
    // too. Both texts parse; how they are laid out does not count.
    enum class Tiles { None, Some };
    static QVector<Loss> ofFormat(const QString& source, const std::function<QString(Tiles)>& canonical);

    // Of a legacy configuration: what is no parameter. What becomes of parameters is the converter's to say.
    static QVector<Loss> ofConversion(const QString& source);
};
