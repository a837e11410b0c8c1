#pragma once

#include <zoKernelExport.h>

#include <QDataWidgetMapper>

// Binds editing widgets to the columns of one row of a model, both ways at once: a change in a widget is in
// the model when the widget's signal returns, and a change in the model shows in the widget.
//
// Line edits stand for their text, spin boxes for their value, check boxes for their state (bool). A combo
// box stands for the data of its current entry, or for its text when it is editable or the entry has no data.
// Choosing a row never writes, nor does a value that the widget cannot show whole: it stays as it is until
// the user changes it.
class ZO_KERNEL_EXPORT QZODataWidgetMapper : public QDataWidgetMapper
{
    Q_OBJECT

public:
    explicit QZODataWidgetMapper(QObject* parent = nullptr);
    ~QZODataWidgetMapper() override;

    // Hides the operation of the base: bind through this class. The widget is not owned.
    void addMapping(QWidget* widget, int section);

    // Binds to the row of this index of the model, anywhere in its tree; an invalid index binds to no row:
    // the widgets keep what they show and changes in them go nowhere.
    void setCurrentRow(const QModelIndex& index);
    bool hasCurrentRow() const;

public slots:
    // Shows the row's values again, for after changes that the model did not announce or refilled combo
    // boxes.
    void refresh();

private:
    void commit(QWidget* widget);

    bool m_bound = false;
};
