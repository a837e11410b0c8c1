#include "zoGLSurface.h"

#include "zoGLMixer.h"
#include "zoGLProbe.h"
#include "zoShowWindow.h"
#include "zoWindowPicture.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions_3_3_Core>
#include <QOpenGLPaintDevice>
#include <QPainter>

using zoStereoMode::Mode;

namespace
{
constexpr int Samples = 4;

QString tr(const char* text)
{
    return QCoreApplication::translate("zoGLSurface", text);
}

std::unique_ptr<QOpenGLFramebufferObject> makeFramebuffer(const QSize& size, int samples)
{
    QOpenGLFramebufferObjectFormat format;
    format.setInternalTextureFormat(GL_RGBA8);
    // The painter clips and fills with it.
    format.setAttachment(samples > 0 ? QOpenGLFramebufferObject::CombinedDepthStencil
                                     : QOpenGLFramebufferObject::NoAttachment);
    format.setSamples(samples);
    return std::make_unique<QOpenGLFramebufferObject>(size, format);
}
} // namespace

zoGLSurface::zoGLSurface(bool wantsQuadBuffer, bool wantsSwapGroup)
    : m_window(std::make_unique<zoShowWindow>(QSurface::OpenGLSurface))
    , m_wantsQuadBuffer(wantsQuadBuffer)
    , m_wantsSwapGroup(wantsSwapGroup)
{
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setSamples(Samples);
    format.setStencilBufferSize(8);
    format.setStereo(wantsQuadBuffer);
    // The barrier of the wall says when to swap; windows that waited for their screens one after the other would
    // take a frame each.
    format.setSwapInterval(0);
    m_window->setFormat(format);
}

zoGLSurface::~zoGLSurface()
{
    if (m_context && m_context->makeCurrent(m_window.get())) {
        m_mixer.reset();
        m_smooth.reset();
        for (auto& eye : m_eyes)
            eye.reset();
        m_context->doneCurrent();
    }
    m_gl.reset();
    m_context.reset();
}

QString zoGLSurface::create()
{
    m_window->create();
    m_context = std::make_unique<QOpenGLContext>();
    m_context->setScreen(m_window->screen());
    m_context->setFormat(m_window->requestedFormat());
    if (!m_context->create() || !m_context->makeCurrent(m_window.get())) {
        m_context.reset();
        return tr("no GL context");
    }
    m_gl = std::make_unique<QOpenGLFunctions_3_3_Core>();
    if (!m_gl->initializeOpenGLFunctions())
        return tr("GL is older than 3.3");
    m_renderer = QString::fromLatin1(reinterpret_cast<const char*>(m_gl->glGetString(GL_RENDERER)));
    // What was asked for is granted or, without a word, not.
    m_hasQuadBuffer = m_wantsQuadBuffer && m_context->format().stereo();
    m_isInSwapGroup = m_wantsSwapGroup && zoGLProbe::joinSwapGroup(*m_context);
    m_mixer = std::make_unique<zoGLMixer>(*m_gl);
    return m_mixer->isValid() ? QString() : tr("the GL driver takes no shaders");
}

QString zoGLSurface::description() const
{
    return QStringLiteral("GL, ") + m_renderer;
}

void zoGLSurface::draw(const zoWindowPicture& picture)
{
    if (!m_context || !m_context->makeCurrent(m_window.get()))
        return;
    const unsigned framebuffer = m_context->defaultFramebufferObject();
    if (!m_hasQuadBuffer) {
        paintAll(picture, framebuffer, Eye::Middle);
        return;
    }
    m_gl->glDrawBuffer(GL_BACK_LEFT);
    paintAll(picture, framebuffer, Eye::Left);
    m_gl->glDrawBuffer(GL_BACK_RIGHT);
    paintAll(picture, framebuffer, Eye::Right);
    m_gl->glDrawBuffer(GL_BACK);
}

