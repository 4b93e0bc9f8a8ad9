#pragma once

#include "editor/view/CShader.h"
#include "editor/view/OpenGl.h"
#include "editor/view/SNormalTile.h"
#include "engine/terrain/SVertexRect.h"

#include <cstdint>
#include <string>
#include <vector>

// The whole of which a tile is a part.
struct SNormalGround
{
    uint32_t uLastX = 0; // last vertex
    uint32_t uLastZ = 0;
    float fStepX = 1.0F; // terrain units between neighbours
    float fStepZ = 1.0F;
};

// Lets the card make the normals of a terrain's vertices from the heights that it has: central
// differences, one-sided at the terrain's border, as CNormalField. Owned by the tiles; draws into a
// frame of its own and changes viewport, program, arrays and the texture of unit 0.
class CNormalPass
{
public:
    // Makes the program for the context that is current. False, with one line in strFault, when the
    // driver refuses it.
    bool Make(OpenGl& gl, std::string& strFault);
    void Release(OpenGl& gl);

    // Whether the card draws into such textures.
    bool CanDraw(OpenGl& gl, GLuint uNormals);

    // Draws the normals of the vertices in changed, which lie in the tile, in all levels.
    void Draw(OpenGl& gl,
              const SNormalTile& tile,
              const SNormalGround& ground,
              const std::vector<SVertexRect>& changed);

private:
    CShader m_Shader;
};
