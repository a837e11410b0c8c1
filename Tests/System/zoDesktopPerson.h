#pragma once

#include "zoDesktopInput.h"

#include <QApplication>
#include <QPoint>
#include <QRect>
#include <QString>

#include <functional>

class QAction;
class QComboBox;
class QMenuBar;
class QWidget;

// A person at the host: sees what its windows show, and acts through the X server alone. Lives on a thread of
// its own, so that dialogs of the host may wait for it. A step that does not come about throws.
class zoDesktopPerson final
{
public:
    // A place on the screen that can be clicked.
    struct Spot
    {
        QWidget* widget = nullptr;
        QRect rect; // of the widget
    };

    explicit zoDesktopPerson(zoDesktopInput& input) : m_input(input) {}

    // The middle of the widget; null gives none.
    static Spot spotOf(QWidget* widget);
    static QAction* actionOf(const QList<QAction*>& actions, const QString& text);

    // The answer of `look`, which runs on the thread of the windows.
    template <class Look>
    auto see(Look look) const
    {
        decltype(look()) answer{};
        QMetaObject::invokeMethod(
            qApp, [&answer, &look] { answer = look(); }, Qt::BlockingQueuedConnection);
        return answer;
    }

    void waitFor(const QString& what, const std::function<bool()>& isSo) const;
    // Into the folder of ZO_SCREENSHOTS, when somebody wants to look.
    void keepPicture(const char* name) const;
    // Waits until the spot is there, reachable, and stays where it is.
    QPoint find(const QString& what, const std::function<Spot()>& spot) const;

    void click(const QString& what, const std::function<Spot()>& spot) const;
    // Until the other window has noticed; what it takes is let go by the caller.
    void drag(QPoint from, QPoint to, const std::function<bool()>& hasStarted) const;
    void carryTo(QPoint to) const { m_input.carryTo(to); }
    void letGo() const { m_input.letGo(); }

    void press(zoDesktopInput::Key key) const { m_input.press(key); }
    void pressControl(char letter) const { m_input.pressControl(letter); }
    void type(const QString& text) const;
    // Replaces what the field holds. `content` reads it.
    void fill(const QString& what, const std::function<QWidget*()>& field, const QString& text,
              const std::function<QString()>& content) const;
    // Opens the list and clicks the entry.
    void choose(const QString& what, const std::function<QComboBox*()>& combo, const QString& entry) const;
    // Opens a menu of a menu bar and clicks the entry.
    void chooseMenu(QMenuBar* bar, const QString& title, const QString& entry) const;

private:
    zoDesktopInput& m_input;
};
