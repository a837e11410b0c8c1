#pragma once

#include "zoHPCNumberExpression.h"

#include <QDoubleSpinBox>

// A field for a number that is selected as a whole when it is clicked, so that typing replaces it. It also takes sums and
// units, "5520/3" and "3.2 m", as the fields of the display setup do. The wheel changes it only while it has the focus.
class zoAssistantNumberField final : public QDoubleSpinBox
{
    Q_OBJECT

public:
    using Unit = zoHPCNumberExpression::Unit;

    // Without decimals it is a whole number. The sign of the unit stands behind the number.
    zoAssistantNumberField(double minimum, double maximum, int decimals, Unit unit,
                           QWidget* parent = nullptr);
    ~zoAssistantNumberField() override;

    // Announces nothing.
    void show(double value);

    QValidator::State validate(QString& text, int& position) const override;
    double valueFromText(const QString& text) const override;
    // Without zeros at its end.
    QString textFromValue(double value) const override;
    // A whole number with a fraction goes back to the value before.
    void fixup(QString& text) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    // Without what stands behind the number.
    QString stripped(const QString& text) const;

    const Unit m_unit;
    bool m_isFreshlyClicked = false;
};
