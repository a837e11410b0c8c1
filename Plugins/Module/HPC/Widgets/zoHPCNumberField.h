#pragma once

#include <QDoubleSpinBox>

// A field for a number with a fraction. Point and comma are both its decimal mark, whatever the locale; groups of
// digits are not separated, so that neither can be taken for the other.
class zoHPCNumberField final : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit zoHPCNumberField(QWidget* parent = nullptr);

    // The mark that was typed becomes that of the locale.
    QValidator::State validate(QString& text, int& position) const override;
    double valueFromText(const QString& text) const override;
};
