#version 330 core

// Compiled anew for what a frame shows, because a processor that draws works through both sides of
// every condition: KIND is a EMaterialKind; DETAIL, FLAT, WIRE, GRID, TYPES, MASK, PROTECTED and STEEP are
// 0 or 1.

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
uniform vec3 uSunLight; // lights are factors of the squares of colours
uniform vec3 uSkyLight; // from above
uniform vec3 uBounce;   // from below
uniform vec3 uDither;   // see DITHER
uniform vec3 uEye;
uniform vec4 uHaze;     // colour, and how much of it is there at the distance below
uniform float uHazeDistance;

uniform vec4 uColors[5];
uniform int uColorCount;
uniform float uStep;
uniform vec2 uRange;    // lowest and highest ground
uniform vec4 uEdges[5]; // see SGroundTints: from, to
uniform vec3 uPatches;  // in a terrain unit, PATCH_FALL, PATCH_MEAN
uniform vec3 uEffect;   // see PATCH_EFFECT

uniform float uTypeBlend;
uniform vec4 uTypeMap;      // share of the terrain to the bitmap: scale, then offset
uniform vec4 uTypeChannels; // which are visible, 0 or 1
uniform bool uTypeSwapped;  // blue comes first
uniform bool uPainting;     // the bitmap is laid over the shaded ground
uniform vec2 uMaskScale; // terrain units to the mask; 0: none
uniform vec4 uMaskColor;
uniform usampler2D uProtected; // see CProtectionCopy
uniform vec2 uSteep; // cosines of the angle that is too steep, and of one near to it
uniform bool uProtecting;      // something is

out vec4 oColor;

// How much a value changes from pixel to pixel.
float GetChange(float fValue)
{
    return length(vec2(dFdx(fValue), dFdy(fValue)));
}

// How much of a line so many pixels wide runs through here, for a line at each whole number.
float Line(float fAt, float fChange, float fPixels)
{
    float fDistance = abs(fract(fAt - 0.5) - 0.5);
    return clamp(fPixels * 0.5 + 0.5 - fDistance / max(fChange, 1e-6), 0.0, 1.0);
}

// Lines that would lie closer than some pixels make way for the ground; ground without a slope has
// none.
float GetLineShare(float fChange)
{
    return (1.0 - smoothstep(0.14, 0.34, fChange)) * step(1e-4, fChange);
}

vec3 Ramp(float fShare)
{
    float fAt = clamp(fShare, 0.0, 1.0) * float(uColorCount - 1);
    int i = min(int(fAt), uColorCount - 1);
    return mix(uColors[i].rgb, uColors[min(i + 1, uColorCount - 1)].rgb, fAt - float(i));
}

#if DETAIL
float Hash(ivec2 at)
{
    uint u = uint(at.x) * 374761393u + uint(at.y) * 668265263u;
    u = (u ^ (u >> 13u)) * 1274126177u;
    return float((u ^ (u >> 16u)) & 65535u) / 65535.0;
}
#endif

// As GetRoughness; what would be finer than a pixel is its mean.
float GetRough()
{
#if DETAIL
    vec2 at = vPosition.xz * uPatches.x;
    float fPixel = max(length(dFdx(at)), length(dFdy(at)));
    float fSum = 0.0;
    float fShare = 0.5;
    for (int i = 0; i < 5; ++i)
    {
        ivec2 cell = ivec2(floor(at));
        vec2 share = smoothstep(0.0, 1.0, fract(at));
        float fTop = mix(Hash(cell), Hash(cell + ivec2(1, 0)), share.x);
        float fLow = mix(Hash(cell + ivec2(0, 1)), Hash(cell + ivec2(1, 1)), share.x);
        fSum += fShare * mix(mix(fTop, fLow, share.y), 0.5, smoothstep(0.3, 0.8, fPixel));
        at *= 2.1;
        fPixel *= 2.1;
        fShare *= uPatches.y;
    }
    return (fSum - uPatches.z) * 2.0;
#else
    return 0.0;
#endif
}

