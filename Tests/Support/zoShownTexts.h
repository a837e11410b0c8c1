#pragma once

#include <QStringList>
#include <QTranslator>

class QAction;
class QObject;
class QWidget;

// A translator that puts brackets around every text that it is asked for, so that texts which nobody asked to
// be translated can be told.
class zoMarkingTranslator final : public QTranslator
{
    Q_OBJECT

public:
    using QTranslator::QTranslator;

    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;
    bool isEmpty() const override;

    // What is left of a text without the bracketed parts.
    static QString unmarked(const QString& text);
};

// What a person can read of a window: labels, titles, entries, tool tips, headers, rows, also of what is
// hidden at the moment; not what was typed into fields.
class zoShownTexts final
{
public:
    struct Text
    {
        QString place; // the widget's path and the property
        QString text;
    };

    static QVector<Text> of(QWidget* window);
};