void zoGLSurface::finish()
{
    if (m_context && m_context->makeCurrent(m_window.get()))
        m_gl->glFinish();
}

void zoGLSurface::swap()
{
    if (m_context && m_window->isExposed() && m_context->makeCurrent(m_window.get()))
        m_context->swapBuffers(m_window.get());
}

// What a buffer holds once it was swapped, nobody knows.
void zoGLSurface::repeat(const zoWindowPicture& picture)
{
    draw(picture);
    finish();
    swap();
}

QImage zoGLSurface::frame(const zoWindowPicture& picture)
{
    if (!m_context || !m_context->makeCurrent(m_window.get()))
        return {};
    // What covers the window on the screen covers none of this.
    const auto target = makeFramebuffer(m_window->size(), Samples);
    paintAll(picture, target->handle(), m_hasQuadBuffer ? Eye::Left : Eye::Middle);
    return target->toImage().convertToFormat(QImage::Format_RGB32);
}

// The eye counts for viewports with a quad buffer alone.
void zoGLSurface::paintAll(const zoWindowPicture& picture, unsigned framebuffer, Eye eye)
{
    const QSize size = m_window->size();
    m_gl->glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    m_gl->glDisable(GL_SCISSOR_TEST);
    m_gl->glViewport(0, 0, size.width(), size.height());
    m_gl->glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
    m_gl->glClear(GL_COLOR_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    if (picture.content() != zoShowContent::None) {
        for (const zoWindowPicture::Part& part : picture.parts(size))
            paintPart(part.picture, part.rect, framebuffer, eye);
    }
    if (picture.isFramed()) {
        QOpenGLPaintDevice device(size);
        QPainter painter(&device);
        picture.paintFrame(painter, size);
    }
}

void zoGLSurface::paintPart(const zoViewportPicture& picture, const QRect& rect, unsigned framebuffer,
                            Eye eye)
{
    const Mode mode = picture.mode();
    const Eye only = mode == Mode::QuadBuffer ? eye : zoStereoMode::onlyEye(mode);
    if (!picture.needsMore()) {
        QOpenGLPaintDevice device(m_window->size());
        QPainter painter(&device);
        picture.paintEye(painter, rect, only);
        return;
    }
    const bool isForBoth = zoStereoMode::isForBothEyes(mode) && mode != Mode::QuadBuffer;
    zoGLMixer::Eyes eyes{};
    eyes.left = eyeTexture(picture, isForBoth ? Eye::Left : only);
    eyes.right = isForBoth ? eyeTexture(picture, Eye::Right) : eyes.left;
    eyes.size = picture.eyeSize();
    eyes.edges = picture.edges();
    eyes.gamma = picture.gamma();
    eyes.flipX = picture.flipX();
    eyes.flipY = picture.flipY();
    m_gl->glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    m_mixer->mix(eyes, mode, rect, m_window->size(), m_window->mapToGlobal(QPoint(0, 0)));
}

// Painted with samples, then resolved into the texture of the eye.
unsigned zoGLSurface::eyeTexture(const zoViewportPicture& picture, Eye eye)
{
    const QSize size = picture.eyeSize();
    if (!m_smooth || m_smooth->size() != size)
        m_smooth = makeFramebuffer(size, Samples);
    std::unique_ptr<QOpenGLFramebufferObject>& target = m_eyes[eye == Eye::Right ? 1 : 0];
    if (!target || target->size() != size)
        target = makeFramebuffer(size, 0);
    m_smooth->bind();
    m_gl->glViewport(0, 0, size.width(), size.height());
    m_gl->glClear(GL_COLOR_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    {
        QOpenGLPaintDevice device(size);
        QPainter painter(&device);
        picture.paintEye(painter, QRect(QPoint(0, 0), size), eye);
    }
    QOpenGLFramebufferObject::blitFramebuffer(target.get(), m_smooth.get());
    return target->texture();
}
