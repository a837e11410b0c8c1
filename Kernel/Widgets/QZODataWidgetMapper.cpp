#include "QZODataWidgetMapper.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QMetaProperty>
#include <QScopedValueRollback>
#include <QSpinBox>
#include <QStyledItemDelegate>

namespace
{
// What a widget stands for.
QVariant valueOf(const QWidget* widget)
{
    if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
        const QVariant data = combo->isEditable() ? QVariant() : combo->currentData();
        return data.isValid() ? data : QVariant(combo->currentText());
    }
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        return edit->text();
    if (const auto* spin = qobject_cast<const QSpinBox*>(widget))
        return spin->value();
    if (const auto* spin = qobject_cast<const QDoubleSpinBox*>(widget))
        return spin->value();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return button->isChecked();
    return widget->property(widget->metaObject()->userProperty().name());
}

// Shows a value. A widget that shows it already is left alone: setting it anyway would move its cursor and
// reformat what the user is typing.
void show(QWidget* widget, const QVariant& value)
{
    if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        const QString text = value.toString();
        if (!combo->isEditable()) {
            const int withData = combo->findData(text);
            combo->setCurrentIndex(
                withData >= 0 ? withData
                              : combo->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive));
        } else if (combo->currentText() != text)
            combo->setEditText(text);
    } else if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
        if (edit->text() != value.toString())
            edit->setText(value.toString());
    } else if (auto* spin = qobject_cast<QSpinBox*>(widget)) {
        if (spin->value() != value.toInt())
            spin->setValue(value.toInt());
    } else if (auto* doubleSpin = qobject_cast<QDoubleSpinBox*>(widget)) {
        const double wanted = qBound(doubleSpin->minimum(), value.toDouble(), doubleSpin->maximum());
        if (doubleSpin->textFromValue(doubleSpin->value()) != doubleSpin->textFromValue(wanted))
            doubleSpin->setValue(wanted);
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setChecked(value.toBool());
    } else {
        widget->setProperty(widget->metaObject()->userProperty().name(), value);
    }
}

// Carries values between widgets and model, and tells changes of the user from changes that are shown.
class Delegate final : public QStyledItemDelegate
{
public:
    explicit Delegate(QObject* parent) : QStyledItemDelegate(parent) {}

    bool isShowing() const { return m_showing; }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        const QScopedValueRollback<bool> showing(m_showing, true);
        show(editor, index.data(Qt::EditRole));
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override
    {
        model->setData(index, valueOf(editor), Qt::EditRole);
    }

    // The base would write when a widget merely loses the focus, and eat Escape and Tab.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        Q_UNUSED(watched)
        Q_UNUSED(event)
        return false;
    }

private:
    mutable bool m_showing = false;
};
} // namespace

QZODataWidgetMapper::QZODataWidgetMapper(QObject* parent) : QDataWidgetMapper(parent)
{
    setItemDelegate(new Delegate(this));
}

QZODataWidgetMapper::~QZODataWidgetMapper() = default;

void QZODataWidgetMapper::addMapping(QWidget* widget, int section)
{
    QDataWidgetMapper::addMapping(widget, section);
    const auto changed = [this, widget] { commit(widget); };
    if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        if (combo->isEditable())
            connect(combo, &QComboBox::editTextChanged, this, changed);
        else
            connect(combo, QOverload<int>::of(&QComboBox::currentIndexChanged), this, changed);
    } else if (auto* edit = qobject_cast<QLineEdit*>(widget))
        connect(edit, &QLineEdit::textChanged, this, changed);
    else if (auto* spin = qobject_cast<QSpinBox*>(widget))
        connect(spin, QOverload<int>::of(&QSpinBox::valueChanged), this, changed);
    else if (auto* doubleSpin = qobject_cast<QDoubleSpinBox*>(widget))
        connect(doubleSpin, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, changed);
    else if (auto* button = qobject_cast<QAbstractButton*>(widget))
        connect(button, &QAbstractButton::toggled, this, changed);
}

void QZODataWidgetMapper::setCurrentRow(const QModelIndex& index)
{
    m_bound = false;
    if (!index.isValid())
        return;
    setRootIndex(index.parent());
    m_bound = true;
    setCurrentModelIndex(index);
}

bool QZODataWidgetMapper::hasCurrentRow() const
{
    // The base forgets a row that left the model.
    return m_bound && currentIndex() >= 0;
}

void QZODataWidgetMapper::refresh()
{
    if (hasCurrentRow())
        revert();
}

void QZODataWidgetMapper::commit(QWidget* widget)
{
    auto* delegate = static_cast<Delegate*>(itemDelegate());
    // A combo box that shows no entry has nothing to say.
    const auto* combo = qobject_cast<QComboBox*>(widget);
    if (combo && !combo->isEditable() && combo->currentIndex() < 0)
        return;
    if (hasCurrentRow() && !delegate->isShowing())
        emit delegate->commitData(widget);
}
