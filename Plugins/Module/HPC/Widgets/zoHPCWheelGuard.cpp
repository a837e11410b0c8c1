#include "zoHPCWheelGuard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

zoHPCWheelGuard::zoHPCWheelGuard(QWidget* panels) : QObject(panels)
{
    const auto guard = [this](QWidget* field) {
        field->setFocusPolicy(Qt::StrongFocus);
        field->installEventFilter(this);
    };
    const QList<QAbstractSpinBox*> numbers = panels->findChildren<QAbstractSpinBox*>();
    for (QAbstractSpinBox* number : numbers)
        guard(number);
    const QList<QComboBox*> choices = panels->findChildren<QComboBox*>();
    for (QComboBox* choice : choices)
        guard(choice);
}

bool zoHPCWheelGuard::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const field = qobject_cast<const QWidget*>(watched);
    if (event->type() != QEvent::Wheel || !field || field->hasFocus())
        return QObject::eventFilter(watched, event);
    // Ignored: the scroll area around it is asked next.
    event->ignore();
    return true;
}
