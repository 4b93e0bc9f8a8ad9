#version 330 core

in vec3 vPosition;
in vec2 vGrid;
in vec2 vCorner;

uniform sampler2D uNormals;
uniform sampler2D uTypes;
uniform sampler2D uMask;
uniform ivec2 uTile;
uniform vec2 uTileSize; // texels of the normals
uniform float uTexels;  // of the normals, from a vertex to the next
uniform vec3 uSize;     // of the terrain
uniform vec3 uSun;      // towards it
uniform float uAmbient;
uniform vec3 uEye;
uniform vec4 uHaze;     // colour, and how much of it is there at the distance below
uniform float uHazeDistance;

uniform int uKind; // EMaterialKind
uniform vec4 uColors[5];
uniform int uColorCount;
uniform float uStep;
uniform vec2 uRange; // lowest and highest ground

uniform float uTypeBlend;
uniform vec4 uTypeMap;      // share of the terrain to the bitmap: scale, then offset
uniform vec4 uTypeChannels; // which are visible, 0 or 1
uniform bool uTypeSwapped;  // blue comes first
uniform bool uPainting;     // the bitmap is laid over the shaded ground
uniform vec2 uMaskScale; // terrain units to the mask; 0: none
uniform vec4 uMaskColor;
uniform usampler2D uProtected; // see CProtectionCopy
uniform bool uProtecting;      // something is
uniform bool uFlat;
uniform bool uWire;
uniform bool uGrid;

out vec4 oColor;

// How much of a line one pixel wide runs through here, for a line at each whole number.
float Line(float fAt, float fWidth, float fPixels)
{
    float fDistance = abs(fract(fAt - 0.5) - 0.5);
    return clamp(fPixels * 0.5 + 0.5 - fDistance / max(fWidth, 1e-6), 0.0, 1.0);
}

vec3 Ramp(float fShare)
{
    float fAt = clamp(fShare, 0.0, 1.0) * float(uColorCount - 1);
    int i = min(int(fAt), uColorCount - 1);
    return mix(uColors[i].rgb, uColors[min(i + 1, uColorCount - 1)].rgb, fAt - float(i));
}

vec3 GetChecker()
{
    vec2 at = vGrid / max(uStep, 1.0) * 0.5;
    vec2 width = max(fwidth(at), vec2(1e-6));
    // The mean of the pattern over the pixel, so that it fades to the middle far away.
    vec2 mean = 2.0 * (abs(fract(at - 0.5 * width) - 0.5) - abs(fract(at + 0.5 * width) - 0.5)) / width;
    return mix(uColors[0].rgb, uColors[1].rgb, 0.5 - 0.5 * clamp(mean.x, -1.0, 1.0) * clamp(mean.y, -1.0, 1.0));
}

vec3 GetContours()
{
    float fWidth = fwidth(vPosition.y / uStep);
    float fFade = clamp(0.9 / max(fWidth, 1e-6) * 0.25, 0.0, 1.0);
    float fFine = Line(vPosition.y / uStep, fWidth, 1.0) * fFade;
    float fStrong = Line(vPosition.y / (uStep * 5.0), fWidth * 0.2, 1.6) * clamp(fFade * 4.0, 0.0, 1.0);
    vec3 color = mix(uColors[0].rgb, uColors[1].rgb, fFine * uColors[1].a);
    return mix(color, uColors[2].rgb, fStrong * uColors[2].a);
}

vec3 GetGround(vec3 normal)
{
    if (uKind == 1)
    {
        return GetChecker();
    }
    if (uKind == 2)
    {
        return GetContours();
    }
    if (uKind == 3)
    {
        return Ramp(degrees(acos(clamp(normal.y, 0.0, 1.0))) / max(uStep, 1.0));
    }
    if (uKind == 4)
    {
        return Ramp((vPosition.y - uRange.x) / max(uRange.y - uRange.x, 1e-3));
    }
    return uColors[0].rgb;
}

// The bitmap's colour here, and how much of it covers the ground.
vec4 GetType()
{
    vec4 type = texture(uTypes, vPosition.xz / uSize.xz * uTypeMap.xy + uTypeMap.zw);
    type = uTypeSwapped ? type.bgra : type;
    if (uTypeChannels.rgb == vec3(0.0))
    {
        return vec4(vec3(type.a), uTypeChannels.a); // alpha alone is a grey level
    }
    return vec4(type.rgb * uTypeChannels.rgb, mix(1.0, type.a, uTypeChannels.a));
}

