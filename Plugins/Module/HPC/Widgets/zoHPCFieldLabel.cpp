#include "zoHPCFieldLabel.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

namespace
{
QString plain(QString text)
{
    text.remove(QLatin1Char('&'));
    if (text.endsWith(QLatin1Char(':')))
        text.chop(1);
    return text.trimmed();
}
} // namespace

QString zoHPCFieldLabel::of(const QWidget& field)
{
    if (const auto* box = qobject_cast<const QCheckBox*>(&field); box && !box->text().isEmpty())
        return plain(box->text());
    if (const auto* radio = qobject_cast<const QRadioButton*>(&field))
        return plain(radio->text());
    // Others that have the focus, as push buttons and pictures, are not what is changed.
    if (!isTypedInto(&field) && qobject_cast<const QComboBox*>(&field) == nullptr &&
        qobject_cast<const QCheckBox*>(&field) == nullptr)
        return {};
    if (!field.accessibleName().isEmpty())
        return plain(field.accessibleName());
    const QList<QLabel*> labels = field.window()->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (label->buddy() == &field)
            return plain(label->text());
    }
    return {};
}

bool zoHPCFieldLabel::isTypedInto(const QWidget* field)
{
    const auto* combo = qobject_cast<const QComboBox*>(field);
    return qobject_cast<const QLineEdit*>(field) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(field) != nullptr || (combo && combo->isEditable());
}
