#include "zoAssistantPlaneDelegate.h"

#include "zoAssistantNumberField.h"
#include "zoText.h"

#include <QLocale>

zoAssistantPlaneDelegate::zoAssistantPlaneDelegate(const Column& column, QObject* parent)
    : QStyledItemDelegate(parent), m_column(column)
{
}

zoAssistantPlaneDelegate::~zoAssistantPlaneDelegate() = default;

QWidget* zoAssistantPlaneDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                                const QModelIndex& index) const
{
    Q_UNUSED(option)
    Q_UNUSED(index)
    auto* field = new zoAssistantNumberField(m_column.minimum, m_column.maximum, m_column.decimals,
                                             m_column.unit, parent);
    // The table's columns are narrow, and their tool tips name the unit.
    field->setSuffix(QString());
    field->setButtonSymbols(QAbstractSpinBox::NoButtons);
    field->setMinimumWidth(0);
    field->setFrame(false);
    field->setAutoFillBackground(true);
    return field;
}

QString zoAssistantPlaneDelegate::displayText(const QVariant& value, const QLocale& locale) const
{
    QLocale plain = locale;
    plain.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    return plain.toString(value.toDouble(), 'f', QLocale::FloatingPointShortest);
}