bool IsProtected(ivec2 vertex)
{
    ivec2 at = vertex & 63;
    int iWord = at.y * 2 + (at.x >> 5);
    uint uBits = texelFetch(uProtected, (vertex >> 6) * ivec2(8, 16) + ivec2(iWord & 7, iWord >> 3), 0).r;
    return ((uBits >> uint(at.x & 31)) & 1u) != 0u;
}

// Stripes as wide on the screen wherever the ground lies, so that they show near and far.
vec3 Hatch(vec3 color)
{
    if (!IsProtected(ivec2(floor(vGrid + 0.5))))
    {
        return color;
    }
    float fAcross = fract((gl_FragCoord.x + gl_FragCoord.y) / 12.0);
    float fStripe = clamp(2.5 - abs(fAcross - 0.5) * 12.0, 0.0, 1.0);
    vec3 tinted = mix(color, vec3(0.20, 0.62, 0.92), 0.18);
    return mix(tinted, vec3(0.10, 0.36, 0.62), fStripe * 0.8);
}

void main()
{
    vec3 normal;
    if (uFlat)
    {
        normal = normalize(cross(dFdx(vPosition), dFdy(vPosition)));
        normal = normal.y < 0.0 ? -normal : normal;
    }
    else
    {
        // 0 is -32767, 65534 is 32767.
        vec2 at = ((vGrid - vec2(uTile)) * uTexels + 0.5) / uTileSize;
        vec2 across = texture(uNormals, at).rg * (65535.0 / 32767.0) - 1.0;
        normal = vec3(across.x, sqrt(max(1.0 - dot(across, across), 0.0)), across.y);
    }
    vec3 color = GetGround(normal);
    vec4 type = GetType();
    type.a *= uTypeBlend;
    if (!uPainting)
    {
        color = mix(color, type.rgb, type.a);
    }
    if (vPosition.y < 0.0)
    {
        color *= 0.55; // not editable
    }
    float fLight = uAmbient * (0.8 + 0.2 * normal.y) + (1.0 - uAmbient) * max(dot(normal, uSun), 0.0);
    color *= fLight * 1.15;
    if (uPainting)
    {
        color = mix(color, type.rgb, type.a);
    }
    if (uGrid)
    {
        vec2 width = fwidth(vGrid);
        float fFade = clamp(0.35 - max(width.x, width.y), 0.0, 0.35) * 2.0;
        float fCell = max(Line(vGrid.x, width.x, 1.0), Line(vGrid.y, width.y, 1.0)) * fFade;
        vec2 block = vGrid / 32.0;
        width /= 32.0;
        fFade = clamp(0.25 - max(width.x, width.y), 0.0, 0.25) * 2.4;
        float fBlock = max(Line(block.x, width.x, 1.5), Line(block.y, width.y, 1.5)) * fFade;
        color = mix(color, vec3(0.05, 0.06, 0.08), max(fCell, fBlock));
    }
    if (uWire)
    {
        vec2 width = fwidth(vCorner);
        float fEdge = max(max(Line(vCorner.x, width.x, 1.0), Line(vCorner.y, width.y, 1.0)),
                          Line(vCorner.x + vCorner.y, fwidth(vCorner.x + vCorner.y), 1.0));
        color = mix(color, vec3(0.04, 0.09, 0.16), fEdge * 0.75);
    }
    if (uMaskScale.x > 0.0)
    {
        // A texel counts in full where it begins, as for the brush.
        vec2 at = vPosition.xz * uMaskScale + 0.5 / vec2(textureSize(uMask, 0));
        float fKept = 1.0 - texture(uMask, at).r;
        color = mix(color, uMaskColor.rgb, fKept * uMaskColor.a);
    }
    if (uProtecting)
    {
        color = Hatch(color);
    }
    float fHaze = uHaze.a * smoothstep(0.25, 1.0, distance(uEye, vPosition) / uHazeDistance);
    oColor = vec4(mix(color, uHaze.rgb, fHaze), 1.0);
}
