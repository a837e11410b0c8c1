#pragma once

#include "zoStereoMode.h"

#include <zoWallSetup.h>

#include <QPoint>
#include <QRect>
#include <QSize>

#include <memory>

class QOpenGLFunctions_3_3_Core;
class QOpenGLShaderProgram;
class QOpenGLVertexArrayObject;

// Brings the textures of the eyes into a framebuffer, by rows, columns, halves or colours, with edges and flips. Does
// to pixels what zoViewportPicture does to images.
class zoGLMixer final
{
public:
    struct Eyes
    {
        unsigned left;
        unsigned right; // the same for one eye
        QSize size;     // of either texture
        zoWallEdges edges;
        double gamma;
        bool flipX;
        bool flipY;
    };

    // With a current context, which must be so for all calls, the last one included.
    explicit zoGLMixer(QOpenGLFunctions_3_3_Core& functions);
    ~zoGLMixer();

    bool isValid() const;
    // Into this rectangle of the framebuffer that is bound, of this size, y down; the origin is that of its upper left
    // corner on the screen.
    void mix(const Eyes& eyes, zoStereoMode::Mode mode, const QRect& rect, const QSize& framebuffer,
             const QPoint& origin);

private:
    QOpenGLFunctions_3_3_Core& m_gl;
    std::unique_ptr<QOpenGLShaderProgram> m_program;
    std::unique_ptr<QOpenGLVertexArrayObject> m_vertices; // none, but the core profile wants to know
};