#if KIND == 1
vec3 GetGround(vec3 normal)
{
    vec2 at = vGrid / max(uStep, 1.0) * 0.5;
    vec2 width = max(fwidth(at), vec2(1e-6));
    // The mean of the pattern over the pixel, so that it fades to the middle far away.
    vec2 mean = 2.0 * (abs(fract(at - 0.5 * width) - 0.5) - abs(fract(at + 0.5 * width) - 0.5)) / width;
    return mix(uColors[0].rgb, uColors[1].rgb, 0.5 - 0.5 * clamp(mean.x, -1.0, 1.0) * clamp(mean.y, -1.0, 1.0));
}
#elif KIND == 2
vec3 GetGround(vec3 normal)
{
    float fAt = vPosition.y / uStep;
    float fChange = GetChange(fAt);
    float fFine = Line(fAt, fChange, 1.0) * GetLineShare(fChange);
    float fStrong = Line(fAt * 0.2, fChange * 0.2, 1.6) * GetLineShare(fChange * 0.2);
    vec3 color = mix(uColors[0].rgb, uColors[1].rgb, fFine * uColors[1].a);
    return mix(color, uColors[2].rgb, fStrong * uColors[2].a);
}
#elif KIND == 3
vec3 GetGround(vec3 normal)
{
    return Ramp(degrees(acos(clamp(normal.y, 0.0, 1.0))) / max(uStep, 1.0));
}
#elif KIND == 4
vec3 GetGround(vec3 normal)
{
    return Ramp((vPosition.y - uRange.x) / max(uRange.y - uRange.x, 1e-3));
}
#elif KIND == 5
float Step(int i, float fValue)
{
    return smoothstep(uEdges[i].x, uEdges[i].y, fValue);
}

// As GetGroundTint.
vec3 GetGround(vec3 normal)
{
    float fRough = GetRough();
    float fShare = (vPosition.y - uRange.x) / (uRange.y - uRange.x) + uEffect.x * fRough;
    float fSteep = 1.0 - normal.y;
    vec3 color = mix(uColors[0].rgb, uColors[1].rgb, Step(0, fShare));
    color = mix(color, uColors[2].rgb, Step(1, fShare));
    color = mix(color, uColors[3].rgb, Step(3, fSteep + uEffect.y * fRough));
    color *= 1.0 + uEffect.z * fRough;
    return mix(color, uColors[4].rgb, Step(2, fShare) * (1.0 - Step(4, fSteep)));
}
#elif KIND == 6
// Texels of the normals, from the tile's first.
vec2 GetTexel(vec2 grid)
{
    return (grid - vec2(uTile)) * uTexels + 0.5;
}

vec2 GetMeanNormal(vec2 texel, float fLevel)
{
    return textureLod(uNormals, texel / uTileSize, fLevel).rg * (65535.0 / 32767.0) - 1.0;
}

// How much the mean normals lean towards each other from one side of a square to the other, which is
// that many vertices wide: half the angle of a valley. 0 or below on hills.
float GetLean(float fVertices)
{
    float fReach = max(fVertices * uTexels * 0.5, 0.5);
    float fLevel = max(log2(fReach) - 1.0, log2(max(length(dFdx(vGrid)), length(dFdy(vGrid))) * uTexels));
    fReach = max(fReach, 0.5 * exp2(max(fLevel, 0.0)));
    vec2 at = GetTexel(vGrid);
    vec2 low = max(at - fReach, vec2(0.5)); // not beyond the tile
    vec2 high = min(at + fReach, uTileSize - 0.5);
    float fX = GetMeanNormal(vec2(low.x, at.y), fLevel).x - GetMeanNormal(vec2(high.x, at.y), fLevel).x;
    float fZ = GetMeanNormal(vec2(at.x, low.y), fLevel).y - GetMeanNormal(vec2(at.x, high.y), fLevel).y;
    return fX + fZ;
}

