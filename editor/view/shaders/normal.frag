#version 330 core

// Normals of a tile's vertices from its heights; a pixel is a texel of a level of the normals.

uniform sampler2D uHeights; // with one vertex more on every side
uniform ivec2 uFirst;       // vertex of the tile
uniform ivec2 uLast;        // of the terrain
uniform vec2 uStep;         // terrain units between vertices
uniform int uLevel;

out vec2 oNormal;

float GetHeight(int iX, int iZ)
{
    return texelFetch(uHeights, ivec2(iX, iZ) - uFirst + 1, 0).r;
}

// In whole steps of 1 / 32767.
vec2 GetNormal(ivec2 vertex)
{
    ivec2 low = max(vertex - 1, 0);
    ivec2 high = min(vertex + 1, uLast);
    vec2 rise = vec2(GetHeight(high.x, vertex.y) - GetHeight(low.x, vertex.y),
                     GetHeight(vertex.x, high.y) - GetHeight(vertex.x, low.y));
    vec2 slope = rise / (vec2(high - low) * uStep);
    return floor(-slope / sqrt(1.0 + dot(slope, slope)) * 32767.0 + 0.5);
}

void main()
{
    ivec2 corner = uFirst + (ivec2(gl_FragCoord.xy) << uLevel);
    vec2 normal;
    if (uLevel == 0)
    {
        normal = GetNormal(corner);
    }
    else
    {
        ivec2 near = min(corner + (1 << uLevel) / 4, uLast);
        ivec2 far = min(corner + (1 << uLevel) * 3 / 4, uLast);
        normal = floor((GetNormal(near) + GetNormal(ivec2(far.x, near.y)) + GetNormal(ivec2(near.x, far.y)) +
                        GetNormal(far)) * 0.25 + 0.5);
    }
    oNormal = (clamp(normal, -32767.0, 32767.0) + 32767.0) / 65535.0;
}
