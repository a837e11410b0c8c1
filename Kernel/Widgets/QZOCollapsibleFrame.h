#pragma once

#include <zoKernelExport.h>

#include <QFrame>

// A titled frame whose content folds away with a click on the title.
class ZO_KERNEL_EXPORT QZOCollapsibleFrame : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QString title READ title WRITE setTitle)
    Q_PROPERTY(bool collapsed READ isCollapsed WRITE setCollapsed NOTIFY collapsedChanged)

public:
    explicit QZOCollapsibleFrame(QWidget* parent = nullptr);
    ~QZOCollapsibleFrame() override;

    QString title() const;
    void setTitle(const QString& title);

    bool isCollapsed() const;

public slots:
    void setCollapsed(bool collapsed);

signals:
    void collapsedChanged(bool collapsed);

private:
    QString m_title;
    bool m_collapsed = false;
};
