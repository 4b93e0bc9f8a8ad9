#version 330 core

// The mark of the tool, laid over ground that is drawn already: its weight here, and its outline.

in vec3 vPosition;

uniform sampler2D uShape;
uniform sampler2D uMask;
uniform vec2 uMaskScale; // terrain units to the mask; 0: none

const int MOST_MARKS = 17;
uniform int uMarks;                 // footprints of the tool
uniform int uStrips;                // or strips that it lays
uniform vec4 uMarkAt[MOST_MARKS];   // middle of a footprint; first end of a strip and its length
uniform vec4 uMarkAxes[MOST_MARKS]; // rows that lead into the shape; direction x and z, and rise
uniform vec2 uMarkShift;            // of the shape
uniform vec2 uMarkReach;            // of a footprint to either side of its middle, along x and z
uniform vec4 uMarkStrength; // power, hardness, 1 / vertical distance or 0, strength of the tint
uniform vec4 uMarkTarget;   // height; 1 only raises to it, -1 only lowers; 1: the middle's height; 1: paints
uniform vec4 uStrip;        // half width, that of the full part, share of an end, as uMarkTarget.y
uniform vec4 uMarkColor;

out vec4 oColor; // what is added, and how much of the ground stays

// How much of a line runs through a place that lies so many pixels away.
float GetRim(float fPixels)
{
    return 1.0 - smoothstep(0.5, 2.0, abs(fPixels));
}

float GetBand(float fAway)
{
    return max(0.0, 1.0 - abs(fAway) * uMarkStrength.z);
}

// The weight that a footprint has here, without power and mask, and how much of its outline is here.
vec2 GetFootprint(vec4 middle, vec4 axes)
{
    vec2 away = vPosition.xz - middle.xz;
    vec2 at = vec2(dot(axes.xy, away), dot(axes.zw, away));
    vec2 edge = (0.5 - abs(at)) / max(fwidth(at), vec2(1e-6));
    // However the shape is turned, the tool reaches no further than a square along the axes.
    edge = min(edge, (uMarkReach - abs(away)) / max(fwidth(away), vec2(1e-6)));
    float fEdge = min(edge.x, edge.y); // in pixels
    float fSample = textureLod(uShape, at + 0.5 + uMarkShift, 0.0).r;
    float fWeight = fSample < 0.0001 ? 0.0 : clamp(fSample + uMarkStrength.y, 0.0, 1.0);
    fWeight *= GetBand(vPosition.y - middle.y);
    float fTarget = uMarkTarget.z > 0.0 ? middle.y : uMarkTarget.x;
    fWeight *= step(0.0, (fTarget - vPosition.y) * uMarkTarget.y);
    // The outline is where the brush begins to have an effect, and the border where it has one.
    float fBegin = max(0.04 - uMarkStrength.y, 0.006);
    float fSlope = fwidth(fSample);
    float fRim = 1.0 - smoothstep(0.0, 1.5, abs(fSample - fBegin) / max(fSlope, 1e-4));
    fRim *= step(1e-4, fSlope);
    fRim = max(fRim, GetRim(fEdge) * step(fBegin, fSample));
    return vec2(fWeight, fRim) * step(0.0, fEdge);
}

// As above, for a strip; without a direction it is a disc.
vec2 GetStrip(vec4 first, vec4 axes)
{
    vec2 offset = vPosition.xz - first.xz;
    float fAt = dot(offset, axes.xy);
    float fAway = length(offset - axes.xy * fAt);
    float fAlong = fAt / max(first.w, 1e-6);
    float fCore = uStrip.x - uStrip.y;
    float fWeight = fAway < uStrip.y ? 1.0 : fCore > 0.0 ? (uStrip.x - fAway) / fCore : 0.0;
    fWeight *= fAlong < uStrip.z ? fAlong / uStrip.z : fAlong > 1.0 - uStrip.z ? (1.0 - fAlong) / uStrip.z : 1.0;
    float fDelta = first.y + axes.z * fAlong - vPosition.y;
    fWeight *= GetBand(fDelta) * step(0.0, fDelta * uStrip.w);
    float fAcross = max(fwidth(fAway), 1e-6); // a pixel
    float fForward = max(fwidth(fAt), 1e-6);
    float fEnd = first.w > 0.0 ? min(fAt, first.w - fAt) / fForward : 1e6;
    float fEdge = min((uStrip.x - fAway) / fAcross, fEnd);
    float fInner = GetRim((fAway - uStrip.y) / fAcross) * step(0.5, fCore / fAcross);
    float fBlend = uStrip.z * first.w / fForward;
    fInner = max(fInner, GetRim(fEnd - fBlend) * step(0.5, fBlend));
    return vec2(fWeight, max(GetRim(fEdge), 0.5 * fInner)) * step(0.0, fEdge);
}

void main()
{
    vec2 mark = vec2(0.0);
    for (int i = 0; i < uMarks; ++i)
    {
        mark = max(mark, GetFootprint(uMarkAt[i], uMarkAxes[i]));
    }
    for (int i = 0; i < uStrips; ++i)
    {
        mark = max(mark, GetStrip(uMarkAt[i], uMarkAxes[i]));
    }
    float fTint = clamp(mark.x * abs(uMarkStrength.x), 0.0, 1.0) * uMarkStrength.w;
    fTint *= max(step(0.0, vPosition.y), uMarkTarget.w); // below no height can be edited
    if (uMaskScale.x > 0.0)
    {
        fTint *= texture(uMask, vPosition.xz * uMaskScale + 0.5 / vec2(textureSize(uMask, 0))).r;
    }
    float fLine = mark.y * 0.8;
    vec3 line = min(uMarkColor.rgb * 1.2, vec3(1.0));
    oColor = vec4(mix(uMarkColor.rgb * fTint, line, fLine), (1.0 - fTint) * (1.0 - fLine));
}
