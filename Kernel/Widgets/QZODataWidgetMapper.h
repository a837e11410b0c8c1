#pragma once

#include <zoKernelExport.h>

#include <QDataWidgetMapper>

// Binds editing widgets to the columns of one row of a model; a change in a widget is in the model at once.
class ZO_KERNEL_EXPORT QZODataWidgetMapper : public QDataWidgetMapper
{
    Q_OBJECT

public:
    explicit QZODataWidgetMapper(QObject* parent = nullptr);
    ~QZODataWidgetMapper() override;
};
