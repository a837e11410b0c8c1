#include "zoAssistantNumberField.h"

#include "zoText.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

zoAssistantNumberField::zoAssistantNumberField(double minimum, double maximum, int decimals, Unit unit,
                                               QWidget* parent)
    : QDoubleSpinBox(parent), m_unit(unit)
{
    setRange(minimum, maximum);
    setDecimals(decimals);
    if (unit == Unit::Millimetre)
        setSuffix(zoText(" mm"));
    else if (unit == Unit::Pixel)
        setSuffix(QLatin1Char(' ') + tr("px"));
    setFocusPolicy(Qt::StrongFocus);
    setKeyboardTracking(true);
    setGroupSeparatorShown(false);
    // As wide as numbers of a wall are, not as the largest that it takes.
    setMinimumWidth(fontMetrics().horizontalAdvance(zoText("00000.00 mm")) + 30);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    lineEdit()->installEventFilter(this);
}

zoAssistantNumberField::~zoAssistantNumberField() = default;

void zoAssistantNumberField::show(double value)
{
    // What is being typed stays as it is while it means the same.
    if (hasFocus() && qFuzzyCompare(1.0 + value, 1.0 + this->value()))
        return;
    const QSignalBlocker blocker(this);
    setValue(value);
}

QString zoAssistantNumberField::stripped(const QString& text) const
{
    return text.endsWith(suffix()) ? text.left(text.size() - suffix().size()) : text;
}

QValidator::State zoAssistantNumberField::validate(QString& text, int& position) const
{
    QString number = stripped(text);
    const auto state = decimals() > 0
                           ? zoHPCNumberExpression::typedState(number, m_unit, locale(), minimum(), maximum())
                           : zoHPCNumberExpression::typedWholeState(number, minimum(), maximum());
    text = number + suffix();
    return state ? QValidator::State(*state) : QDoubleSpinBox::validate(text, position);
}

double zoAssistantNumberField::valueFromText(const QString& text) const
{
    QString number = stripped(text);
    const auto value = zoHPCNumberExpression::typedValue(number, m_unit, locale(), decimals());
    return value ? *value : QDoubleSpinBox::valueFromText(number + suffix());
}

void zoAssistantNumberField::fixup(QString& text) const
{
    // The base would take the marks out and with them make "63.5" 635.
    Q_UNUSED(text)
}

QString zoAssistantNumberField::textFromValue(double value) const
{
    QString text = QDoubleSpinBox::textFromValue(value);
    const QString point = locale().decimalPoint();
    if (decimals() == 0 || !text.contains(point))
        return text;
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(point))
        text.chop(point.size());
    return text;
}

bool zoAssistantNumberField::eventFilter(QObject* watched, QEvent* event)
{
    // Not with the press, which places the cursor.
    if (event->type() == QEvent::MouseButtonRelease && m_isFreshlyClicked) {
        m_isFreshlyClicked = false;
        if (!lineEdit()->hasSelectedText())
            selectAll();
    }
    return QDoubleSpinBox::eventFilter(watched, event);
}

void zoAssistantNumberField::focusInEvent(QFocusEvent* event)
{
    m_isFreshlyClicked = event->reason() == Qt::MouseFocusReason;
    QDoubleSpinBox::focusInEvent(event);
}

void zoAssistantNumberField::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QDoubleSpinBox::wheelEvent(event);
    else
        event->ignore();
}
