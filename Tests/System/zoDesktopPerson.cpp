#include "zoDesktopPerson.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QScreen>
#include <QThread>

#include <stdexcept>

namespace
{
constexpr int PatienceMs = 10000; // for one step, on a busy machine
constexpr int LookMs = 5;

// Where a click reaches the spot's widget and nothing that lies over it; null when nothing can be clicked.
QPoint reachable(const zoDesktopPerson::Spot& spot)
{
    if (spot.widget == nullptr || !spot.widget->isVisible() || !spot.widget->isEnabled() ||
        !spot.rect.isValid())
        return {};
    const QPoint centre = spot.rect.center();
    if (!spot.widget->rect().contains(centre))
        return {};
    const QPoint position = spot.widget->mapToGlobal(centre);
    const QWidget* there = QApplication::widgetAt(position);
    const bool reached = there != nullptr && (there == spot.widget || spot.widget->isAncestorOf(there));
    return reached ? position : QPoint();
}
} // namespace

zoDesktopPerson::Spot zoDesktopPerson::spotOf(QWidget* widget)
{
    return widget == nullptr ? Spot() : Spot{widget, widget->rect()};
}

QAction* zoDesktopPerson::actionOf(const QList<QAction*>& actions, const QString& text)
{
    for (QAction* action : actions) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

void zoDesktopPerson::waitFor(const QString& what, const std::function<bool()>& isSo) const
{
    QElapsedTimer time;
    time.start();
    while (!see(isSo)) {
        if (time.elapsed() > PatienceMs)
            throw std::runtime_error("waited for: " + what.toStdString());
        QThread::msleep(LookMs);
    }
}

void zoDesktopPerson::keepPicture(const char* name) const
{
    const QString folder = qEnvironmentVariable("ZO_SCREENSHOTS");
    if (folder.isEmpty())
        return;
    see([folder, name] {
        QCoreApplication::processEvents(); // what is to be painted
        const QString file = folder + QStringLiteral("/%1.png").arg(QLatin1String(name));
        return QGuiApplication::primaryScreen()->grabWindow(0).save(file);
    });
}

QPoint zoDesktopPerson::find(const QString& what, const std::function<Spot()>& spot) const
{
    QPoint position;
    waitFor(what, [&position, &spot] {
        const QPoint before = position;
        position = reachable(spot());
        return !position.isNull() && position == before;
    });
    return position;
}

void zoDesktopPerson::click(const QString& what, const std::function<Spot()>& spot) const
{
    m_input.click(find(what, spot));
}

void zoDesktopPerson::drag(QPoint from, QPoint to, const std::function<bool()>& hasStarted) const
{
    m_input.grab(from);
    // A list begins with the second move that it hears of, and several may come as one.
    int way = QApplication::startDragDistance() * 2;
    waitFor("the drag", [&] {
        if (hasStarted())
            return true;
        m_input.carryTo(from + QPoint(way++, 0));
        return false;
    });
    m_input.carryTo(to - QPoint(20, 0));
    m_input.carryTo(to);
}

void zoDesktopPerson::type(const QString& text) const
{
    if (!m_input.type(text))
        throw std::runtime_error("the keyboard lacks a sign of: " + text.toStdString());
}

void zoDesktopPerson::fill(const QString& what, const std::function<QWidget*()>& field, const QString& text,
                           const std::function<QString()>& content) const
{
    click(what, [field] { return spotOf(field()); });
    waitFor(what + " has the keys", [field] { return field()->hasFocus(); });
    pressControl('a');
    type(text);
    waitFor(what + " shows " + text, [content, text] { return content() == text; });
}

void zoDesktopPerson::choose(const QString& what, const std::function<QComboBox*()>& combo,
                             const QString& entry) const
{
    click(what, [combo] { return spotOf(combo()); });
    click(what + " offers " + entry, [combo, entry] {
        const QModelIndex index = combo()->model()->index(combo()->findText(entry), 0);
        return Spot{combo()->view()->viewport(), combo()->view()->visualRect(index)};
    });
    waitFor(what + " shows " + entry,
            [combo, entry] { return combo()->currentText() == entry && !combo()->view()->isVisible(); });
}

void zoDesktopPerson::chooseMenu(QMenuBar* bar, const QString& title, const QString& entry) const
{
    click(title, [=] {
        QAction* menu = actionOf(bar->actions(), title);
        return menu == nullptr ? Spot() : Spot{bar, bar->actionGeometry(menu)};
    });
    click(title + " > " + entry, [=] {
        QMenu* menu = actionOf(bar->actions(), title)->menu();
        QAction* action = actionOf(menu->actions(), entry);
        return action == nullptr || !action->isEnabled() ? Spot() : Spot{menu, menu->actionGeometry(action)};
    });
}
