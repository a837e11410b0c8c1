#pragma once

class QDialogButtonBox;

// Letters for the standard buttons of a dialog, which have none by themselves: Alt+O confirms wherever the focus is.
class zoHPCButtonKeys final
{
public:
    zoHPCButtonKeys() = delete;

    // OK, Cancel and Apply, as far as the box has them. A button that has a letter keeps it.
    static void addTo(const QDialogButtonBox& box);
};
