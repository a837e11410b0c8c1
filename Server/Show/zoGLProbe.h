#pragma once

#include <QString>

class QOpenGLContext;

// What GL there is on this machine, found out with a context of its own.
struct zoGLProbe
{
    bool isAvailable = false; // 3.3 core or newer
    bool isHardware = false;  // not one of the renderers that run on the processor
    bool hasQuadBuffer = false;
    bool hasSwapGroup = false;
    QString renderer; // as the driver calls it; why not, where there is none
    QString version;

    // Takes some hundred milliseconds the first time, on the thread of the application object.
    static const zoGLProbe& machine();

    // Of the context that is current.
    static bool isHardwareRenderer(const QString& renderer);
    // The extensions of the window system's binding, which functions of these need not be missing without.
    static bool hasBindingExtension(QOpenGLContext& context, const char* name);
    // Has the hardware swap the window of the context that is current together with those of other machines that are
    // cabled to it. False where it cannot, or refuses.
    static bool joinSwapGroup(QOpenGLContext& context);
};
