#include "editor/view/CTextureCopies.h"

#include "engine/world/CTexture.h"

#include <algorithm>
#include <memory>

namespace
{

constexpr size_t BYTES = 4; // of a colour

uint32_t GetRevision(const ITexture& texture)
{
    const auto* pTexture = dynamic_cast<const CTexture*>(&texture);
    return pTexture != nullptr ? pTexture->GetRevision() : 0;
}

// Rows of red, green, blue, alpha; false for a texture without pixels.
bool GetColors(const ITexture& texture, std::vector<uint8_t>& colors)
{
    const auto* pTexture = dynamic_cast<const CTexture*>(&texture);
    const std::unique_ptr<IImage> pColors(
        pTexture != nullptr ? IL_CreateImageFromImage(&pTexture->GetImage(), EImageFormat::Rgba32)
                            : nullptr);
    if (pColors == nullptr || pColors->GetRawData() == nullptr)
    {
        return false;
    }
    const size_t nTexels = size_t{pColors->GetWidth()} * pColors->GetHeight();
    colors.assign(pColors->GetRawData(), pColors->GetRawData() + nTexels * BYTES);
    const IPalette* pPalette = pTexture->GetPalette();
    const uint8_t* pIndices = pTexture->GetImage().GetRawData();
    for (size_t i = 0; pPalette != nullptr && i < nTexels; ++i)
    {
        if (const uint8_t* pEntry = pPalette->GetEntry(pIndices[i]))
        {
            std::copy(pEntry, pEntry + 3, colors.begin() + static_cast<std::ptrdiff_t>(i * BYTES));
        }
    }
    return true;
}

} // namespace

uint64_t CTextureCopies::Bind(OpenGl& gl, GLenum eUnit, ITexture* pTexture, ECopyKind eKind)
{
    gl.glActiveTexture(eUnit);
    if (pTexture == nullptr)
    {
        gl.glBindTexture(GL_TEXTURE_2D, 0);
        return 0;
    }
    auto found = std::find_if(m_Copies.begin(),
                              m_Copies.end(),
                              [&](const SCopy& copy)
                              { return copy.pTexture == pTexture && copy.eKind == eKind; });
    if (found == m_Copies.end())
    {
        SCopy copy = {pTexture, eKind, 0, 0, 0};
        gl.glGenTextures(1, &copy.uName);
        m_Copies.push_back(copy);
        found = std::prev(m_Copies.end());
    }
    const uint32_t uRevision = GetRevision(*pTexture);
    // A texture at the address of one that has gone was not shown in the frame before.
    const bool bNew = found->uFrame + 1 < m_Frame || found->uRevision != uRevision;
    found->uFrame = m_Frame;
    gl.glBindTexture(GL_TEXTURE_2D, found->uName);
    if (!bNew)
    {
        return 0;
    }
    found->uRevision = uRevision;
    return Fill(gl, *pTexture, eKind);
}

uint64_t CTextureCopies::Fill(OpenGl& gl, ITexture& texture, ECopyKind eKind)
{
    const auto iWidth = static_cast<GLsizei>(texture.GetWidth());
    const auto iHeight = static_cast<GLsizei>(texture.GetHeight());
    const size_t nTexels = size_t{texture.GetWidth()} * texture.GetHeight();
    // Rows follow one another without gaps.
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    if (eKind == ECopyKind::Grey)
    {
        const uint8_t* pBytes = texture.LockBytes();
        gl.glTexImage2D(
            GL_TEXTURE_2D, 0, GL_R8, iWidth, iHeight, 0, GL_RED, GL_UNSIGNED_BYTE, pBytes);
        texture.Unlock();
    }
    else if (GetColors(texture, m_Scratch))
    {
        gl.glTexImage2D(GL_TEXTURE_2D,
                        0,
                        GL_RGBA8,
                        iWidth,
                        iHeight,
                        0,
                        GL_RGBA,
                        GL_UNSIGNED_BYTE,
                        m_Scratch.data());
        gl.glGenerateMipmap(GL_TEXTURE_2D);
    }
    const bool bColor = eKind == ECopyKind::Color;
    gl.glTexParameteri(
        GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, bColor ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    gl.glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    return nTexels * (bColor ? BYTES : 1);
}

void CTextureCopies::Sweep(OpenGl& gl)
{
    for (SCopy& copy : m_Copies)
    {
        if (copy.uFrame != m_Frame)
        {
            gl.glDeleteTextures(1, &copy.uName);
            copy.uName = 0;
        }
    }
    std::erase_if(m_Copies, [](const SCopy& copy) { return copy.uName == 0; });
}

void CTextureCopies::Release(OpenGl& gl)
{
    ++m_Frame;
    Sweep(gl);
}
