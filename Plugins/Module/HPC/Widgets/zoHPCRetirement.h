#pragma once

class QWidget;

// Ends what goes on in a window of the module that outlives the module object: the host owns the windows.
class zoHPCRetirement final
{
public:
    // Hides the window with its dialogs. Timers stop, posted calls are dropped, services are heard no more and
    // keys of the host's window are the host's alone. Without an application nothing can go on any more.
    static void retire(QWidget* window);
};
