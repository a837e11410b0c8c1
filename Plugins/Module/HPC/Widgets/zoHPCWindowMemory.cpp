#include "zoHPCWindowMemory.h"

#include "zoText.h"

#include <QDialog>
#include <QEvent>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStandardPaths>
#include <QStringList>
#include <QStyle>
#include <QTabWidget>

#include <algorithm>

namespace
{
// Larger than any screen wall of a desk (pixels).
constexpr int LargestSize = 32767;

// Numbers, separated by commas; empty unless there are `count` that are all within 0..LargestSize.
QList<int> numbers(const QString& text, int count)
{
    QList<int> result;
    const QStringList parts = text.split(QLatin1Char(','));
    for (const QString& part : parts) {
        bool ok = false;
        const int number = part.toInt(&ok);
        if (!ok || number < 0 || number > LargestSize)
            return {};
        result << number;
    }
    return result.size() == count ? result : QList<int>();
}

QString textOf(const QList<int>& numbers)
{
    QStringList parts;
    for (const int number : numbers)
        parts << QString::number(number);
    return parts.join(QLatin1Char(','));
}
} // namespace

zoHPCWindowMemory::zoHPCWindowMemory(QWidget* widget, const QString& name)
    : QObject(widget), m_widget(widget), m_key(zoText("windows/%1").arg(name))
{
    widget->installEventFilter(this);
    // Panes also change their sizes with the window around them, which is no wish for other proportions.
    if (auto* splitter = qobject_cast<QSplitter*>(widget))
        connect(splitter, &QSplitter::splitterMoved, this, [this] { m_isTouched = true; });
    else
        m_isTouched = true;
}

void zoHPCWindowMemory::rememberDialog(QDialog* dialog, const QString& name)
{
    new zoHPCWindowMemory(dialog, name);
    const auto rememberPart = [&name](QWidget* part) {
        if (!part->objectName().isEmpty())
            new zoHPCWindowMemory(part, name + QLatin1Char(' ') + part->objectName());
    };
    const QList<QSplitter*> splitters = dialog->findChildren<QSplitter*>();
    std::for_each(splitters.begin(), splitters.end(), rememberPart);
    const QList<QTabWidget*> tabs = dialog->findChildren<QTabWidget*>();
    std::for_each(tabs.begin(), tabs.end(), rememberPart);
}

QString zoHPCWindowMemory::fileName()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           zoText("/zo/hpc-cluster.ini");
}

bool zoHPCWindowMemory::eventFilter(QObject* watched, QEvent* event)
{
    // Of a dialog, before it is centred.
    if (event->type() == QEvent::Show && !event->spontaneous()) {
        restore();
        m_shown = state();
    } else if (event->type() == QEvent::Hide && !event->spontaneous()) {
        save();
    }
    return QObject::eventFilter(watched, event);
}

QString zoHPCWindowMemory::state() const
{
    if (const auto* splitter = qobject_cast<QSplitter*>(m_widget))
        return textOf(splitter->sizes());
    if (const auto* tabs = qobject_cast<QTabWidget*>(m_widget))
        return textOf({tabs->currentIndex()});
    // What a dialog has when it fills the screen is not its size.
    const bool isFree = (m_widget->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen)) == 0;
    const QSize size = isFree ? m_widget->size() : m_widget->normalGeometry().size();
    return textOf({size.width(), size.height()});
}

void zoHPCWindowMemory::setState(const QString& state)
{
    if (auto* splitter = qobject_cast<QSplitter*>(m_widget)) {
        const QList<int> sizes = numbers(state, splitter->count());
        if (std::any_of(sizes.begin(), sizes.end(), [](int size) { return size > 0; }))
            splitter->setSizes(sizes);
    } else if (auto* tabs = qobject_cast<QTabWidget*>(m_widget)) {
        const QList<int> index = numbers(state, 1);
        if (!index.isEmpty() && index.first() < tabs->count() && tabs->isTabEnabled(index.first()))
            tabs->setCurrentIndex(index.first());
    } else {
        const QList<int> size = numbers(state, 2);
        // The screen may be another one than last time.
        const QWidget* near = m_widget->parentWidget() ? m_widget->parentWidget()->window() : m_widget;
        const QStyle* style = m_widget->style();
        const int frame = style->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth);
        const QSize decoration(2 * frame, style->pixelMetric(QStyle::PM_TitleBarHeight) + frame);
        if (!size.isEmpty() && size.first() > 0 && size.last() > 0)
            m_widget->resize(
                QSize(size.first(), size.last()).boundedTo(near->screen()->availableSize() - decoration));
    }
}

void zoHPCWindowMemory::restore()
{
    if (!m_isRestored) {
        const QSettings settings(fileName(), QSettings::IniFormat);
        // Numbers that somebody wrote by hand, without quotes, are a list.
        setState(settings.value(m_key).toStringList().join(QLatin1Char(',')));
    }
    m_isRestored = true; // from now on the widget itself knows
}

void zoHPCWindowMemory::save()
{
    if (!m_isRestored || !m_isTouched || state() == m_shown)
        return;
    QSettings settings(fileName(), QSettings::IniFormat);
    settings.setValue(m_key, state());
}
