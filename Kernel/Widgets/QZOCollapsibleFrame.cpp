#include "QZOCollapsibleFrame.h"

QZOCollapsibleFrame::QZOCollapsibleFrame(QWidget* parent) : QFrame(parent) {}

QZOCollapsibleFrame::~QZOCollapsibleFrame() = default;

QString QZOCollapsibleFrame::title() const
{
    return m_title;
}

void QZOCollapsibleFrame::setTitle(const QString& title)
{
    m_title = title;
    update();
}

bool QZOCollapsibleFrame::isCollapsed() const
{
    return m_collapsed;
}

void QZOCollapsibleFrame::setCollapsed(bool collapsed)
{
    if (m_collapsed == collapsed)
        return;
    m_collapsed = collapsed;
    emit collapsedChanged(collapsed);
}
