#pragma once

class QObject;
class QZODataWidgetMapper;
class Ui_zoHPCDisplayGUII;

// The panel of a display: eye separation, camera, user and hardware synchronisation.
class zoHPCDisplayPanel final
{
public:
    // The dialog's form, set up, and the mapper of the output tree; not owned.
    zoHPCDisplayPanel(const Ui_zoHPCDisplayGUII& form, QZODataWidgetMapper& mapper);

    // The cameras of the scene; what is chosen stays, though it may be none of them.
    void updateCameraList();
    // The slot updateCameraList() of the dialog hears of cameras that come, go or are renamed.
    static void followCameras(const QObject& dialog);

private:
    const Ui_zoHPCDisplayGUII& m_ui;
};
