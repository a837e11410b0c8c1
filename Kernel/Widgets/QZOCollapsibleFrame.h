#pragma once

#include <zoKernelExport.h>

#include <QFrame>
#include <QList>
#include <QPointer>

// A titled frame whose content folds away with a click, or with the space or return key, on the title. The
// content is the frame's own layout, so the frame can be promoted from a QFrame in Designer.
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

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public slots:
    // Folding hides the children and unfolding shows them again. A child that is shown or added meanwhile
    // appears with the unfolding; hiding a child meanwhile has no effect.
    void setCollapsed(bool collapsed);

signals:
    void collapsedChanged(bool collapsed);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void childEvent(QChildEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRect titleRect() const;
    int titleHeight() const;
    void reserveTitle();
    void fold(QWidget* child);

    QString m_title;
    QList<QPointer<QWidget>> m_folded; // what unfolding shows again
    int m_unfoldedMaximumHeight = QWIDGETSIZE_MAX;
    bool m_collapsed = false;
    bool m_pressed = false;
};
