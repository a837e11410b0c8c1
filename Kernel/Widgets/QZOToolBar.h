#pragma once

#include <zoKernelExport.h>

#include <QToolBar>

// A tool bar in the look of the host.
class ZO_KERNEL_EXPORT QZOToolBar : public QToolBar
{
    Q_OBJECT

public:
    explicit QZOToolBar(QWidget* parent = nullptr);
    explicit QZOToolBar(const QString& title, QWidget* parent = nullptr);
    ~QZOToolBar() override;
};
