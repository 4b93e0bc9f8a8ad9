#pragma once

#include "editor/view/OpenGl.h"
#include "engine/terrain/SVertexRect.h"

#include <algorithm>
#include <cstdint>

// A part of a terrain as textures: its heights with one vertex more on every side, and its normals
// with their smaller pictures. Normals have two channels of 16 bits, x and z: 0 is -32767 and 65534
// is 32767 of CNormalField's numbers. Cards can draw this format since OpenGL 3.3; the one with a
// sign they need not.
struct SNormalTile
{
    static constexpr GLenum FORMAT = GL_RG16;
    static constexpr float SCALE = 32767.0F;

    GLuint uHeights = 0;
    GLuint uNormals = 0;
    SVertexRect vertices; // of the terrain, without those beside it
    uint32_t uLevels = 0; // of the normals

    // The texels of a level that a part of the vertices reaches. A texel is the mean of four
    // normals: a quarter and three quarters into its block of 2^uLevel vertices a side.
    SVertexRect GetTexels(const SVertexRect& part, uint32_t uLevel) const
    {
        const uint32_t uWidth = std::max(1U, (vertices.uEndX - vertices.uMinX) >> uLevel);
        const uint32_t uDepth = std::max(1U, (vertices.uEndZ - vertices.uMinZ) >> uLevel);
        const auto clip = [uLevel](uint32_t uVertex, uint32_t uSize)
        {
            return std::min(uVertex >> uLevel, uSize - 1);
        };
        return {clip(part.uMinX - vertices.uMinX, uWidth),
                clip(part.uMinZ - vertices.uMinZ, uDepth),
                clip(part.uEndX - 1 - vertices.uMinX, uWidth) + 1,
                clip(part.uEndZ - 1 - vertices.uMinZ, uDepth) + 1};
    }
};
