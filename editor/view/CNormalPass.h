#pragma once

#include "editor/view/CShader.h"
#include "editor/view/OpenGl.h"
#include "engine/terrain/SVertexRect.h"

#include <cstdint>
#include <string>
#include <vector>

// A part of a terrain as textures: its heights with one vertex more on every side, and its normals
// with their smaller pictures.
struct SNormalTile
{
    GLuint uHeights = 0;
    GLuint uNormals = 0;
    SVertexRect vertices; // of the terrain, without those beside it
    uint32_t uLevels = 0; // of the normals
};

// The whole of which a tile is a part.
struct SNormalGround
{
    uint32_t uLastX = 0; // last vertex
    uint32_t uLastZ = 0;
    float fStepX = 1.0F; // terrain units between neighbours
    float fStepZ = 1.0F;
};

// Lets the card make the normals of a terrain's vertices from the heights that it has: central
// differences, one-sided at the terrain's border, as CNormalField. A texel of a smaller picture is
// the mean of four normals inside its block. Owned by the tiles; draws into a frame of its own and
// changes viewport, program, arrays and the texture of unit 0.
class CNormalPass
{
public:
    // How normals are kept, two channels: 0 is -32767, 65534 is 32767 of a 16-bit number. Cards can
    // draw this format since OpenGL 3.3, the one with a sign they need not.
    static constexpr GLenum FORMAT = GL_RG16;

    // False, with one line in strFault.
    bool Make(OpenGl& gl, std::string& strFault);
    void Release(OpenGl& gl);

    // Whether the card draws into such textures.
    bool CanDraw(OpenGl& gl, GLuint uNormals);

    // The normals of the vertices in changed, which lie in the tile, in all levels.
    void Draw(OpenGl& gl,
              const SNormalTile& tile,
              const SNormalGround& ground,
              const std::vector<SVertexRect>& changed);

private:
    CShader m_Shader;
};
