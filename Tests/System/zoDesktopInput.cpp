#include "zoDesktopInput.h"

#include <vector>

// Last: they define words such as None and Bool.
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace
{
KeySym symbolOf(zoDesktopInput::Key key)
{
    switch (key) {
    case zoDesktopInput::Key::Return:
        return XK_Return;
    case zoDesktopInput::Key::Tab:
        return XK_Tab;
    case zoDesktopInput::Key::Right:
        return XK_Right;
    case zoDesktopInput::Key::F1:
        return XK_F1;
    case zoDesktopInput::Key::Escape:
        return XK_Escape;
    case zoDesktopInput::Key::Delete:
        return XK_Delete;
    }
    return NoSymbol;
}
} // namespace

zoDesktopInput::zoDesktopInput() : m_display(XOpenDisplay(nullptr)) {}

zoDesktopInput::~zoDesktopInput()
{
    if (m_display)
        XCloseDisplay(m_display);
}

bool zoDesktopInput::isUsable() const
{
    int event = 0;
    int error = 0;
    int major = 0;
    int minor = 0;
    return m_display && XTestQueryExtension(m_display, &event, &error, &major, &minor);
}

bool zoDesktopInput::hasWindowManager() const
{
    const Atom property = XInternAtom(m_display, "_NET_SUPPORTING_WM_CHECK", False);
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(m_display, DefaultRootWindow(m_display), property, 0, 1, False, AnyPropertyType, &type,
                       &format, &count, &left, &data);
    if (data)
        XFree(data);
    return count > 0;
}

void zoDesktopInput::click(QPoint position)
{
    ++m_clicks;
    moveTo(position);
    XTestFakeButtonEvent(m_display, 1, True, CurrentTime);
    XTestFakeButtonEvent(m_display, 1, False, CurrentTime);
    flush();
}

void zoDesktopInput::grab(QPoint position)
{
    ++m_clicks;
    moveTo(position);
    XTestFakeButtonEvent(m_display, 1, True, CurrentTime);
    flush();
}

void zoDesktopInput::carryTo(QPoint position)
{
    moveTo(position);
    flush();
}

void zoDesktopInput::letGo()
{
    XTestFakeButtonEvent(m_display, 1, False, CurrentTime);
    flush();
}

void zoDesktopInput::press(Key key)
{
    tap(XKeysymToKeycode(m_display, symbolOf(key)));
    flush();
}

void zoDesktopInput::pressControl(char letter)
{
    tap(XKeysymToKeycode(m_display, static_cast<KeySym>(letter)), false, true);
    flush();
}

bool zoDesktopInput::type(const QString& text)
{
    struct Stroke
    {
        unsigned keyCode;
        bool withShift;
    };
    std::vector<Stroke> strokes;
    for (const QChar c : text) {
        // The symbols of Latin-1 are its codes.
        const KeySym symbol = c.unicode();
        const KeyCode code = XKeysymToKeycode(m_display, symbol);
        if (code == 0)
            return false;
        if (XkbKeycodeToKeysym(m_display, code, 0, 0) == symbol)
            strokes.push_back({code, false});
        else if (XkbKeycodeToKeysym(m_display, code, 0, 1) == symbol)
            strokes.push_back({code, true});
        else
            return false;
    }
    for (const Stroke& stroke : strokes)
        tap(stroke.keyCode, stroke.withShift);
    flush();
    return true;
}

void zoDesktopInput::resetCounts()
{
    m_clicks = 0;
    m_keys = 0;
}

void zoDesktopInput::moveTo(QPoint position)
{
    XTestFakeMotionEvent(m_display, DefaultScreen(m_display), position.x(), position.y(), CurrentTime);
}

void zoDesktopInput::tap(unsigned keyCode, bool withShift, bool withControl)
{
    ++m_keys;
    const unsigned shift = XKeysymToKeycode(m_display, XK_Shift_L);
    const unsigned control = XKeysymToKeycode(m_display, XK_Control_L);
    if (withShift)
        XTestFakeKeyEvent(m_display, shift, True, CurrentTime);
    if (withControl)
        XTestFakeKeyEvent(m_display, control, True, CurrentTime);
    XTestFakeKeyEvent(m_display, keyCode, True, CurrentTime);
    XTestFakeKeyEvent(m_display, keyCode, False, CurrentTime);
    if (withControl)
        XTestFakeKeyEvent(m_display, control, False, CurrentTime);
    if (withShift)
        XTestFakeKeyEvent(m_display, shift, False, CurrentTime);
}

// Until the server has done all of it.
void zoDesktopInput::flush()
{
    XSync(m_display, False);
}
