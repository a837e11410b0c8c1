#include "zoHPCPanelFields.h"

#include "zoHPCNumberField.h"
#include "zoHPCWheelGuard.h"
#include "zoText.h"

#include <QZODataWidgetMapper.h>

#include <QAbstractSpinBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QFontMetrics>
#include <QLabel>
#include <QSet>
#include <QSpinBox>

namespace
{
// Ranges take everything that a document may hold, far more than a wall ever has: a field is wide enough for
// usual numbers, wider when there is room.
void narrow(QAbstractSpinBox* field)
{
    QString widest;
    QString usual;
    if (const auto* number = qobject_cast<const QDoubleSpinBox*>(field)) {
        for (const double limit : {number->minimum(), number->maximum()}) {
            const QString text = number->textFromValue(limit);
            if (text.size() > widest.size())
                widest = text;
        }
        usual = number->textFromValue(-10000.0);
    } else if (const auto* pixels = qobject_cast<const QSpinBox*>(field)) {
        for (const int limit : {pixels->minimum(), pixels->maximum()}) {
            const QString text = QString::number(limit);
            if (text.size() > widest.size())
                widest = text;
        }
        usual = zoText("-10000");
    }
    const QFontMetrics metrics(field->font());
    const int spare = metrics.horizontalAdvance(widest) - metrics.horizontalAdvance(usual);
    if (spare > 0)
        field->setMinimumWidth(field->minimumSizeHint().width() - spare);
}

// The second and third number of a row have a sign for a label, or none: what is read aloud is their tool tip.
void nameForReaders(const QWidget* panels)
{
    const QList<QLabel*> labels = panels->findChildren<QLabel*>();
    QSet<const QWidget*> labelled;
    for (const QLabel* label : labels) {
        if (label->buddy() && label->text() != QString::fromUtf8("×"))
            labelled.insert(label->buddy());
    }
    const QList<QAbstractSpinBox*> numbers = panels->findChildren<QAbstractSpinBox*>();
    for (QAbstractSpinBox* number : numbers) {
        if (!labelled.contains(number))
            number->setAccessibleName(number->toolTip());
    }
}

// Nobody tries what he does not know of.
void tellOfUnits(const QWidget* panels)
{
    using Unit = zoHPCNumberExpression::Unit;
    const QList<zoHPCNumberField*> numbers = panels->findChildren<zoHPCNumberField*>();
    for (zoHPCNumberField* number : numbers) {
        if (number->unit() == Unit::Millimetre)
            number->setToolTip(number->toolTip() + QLatin1Char('\n') +
                               QCoreApplication::translate("zoHPCDisplayGUII",
                                                           "Takes units and sums: 3.2 m, 12 in, 5520/3"));
    }
}
} // namespace

void zoHPCPanelFields::map(QZODataWidgetMapper& mapper, std::initializer_list<Mapping> fields)
{
    for (const auto& [widget, col] : fields)
        mapper.addMapping(widget, col);
}

void zoHPCPanelFields::setVisible(std::initializer_list<QWidget*> widgets, bool visible)
{
    for (QWidget* widget : widgets)
        widget->setVisible(visible);
}

void zoHPCPanelFields::setUnit(std::initializer_list<zoHPCNumberField*> fields,
                               zoHPCNumberExpression::Unit unit)
{
    for (zoHPCNumberField* field : fields)
        field->setUnit(unit);
}

void zoHPCPanelFields::prepare(QWidget* panels)
{
    const QList<QAbstractSpinBox*> numbers = panels->findChildren<QAbstractSpinBox*>();
    for (QAbstractSpinBox* number : numbers)
        narrow(number);
    nameForReaders(panels);
    tellOfUnits(panels);
    new zoHPCWheelGuard(panels);
}
