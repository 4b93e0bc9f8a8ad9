#pragma once

#include "editor/view/OpenGl.h"
#include "engine/terrain/SVertexRect.h"

#include <cstdint>

class CPaintLayer;

// A copy in the context of the bitmap that is being painted on, with its smaller copies for far
// ground. Brings up to date the texels that changed and no more. Owned by the renderer.
class CPaintCopy
{
public:
    // Binds the copy to that unit. Returns the bytes that were sent. False in bShown when the layer
    // shows no bitmap or the card cannot hold it, which is logged once for a bitmap.
    uint64_t Bind(OpenGl& gl, GLenum eUnit, const CPaintLayer& layer, bool& bShown);
    void Release(OpenGl& gl);

private:
    bool Allocate(OpenGl& gl, uint32_t uWidth, uint32_t uHeight);
    void UpdateLevels(OpenGl& gl, const SVertexRect& changed);

    GLuint m_Texture = 0;
    GLuint m_Frames[2] = {}; // framebuffers that read one level and draw the next
    uint32_t m_Width = 0;
    uint32_t m_Height = 0;
    uint64_t m_Revision = 0;
    bool m_bTooLarge = false;
};
