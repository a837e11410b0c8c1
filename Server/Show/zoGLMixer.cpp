#include "zoGLMixer.h"

#include <QOpenGLFunctions_3_3_Core>
#include <QOpenGLShaderProgram>
#include <QOpenGLVertexArrayObject>

namespace
{
const char* const VertexShader = R"(#version 330 core
void main()
{
    // One triangle over all; the viewport cuts it.
    gl_Position = vec4(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0, 0.0, 1.0);
}
)";

// Texel 0, 0 of an eye is at its lower left.
const char* const FragmentShader = R"(#version 330 core
uniform sampler2D left;
uniform sampler2D right;
uniform int mode;
uniform ivec4 rect;        // x, y, width, height in the framebuffer, y down
uniform ivec2 framebuffer; // pixels
uniform ivec2 origin;      // of the framebuffer on the screen
uniform ivec2 eyeSize;
uniform vec4 edges;        // left, right, top, bottom
uniform float gamma;
uniform bvec2 flips;
out vec4 colour;

float light(float place)
{
    float t = clamp(place, 0.0, 1.0);
    return t * t * (3.0 - 2.0 * t);
}

float share(float middle, float size, float first, float last)
{
    float result = 1.0;
    if (first > 0.0)
        result *= light(middle / first);
    if (last > 0.0)
        result *= light((size - middle) / last);
    return pow(result, 1.0 / gamma);
}

vec3 eyeAt(sampler2D eye, ivec2 pixel)
{
    ivec2 at = pixel;
    if (flips.x)
        at.x = eyeSize.x - 1 - at.x;
    if (flips.y)
        at.y = eyeSize.y - 1 - at.y;
    vec3 value = texelFetch(eye, ivec2(at.x, eyeSize.y - 1 - at.y), 0).rgb;
    return value * share(float(at.x) + 0.5, float(eyeSize.x), edges.x, edges.y) *
           share(float(at.y) + 0.5, float(eyeSize.y), edges.z, edges.w);
}

void main()
{
    ivec2 inWindow = ivec2(int(gl_FragCoord.x), framebuffer.y - 1 - int(gl_FragCoord.y));
    ivec2 pixel = inWindow - rect.xy;
    ivec2 onScreen = inWindow + origin;
    bool isRight = false;
    ivec2 inEye = pixel;
    if (mode == 4)
        isRight = (onScreen.y & 1) != 0;
    else if (mode == 5)
        isRight = (onScreen.x & 1) != 0;
    else if (mode == 6) {
        isRight = pixel.x >= rect.z - eyeSize.x;
        inEye.x -= isRight ? rect.z - eyeSize.x : 0;
    } else if (mode == 7) {
        isRight = pixel.y >= rect.w - eyeSize.y;
        inEye.y -= isRight ? rect.w - eyeSize.y : 0;
    }
    vec3 value = vec3(0.0);
    if (inEye.x < eyeSize.x && inEye.y < eyeSize.y)
        value = isRight ? eyeAt(right, inEye) : eyeAt(left, inEye);
    if (mode >= 8) {
        vec3 keep = mode == 8 ? vec3(1.0, 0.0, 0.0) : mode == 9 ? vec3(0.0, 0.0, 1.0) : vec3(0.0, 1.0, 0.0);
        value = mix(eyeAt(right, inEye), value, keep);
    }
    colour = vec4(value, 1.0);
}
)";

using zoStereoMode::Mode;

// The numbers of the shader.
static_assert(int(Mode::RowInterlaced) == 4 && int(Mode::ColumnInterlaced) == 5 &&
              int(Mode::SplitLeftRight) == 6 && int(Mode::SplitTopBottom) == 7 && int(Mode::RedCyan) == 8 &&
              int(Mode::BlueYellow) == 9 && int(Mode::GreenMagenta) == 10);
} // namespace

zoGLMixer::zoGLMixer(QOpenGLFunctions_3_3_Core& functions)
    : m_gl(functions)
    , m_program(std::make_unique<QOpenGLShaderProgram>())
    , m_vertices(std::make_unique<QOpenGLVertexArrayObject>())
{
    m_program->addShaderFromSourceCode(QOpenGLShader::Vertex, VertexShader);
    m_program->addShaderFromSourceCode(QOpenGLShader::Fragment, FragmentShader);
    m_program->link();
    m_vertices->create();
}

zoGLMixer::~zoGLMixer() = default;

bool zoGLMixer::isValid() const
{
    return m_program->isLinked() && m_vertices->isCreated();
}

void zoGLMixer::mix(const Eyes& eyes, Mode mode, const QRect& rect, const QSize& framebuffer,
                    const QPoint& origin)
{
    // The painter leaves its own state behind.
    for (const GLenum state : {GL_BLEND, GL_DEPTH_TEST, GL_STENCIL_TEST, GL_SCISSOR_TEST, GL_CULL_FACE})
        m_gl.glDisable(state);
    m_gl.glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    m_gl.glViewport(rect.x(), framebuffer.height() - rect.y() - rect.height(), rect.width(), rect.height());
    m_gl.glActiveTexture(GL_TEXTURE1);
    m_gl.glBindTexture(GL_TEXTURE_2D, eyes.right);
    m_gl.glActiveTexture(GL_TEXTURE0);
    m_gl.glBindTexture(GL_TEXTURE_2D, eyes.left);
    m_program->bind();
    const auto place = [this](const char* name) { return m_program->uniformLocation(name); };
    m_program->setUniformValue("left", 0);
    m_program->setUniformValue("right", 1);
    m_program->setUniformValue("mode", int(mode));
    // The triangle covers the viewport alone; gl_FragCoord counts in the framebuffer.
    m_gl.glUniform4i(place("rect"), rect.x(), rect.y(), rect.width(), rect.height());
    m_gl.glUniform2i(place("framebuffer"), framebuffer.width(), framebuffer.height());
    m_gl.glUniform2i(place("origin"), origin.x(), origin.y());
    m_gl.glUniform2i(place("eyeSize"), eyes.size.width(), eyes.size.height());
    m_gl.glUniform2i(place("flips"), eyes.flipX ? 1 : 0, eyes.flipY ? 1 : 0);
    m_gl.glUniform4f(place("edges"), float(eyes.edges.left), float(eyes.edges.right), float(eyes.edges.top),
                     float(eyes.edges.bottom));
    m_gl.glUniform1f(place("gamma"), eyes.gamma > 0.0 ? float(eyes.gamma) : 1.0F);
    m_vertices->bind();
    m_gl.glDrawArrays(GL_TRIANGLES, 0, 3);
    m_vertices->release();
    m_program->release();
    m_gl.glActiveTexture(GL_TEXTURE1);
    m_gl.glBindTexture(GL_TEXTURE_2D, 0);
    m_gl.glActiveTexture(GL_TEXTURE0);
    m_gl.glBindTexture(GL_TEXTURE_2D, 0);
}