// An estimate of the sky that hollows see, from what a light needs anyway: it follows every stroke.
vec3 GetGround(vec3 normal)
{
    float fSum = 0.5 * GetLean(3.0) + 0.6 * GetLean(8.0) + 0.7 * GetLean(20.0);
    float fDark = (uStep > 0.0 ? uStep : 1.0) * max(fSum, 0.0);
    return uColors[0].rgb / (1.0 + fDark) * (1.0 + 0.2 * clamp(-fSum, 0.0, 1.0));
}
#else
vec3 GetGround(vec3 normal)
{
    return uColors[0].rgb;
}
#endif

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
#if FLAT
    vec3 normal = normalize(cross(dFdx(vPosition), dFdy(vPosition)));
    normal = normal.y < 0.0 ? -normal : normal;
#else
    // 0 is -32767, 65534 is 32767.
    vec2 texel = ((vGrid - vec2(uTile)) * uTexels + 0.5) / uTileSize;
    vec2 across = texture(uNormals, texel).rg * (65535.0 / 32767.0) - 1.0;
    vec3 normal = vec3(across.x, sqrt(max(1.0 - dot(across, across), 0.0)), across.y);
#endif
    vec3 color = GetGround(normal);
#if TYPES
    vec4 type = GetType();
    type.a *= uTypeBlend;
    if (!uPainting)
    {
        color = mix(color, type.rgb, type.a);
    }
#endif
    if (vPosition.y < 0.0)
    {
        color *= 0.55; // not editable
    }
    vec3 light = uSunLight * max(dot(normal, uSun), 0.0) + mix(uBounce, uSkyLight, 0.5 + 0.5 * normal.y);
    color *= sqrt(light);
#if TYPES
    if (uPainting)
    {
        color = mix(color, type.rgb, type.a);
    }
#endif
#if STEEP
    vec3 steep = normal.y < uSteep.x ? vec3(0.95, 0.50, 0.08) : vec3(0.16, 0.38, 0.85);
    color = mix(color, steep, normal.y < uSteep.y ? 0.6 : 0.0);
#endif
#if GRID
    vec2 change = vec2(GetChange(vGrid.x), GetChange(vGrid.y));
    float fCell = max(Line(vGrid.x, change.x, 1.0) * GetLineShare(change.x),
                      Line(vGrid.y, change.y, 1.0) * GetLineShare(change.y));
    vec2 block = vGrid / 32.0;
    change /= 32.0;
    float fBlock = max(Line(block.x, change.x, 1.5) * GetLineShare(change.x),
                       Line(block.y, change.y, 1.5) * GetLineShare(change.y));
    color = mix(color, vec3(0.05, 0.06, 0.08), max(fCell * 0.45, fBlock * 0.65));
#endif
#if WIRE
    vec2 width = fwidth(vCorner);
    float fEdge = max(max(Line(vCorner.x, width.x, 1.0), Line(vCorner.y, width.y, 1.0)),
                      Line(vCorner.x + vCorner.y, fwidth(vCorner.x + vCorner.y), 1.0));
    color = mix(color, vec3(0.04, 0.09, 0.16), fEdge * 0.75);
#endif
#if MASK
    // A texel counts in full where it begins, as for the brush.
    vec2 at = vPosition.xz * uMaskScale + 0.5 / vec2(textureSize(uMask, 0));
    float fKept = 1.0 - texture(uMask, at).r;
    color = mix(color, uMaskColor.rgb, fKept * uMaskColor.a);
#endif
#if PROTECTED
    if (uProtecting)
    {
        color = Hatch(color);
    }
#endif
    float fHaze = uHaze.a * smoothstep(0.25, 1.0, distance(uEye, vPosition) / uHazeDistance);
    color = mix(color, uHaze.rgb, fHaze);
    oColor = vec4(color + (fract(dot(gl_FragCoord.xy, uDither.xy)) - 0.5) * uDither.z, 1.0);
}
