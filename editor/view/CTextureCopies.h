#pragma once

#include "editor/view/OpenGl.h"

#include <cstdint>
#include <vector>

class ITexture;

enum class ECopyKind
{
    Grey,  // one byte a texel, as brushes and masks are read
    Color, // with the palette of paletted ones
};

// Copies of the engine's textures in the context, made when they are first shown, made again when
// they have changed and given up when they are no longer shown. Owned by the renderer.
class CTextureCopies
{
public:
    void Begin() { ++m_Frame; } // a frame

    // Binds a copy to that unit; null binds none. Returns the bytes that were sent.
    uint64_t Bind(OpenGl& gl, GLenum eUnit, ITexture* pTexture, ECopyKind eKind);
    void Sweep(OpenGl& gl); // after the frame: what it has not shown goes
    void Release(OpenGl& gl);

private:
    struct SCopy
    {
        const ITexture* pTexture = nullptr; // for comparing only
        ECopyKind eKind = ECopyKind::Grey;
        uint32_t uRevision = 0;
        GLuint uName = 0;
        uint64_t uFrame = 0;
    };

    uint64_t Fill(OpenGl& gl, ITexture& texture, ECopyKind eKind);

    std::vector<SCopy> m_Copies;
    std::vector<uint8_t> m_Scratch;
    uint64_t m_Frame = 0;
};
