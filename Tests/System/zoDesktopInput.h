#pragma once

#include <QPoint>
#include <QString>

struct _XDisplay;

// Mouse and keyboard of the X display, moved from outside of the program under test as a person moves them:
// through the server, on a connection of its own. Needs no application object; any one thread at a time.
class zoDesktopInput final
{
public:
    enum class Key { Return, Tab, Right, F1, Escape, Delete };

    zoDesktopInput(); // the display of the environment
    ~zoDesktopInput();
    zoDesktopInput(const zoDesktopInput&) = delete;
    zoDesktopInput& operator=(const zoDesktopInput&) = delete;

    // Whether there is a display that takes such input.
    bool isUsable() const;
    bool hasWindowManager() const;

    // Positions are pixels of the screen.
    void click(QPoint position);
    // A drag: the button goes down, stays so on the way, and goes up.
    void grab(QPoint position);
    void carryTo(QPoint position);
    void letGo();
    void press(Key key);
    void pressControl(char letter);
    // Letters, digits and signs of the keyboard. False when the keyboard lacks one; nothing is typed then.
    bool type(const QString& text);

    // So many times was a button or a key pressed since the last call of resetCounts(); shift and control, which are
    // held for another key, do not count.
    int clickCount() const { return m_clicks; }
    int keyCount() const { return m_keys; }
    void resetCounts();

private:
    void moveTo(QPoint position);
    void tap(unsigned keyCode, bool withShift = false, bool withControl = false);
    void flush();

    _XDisplay* m_display;
    int m_clicks = 0;
    int m_keys = 0;
};
