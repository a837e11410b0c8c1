#pragma once

#include <QDoubleSpinBox>

// A field for a number that is selected as a whole when it is clicked, so that typing replaces it. The wheel changes it
// only while it has the focus.
class zoAssistantNumberField final : public QDoubleSpinBox
{
    Q_OBJECT

public:
    // Without decimals it is a whole number. The unit stands behind the number, such as "mm"; it may be empty.
    zoAssistantNumberField(double minimum, double maximum, int decimals, const QString& unit,
                           QWidget* parent = nullptr);
    ~zoAssistantNumberField() override;

    // Announces nothing.
    void show(double value);

    // Without zeros at its end.
    QString textFromValue(double value) const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool m_isFreshlyClicked = false;
};
