#pragma once

#include "editor/view/OpenGl.h"
#include "engine/terrain/CVertexProtection.h"

#include <cstdint>
#include <vector>

class CShader;

// A copy in the context of which vertices are protected, a bit a vertex: each square of 64 x 64
// takes 8 x 16 texels of 32 bits, its rows one after the other. There only while something is
// protected; brings up to date the squares that changed and no more. Owned by the renderer.
class CProtectionCopy
{
public:
    // Binds the copy to that unit and tells the ground's shader, which is in use, whether there is
    // one. Returns the bytes that were sent.
    uint64_t Bind(OpenGl& gl, GLenum eUnit, const CVertexProtection& protection, CShader& ground);
    void Release(OpenGl& gl);

private:
    void Allocate(OpenGl& gl, const CVertexProtection& protection);
    uint64_t Update(OpenGl& gl, const CVertexProtection& protection);

    GLuint m_Texture = 0;
    CVertexProtection m_Shown; // what the copy has
    std::vector<uint32_t> m_Scratch;
    bool m_bTooLarge = false; // for the card
};
