#version 330 core

// A patch of 16 x 16 squares. Its borders keep only the vertices that the neighbour has.

layout(location = 0) in vec2 aCorner;  // 0 to 16
layout(location = 1) in ivec4 aPatch;  // first column, first row, stride, levels to the neighbours

uniform sampler2D uHeights; // with one vertex more on every side
uniform ivec2 uTile;  // first vertex of the texture
uniform int uCoarse;  // the texture has every 2^n-th vertex
uniform ivec2 uLast;  // last vertex of the terrain
uniform vec2 uCell;   // terrain units
uniform mat4 uMatrix;

out vec3 vPosition;
out vec2 vGrid;   // vertices from the terrain's corner
out vec2 vCorner; // squares from the patch's corner
invariant gl_Position; // what is laid over the ground has the same places

// Counted from the terrain's corner: beside coarse ground the next vertex may lie outside the patch.
int Snap(int iAlong, int iFirst, int iLevels)
{
    int iFrom = iFirst / aPatch.z;
    return ((iFrom + iAlong) & ~((1 << iLevels) - 1)) - iFrom;
}

void main()
{
    ivec2 corner = ivec2(aCorner);
    int iNeighbours = aPatch.w;
    if (corner.x == 0)
    {
        corner.y = Snap(corner.y, aPatch.y, iNeighbours & 15);
    }
    else if (corner.x == 16)
    {
        corner.y = Snap(corner.y, aPatch.y, (iNeighbours >> 4) & 15);
    }
    if (corner.y == 0)
    {
        corner.x = Snap(corner.x, aPatch.x, (iNeighbours >> 8) & 15);
    }
    else if (corner.y == 16)
    {
        corner.x = Snap(corner.x, aPatch.x, (iNeighbours >> 12) & 15);
    }
    ivec2 vertex = min(aPatch.xy + corner * aPatch.z, uLast);
    // The last vertex of the terrain may not be one of the 2^n-th; it comes after them.
    ivec2 texel = (vertex - uTile + (1 << uCoarse) - 1) >> uCoarse;
    float fHeight = texelFetch(uHeights, texel + 1, 0).r;
    vPosition = vec3(float(vertex.x) * uCell.x, fHeight, float(vertex.y) * uCell.y);
    vGrid = vec2(vertex);
    vCorner = vec2(corner);
    gl_Position = uMatrix * vec4(vPosition, 1.0);
}
