#include "editor/view/CSmoothTarget.h"

#include "host/Log.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr GLint SAMPLES = 4;

} // namespace

bool CSmoothTarget::Begin(OpenGl& gl, int iWidth, int iHeight)
{
    gl.glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &m_Target);
    if (m_Width != iWidth || m_Height != iHeight)
    {
        Release(gl);
        m_Width = iWidth;
        m_Height = iHeight;
        m_bFailed = !Make(gl, iWidth, iHeight);
        if (m_bFailed && !std::exchange(m_bSaid, true)) // the next sizes mostly fail as well
        {
            CrashLog("[CSmoothTarget::Begin] the graphics card cannot smooth edges at %d x %d\n",
                     iWidth,
                     iHeight);
        }
    }
    gl.glBindFramebuffer(GL_FRAMEBUFFER, m_bFailed ? static_cast<GLuint>(m_Target) : m_Buffer);
    return !m_bFailed;
}

void CSmoothTarget::End(OpenGl& gl) const
{
    const auto uTarget = static_cast<GLuint>(m_Target);
    gl.glBindFramebuffer(GL_READ_FRAMEBUFFER, m_Buffer);
    gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER, uTarget);
    gl.glBlitFramebuffer(
        0, 0, m_Width, m_Height, 0, 0, m_Width, m_Height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    gl.glBindFramebuffer(GL_FRAMEBUFFER, uTarget);
}

void CSmoothTarget::Release(OpenGl& gl)
{
    gl.glDeleteFramebuffers(1, &m_Buffer);
    gl.glDeleteRenderbuffers(1, &m_Color);
    gl.glDeleteRenderbuffers(1, &m_Depth);
    m_Buffer = m_Color = m_Depth = 0;
    m_Width = m_Height = 0;
}

bool CSmoothTarget::Make(OpenGl& gl, int iWidth, int iHeight)
{
    GLint iMost = 0;
    gl.glGetIntegerv(GL_MAX_SAMPLES, &iMost);
    const GLint iSamples = std::min(SAMPLES, iMost);
    const auto make = [&](GLuint& uBuffer, GLenum eFormat, GLenum ePlace)
    {
        gl.glGenRenderbuffers(1, &uBuffer);
        gl.glBindRenderbuffer(GL_RENDERBUFFER, uBuffer);
        gl.glRenderbufferStorageMultisample(GL_RENDERBUFFER, iSamples, eFormat, iWidth, iHeight);
        gl.glFramebufferRenderbuffer(GL_FRAMEBUFFER, ePlace, GL_RENDERBUFFER, uBuffer);
    };
    gl.glGenFramebuffers(1, &m_Buffer);
    gl.glBindFramebuffer(GL_FRAMEBUFFER, m_Buffer);
    make(m_Color, GL_RGBA8, GL_COLOR_ATTACHMENT0); // as the view's, or no mean can be taken
    make(m_Depth, GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT);
    gl.glBindRenderbuffer(GL_RENDERBUFFER, 0);
    return gl.glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}
