#include "zoHostPageStatus.h"

#include <QMainWindow>
#include <QSizeGrip>
#include <QStatusBar>

zoHostPageStatus::zoHostPageStatus(QStatusBar* bar, QObject* parent) : QObject(parent), m_bar(bar) {}

zoHostPageStatus::~zoHostPageStatus()
{
    giveBack();
}

void zoHostPageStatus::setPage(QWidget* page)
{
    if (page == m_page && (page == nullptr || m_pageBar != nullptr))
        return;
    giveBack();
    m_page = page;
    // Not statusBar(), which would make one.
    auto* pageBar = qobject_cast<QMainWindow*>(page) == nullptr
                        ? nullptr
                        : page->findChild<QStatusBar*>(QString(), Qt::FindDirectChildrenOnly);
    if (pageBar != nullptr && m_bar)
        take(pageBar);
}

void zoHostPageStatus::take(QStatusBar* pageBar)
{
    m_pageBar = pageBar;
    const QList<QWidget*> widgets = pageBar->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    int place = 0; // before those of the host
    for (QWidget* widget : widgets) {
        if (qobject_cast<QSizeGrip*>(widget) != nullptr)
            continue;
        const bool isHidden = widget->isHidden();
        pageBar->removeWidget(widget);
        m_bar->insertPermanentWidget(place++, widget);
        widget->setHidden(isHidden);
        m_taken.append(widget);
    }
    pageBar->hide();
    connect(pageBar, &QStatusBar::messageChanged, m_bar, [this](const QString& message) {
        if (message.isEmpty())
            m_bar->clearMessage();
        else
            m_bar->showMessage(message);
    });
    if (!pageBar->currentMessage().isEmpty())
        m_bar->showMessage(pageBar->currentMessage());
}

void zoHostPageStatus::giveBack()
{
    if (m_pageBar && m_bar)
        disconnect(m_pageBar, nullptr, m_bar, nullptr);
    for (const QPointer<QWidget>& widget : qAsConst(m_taken)) {
        if (!widget)
            continue;
        const bool isHidden = widget->isHidden();
        if (m_bar)
            m_bar->removeWidget(widget);
        if (m_pageBar) {
            m_pageBar->addPermanentWidget(widget);
            widget->setHidden(isHidden);
        } else {
            delete widget; // its window is gone, and its code may go
        }
    }
    m_taken.clear();
    if (m_pageBar)
        m_pageBar->show();
    m_pageBar.clear();
    m_page.clear();
}
