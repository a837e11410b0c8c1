#pragma once

#include "zoShowSurface.h"
#include "zoStereoMode.h"

#include <QImage>
#include <QSize>

#include <memory>

class QOpenGLContext;
class QOpenGLFunctions_3_3_Core;
class QOpenGLFramebufferObject;
class zoGLMixer;
class zoViewportPicture;

// Draws with OpenGL 3.3 core: the same figures as the raster surface. What a viewport shows goes straight to the window
// unless it has edges, flips or two eyes in one picture; then to a texture for each eye first.
class zoGLSurface final : public zoShowSurface
{
public:
    // With a quad buffer and in the swap group if the machine has them.
    zoGLSurface(bool wantsQuadBuffer, bool wantsSwapGroup);
    ~zoGLSurface() override;

    // After the window has its screen and place: makes the window's context. Empty, or why there is none.
    QString create();
    bool hasQuadBuffer() const { return m_hasQuadBuffer; }
    bool isInSwapGroup() const { return m_isInSwapGroup; }

    zoShowWindow& window() override { return *m_window; }
    QString description() const override;
    void draw(const zoWindowPicture& picture) override;
    void finish() override;
    void swap() override;
    void repeat(const zoWindowPicture& picture) override;
    QImage frame(const zoWindowPicture& picture) override;

private:
    using Eye = zoStereoMode::Eye;

    void paintAll(const zoWindowPicture& picture, unsigned framebuffer, Eye eye);
    void paintPart(const zoViewportPicture& picture, const QRect& rect, unsigned framebuffer, Eye eye);
    unsigned eyeTexture(const zoViewportPicture& picture, Eye eye);

    std::unique_ptr<zoShowWindow> m_window;
    std::unique_ptr<QOpenGLContext> m_context;
    std::unique_ptr<QOpenGLFunctions_3_3_Core> m_gl; // of the context
    std::unique_ptr<zoGLMixer> m_mixer;
    std::unique_ptr<QOpenGLFramebufferObject> m_eyes[2]; // what is painted for each eye
    std::unique_ptr<QOpenGLFramebufferObject> m_smooth;  // with samples
    QString m_renderer;
    bool m_wantsQuadBuffer;
    bool m_wantsSwapGroup;
    bool m_hasQuadBuffer = false;
    bool m_isInSwapGroup = false;
};
