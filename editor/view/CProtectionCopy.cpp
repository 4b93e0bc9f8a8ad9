#include "editor/view/CProtectionCopy.h"

#include "editor/view/CShader.h"
#include "host/Log.h"

namespace
{

constexpr uint32_t TEXELS_X = 8; // of a square
constexpr uint32_t TEXELS_Z = 16;
constexpr size_t TEXELS = size_t{TEXELS_X} * TEXELS_Z;
constexpr unsigned WORD_BITS = 32;

// The words of a row lie side by side, the low one first. Null: all bits are 0.
void GetTexels(const uint64_t* pRows, uint32_t* pTexels)
{
    for (size_t z = 0; z < CVertexProtection::SIDE; ++z)
    {
        const uint64_t uRow = pRows != nullptr ? pRows[z] : 0;
        pTexels[2 * z] = static_cast<uint32_t>(uRow);
        pTexels[2 * z + 1] = static_cast<uint32_t>(uRow >> WORD_BITS);
    }
}

} // namespace

uint64_t CProtectionCopy::Bind(OpenGl& gl,
                               GLenum eUnit,
                               const CVertexProtection& protection,
                               CShader& ground)
{
    const bool bSize =
        m_Shown.GetSizeX() == protection.GetSizeX() && m_Shown.GetSizeZ() == protection.GetSizeZ();
    if (protection.IsEmpty() || !bSize)
    {
        Release(gl);
        m_bTooLarge = m_bTooLarge && bSize;
    }
    gl.glActiveTexture(eUnit);
    if (!protection.IsEmpty() && m_Texture == 0 && !m_bTooLarge)
    {
        Allocate(gl, protection);
    }
    gl.glBindTexture(GL_TEXTURE_2D, m_Texture);
    ground.Set("uProtecting", m_Texture != 0 ? 1 : 0);
    return m_Texture != 0 ? Update(gl, protection) : 0;
}

void CProtectionCopy::Release(OpenGl& gl)
{
    gl.glDeleteTextures(1, &m_Texture);
    m_Texture = 0;
    m_Shown = {};
}

void CProtectionCopy::Allocate(OpenGl& gl, const CVertexProtection& protection)
{
    const uint32_t uWidth = protection.GetSquaresX() * TEXELS_X;
    const uint32_t uHeight = protection.GetSquaresZ() * TEXELS_Z;
    GLint iMost = 0;
    gl.glGetIntegerv(GL_MAX_TEXTURE_SIZE, &iMost);
    m_Shown = CVertexProtection(protection.GetSizeX(), protection.GetSizeZ());
    m_bTooLarge = iMost < static_cast<GLint>(uWidth) || iMost < static_cast<GLint>(uHeight);
    if (m_bTooLarge)
    {
        CrashLog("[CProtectionCopy] the graphics card cannot show what is protected\n");
        return;
    }
    gl.glGenTextures(1, &m_Texture);
    gl.glBindTexture(GL_TEXTURE_2D, m_Texture);
    // Whole numbers are not mixed with their neighbours.
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, 0);
    m_Scratch.assign(size_t{uWidth} * uHeight, 0);
    gl.glTexImage2D(GL_TEXTURE_2D,
                    0,
                    GL_R32UI,
                    static_cast<GLsizei>(uWidth),
                    static_cast<GLsizei>(uHeight),
                    0,
                    GL_RED_INTEGER,
                    GL_UNSIGNED_INT,
                    m_Scratch.data());
    m_Scratch = {};
}

uint64_t CProtectionCopy::Update(OpenGl& gl, const CVertexProtection& protection)
{
    uint64_t uBytes = 0;
    uint32_t texels[TEXELS];
    for (uint32_t z = 0; z < protection.GetSquaresZ() && m_Shown.GetId() != protection.GetId(); ++z)
    {
        for (uint32_t x = 0; x < protection.GetSquaresX(); ++x)
        {
            // Squares never change: one that is shared is the same.
            const uint64_t* pRows = protection.FindRows(x, z);
            if (m_Shown.FindRows(x, z) != pRows)
            {
                GetTexels(pRows, texels);
                gl.glTexSubImage2D(GL_TEXTURE_2D,
                                   0,
                                   static_cast<GLint>(x * TEXELS_X),
                                   static_cast<GLint>(z * TEXELS_Z),
                                   TEXELS_X,
                                   TEXELS_Z,
                                   GL_RED_INTEGER,
                                   GL_UNSIGNED_INT,
                                   texels);
                uBytes += sizeof(texels);
            }
        }
    }
    if (uBytes > 0)
    {
        m_Shown = protection;
    }
    return uBytes;
}
