#include "editor/view/CPaintCopy.h"

#include "engine/paint/CPaintLayer.h"
#include "host/IPaintLayer.h"
#include "host/Image.h"
#include "host/Log.h"

#include <algorithm>

namespace
{

// The texels of the next level that a part of a level reaches.
SVertexRect Halve(const SVertexRect& rect, uint32_t uWidth, uint32_t uHeight)
{
    const SVertexRect half = {
        rect.uMinX / 2, rect.uMinZ / 2, (rect.uEndX + 1) / 2, (rect.uEndZ + 1) / 2};
    return half.Grown(1, uWidth, uHeight);
}

} // namespace

uint64_t CPaintCopy::Bind(OpenGl& gl, GLenum eUnit, const CPaintLayer& layer, bool& bShown)
{
    bShown = false;
    if (!layer.IsShown())
    {
        Release(gl);
        return 0;
    }
    const IImage& image = *layer.GetImage();
    gl.glActiveTexture(eUnit);
    const bool bSame = m_Width == image.GetWidth() && m_Height == image.GetHeight();
    if (!bSame && !Allocate(gl, image.GetWidth(), image.GetHeight()))
    {
        return 0;
    }
    // As long as this bitmap is shown: the fault was logged when it came.
    if (m_bTooLarge)
    {
        return 0;
    }
    bShown = true;
    gl.glBindTexture(GL_TEXTURE_2D, m_Texture);
    const SVertexRect changed = layer.GetChangedSince(m_Revision);
    m_Revision = layer.GetRevision();
    if (changed.IsEmpty())
    {
        return 0;
    }
    const auto iWidth = static_cast<GLsizei>(changed.uEndX - changed.uMinX);
    const auto iHeight = static_cast<GLsizei>(changed.uEndZ - changed.uMinZ);
    const uint8_t* pFirst =
        image.GetRawData() + (size_t{changed.uMinZ} * m_Width + changed.uMinX) * PAINT_TEXEL_BYTES;
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, static_cast<GLint>(m_Width));
    gl.glTexSubImage2D(GL_TEXTURE_2D,
                       0,
                       static_cast<GLint>(changed.uMinX),
                       static_cast<GLint>(changed.uMinZ),
                       iWidth,
                       iHeight,
                       GL_RGBA,
                       GL_UNSIGNED_BYTE,
                       pFirst);
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    UpdateLevels(gl, changed);
    return static_cast<uint64_t>(iWidth) * static_cast<uint64_t>(iHeight) * PAINT_TEXEL_BYTES;
}

bool CPaintCopy::Allocate(OpenGl& gl, uint32_t uWidth, uint32_t uHeight)
{
    // This also forgets the revision, so that all of the bitmap counts as changed.
    Release(gl);
    m_Width = uWidth;
    m_Height = uHeight;
    GLint iMost = 0;
    gl.glGetIntegerv(GL_MAX_TEXTURE_SIZE, &iMost);
    if (std::max(uWidth, uHeight) > static_cast<uint32_t>(iMost))
    {
        m_bTooLarge = true;
        CrashLog("[CPaintCopy] a bitmap of %u x %u texels is too large for the graphics card, "
                 "which takes %d; it can be painted on but not be seen\n",
                 uWidth,
                 uHeight,
                 iMost);
        return false;
    }
    gl.glGenTextures(1, &m_Texture);
    gl.glGenFramebuffers(2, m_Frames);
    gl.glBindTexture(GL_TEXTURE_2D, m_Texture);
    GLint iLevel = 0;
    for (uint32_t uLevelWidth = uWidth, uLevelHeight = uHeight;; ++iLevel)
    {
        gl.glTexImage2D(GL_TEXTURE_2D,
                        iLevel,
                        GL_RGBA8,
                        static_cast<GLsizei>(uLevelWidth),
                        static_cast<GLsizei>(uLevelHeight),
                        0,
                        GL_RGBA,
                        GL_UNSIGNED_BYTE,
                        nullptr);
        if (uLevelWidth == 1 && uLevelHeight == 1)
        {
            break;
        }
        uLevelWidth = std::max(uLevelWidth / 2, 1U);
        uLevelHeight = std::max(uLevelHeight / 2, 1U);
    }
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, iLevel);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    return true;
}

// The card makes each smaller copy from the one before, in the changed part alone; having all of
// them made anew would cost as much as sending the whole bitmap.
void CPaintCopy::UpdateLevels(OpenGl& gl, const SVertexRect& changed)
{
    GLint iDrawBefore = 0;
    GLint iReadBefore = 0;
    gl.glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &iDrawBefore);
    gl.glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &iReadBefore);
    gl.glBindFramebuffer(GL_READ_FRAMEBUFFER, m_Frames[0]);
    gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER, m_Frames[1]);
    SVertexRect part = changed;
    uint32_t uWidth = m_Width;
    uint32_t uHeight = m_Height;
    for (GLint iLevel = 1; uWidth > 1 || uHeight > 1; ++iLevel)
    {
        const uint32_t uSourceWidth = uWidth;
        const uint32_t uSourceHeight = uHeight;
        uWidth = std::max(uWidth / 2, 1U);
        uHeight = std::max(uHeight / 2, 1U);
        part = Halve(part, uWidth, uHeight);
        gl.glFramebufferTexture2D(
            GL_READ_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, m_Texture, iLevel - 1);
        gl.glFramebufferTexture2D(
            GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, m_Texture, iLevel);
        // A side that is one texel long already keeps that texel as its source.
        gl.glBlitFramebuffer(static_cast<GLint>(std::min(part.uMinX * 2, uSourceWidth - 1)),
                             static_cast<GLint>(std::min(part.uMinZ * 2, uSourceHeight - 1)),
                             static_cast<GLint>(std::min(part.uEndX * 2, uSourceWidth)),
                             static_cast<GLint>(std::min(part.uEndZ * 2, uSourceHeight)),
                             static_cast<GLint>(part.uMinX),
                             static_cast<GLint>(part.uMinZ),
                             static_cast<GLint>(part.uEndX),
                             static_cast<GLint>(part.uEndZ),
                             GL_COLOR_BUFFER_BIT,
                             GL_LINEAR);
    }
    gl.glBindFramebuffer(GL_DRAW_FRAMEBUFFER, static_cast<GLuint>(iDrawBefore));
    gl.glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(iReadBefore));
}

void CPaintCopy::Release(OpenGl& gl)
{
    if (m_Texture != 0)
    {
        gl.glDeleteTextures(1, &m_Texture);
        gl.glDeleteFramebuffers(2, m_Frames);
    }
    *this = {};
}
