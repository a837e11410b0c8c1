#pragma once

class QDialog;
class Ui_zoHPCDisplayGUII;

// How large the display-setup dialog and its panes are.
class zoHPCDisplaySize final
{
public:
    zoHPCDisplaySize() = delete;

    // Trees, panels and a preview that wants this width (pixels) side by side, within the screen.
    static void begin(QDialog& dialog, const Ui_zoHPCDisplayGUII& form, int previewWidth);
    // Once all parts know their sizes, which depend on style and language.
    static void fitScreen(QDialog& dialog, const Ui_zoHPCDisplayGUII& form);
};
