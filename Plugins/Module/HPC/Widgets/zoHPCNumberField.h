#pragma once

#include <QDoubleSpinBox>

// A field for a number with a fraction. Point and comma, also those of Arabic script, are all its decimal mark,
// whatever the locale; groups of digits are not separated, so that none can be taken for the other.
class zoHPCNumberField final : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit zoHPCNumberField(QWidget* parent = nullptr);

    // The mark that was typed becomes that of the locale.
    QValidator::State validate(QString& text, int& position) const override;
    double valueFromText(const QString& text) const override;

    static bool isDecimalMark(QChar character);
    // A minus as on the keyboard: some locales write another one, and read both.
    static void replaceMinus(QString& text);
};
