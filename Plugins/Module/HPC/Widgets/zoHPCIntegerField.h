#pragma once

#include <QSpinBox>

// A field for a whole number. Groups of digits are not separated: while a point or comma stands in it the value stays
// as it was before, so that "63.5" never becomes 635. It also takes sums that come out whole, as "5520/3".
class zoHPCIntegerField final : public QSpinBox
{
    Q_OBJECT

public:
    explicit zoHPCIntegerField(QWidget* parent = nullptr);

    QValidator::State validate(QString& text, int& position) const override;
    int valueFromText(const QString& text) const override;
    // Leaves the text alone: the field goes back to its value.
    void fixup(QString& text) const override;
};
