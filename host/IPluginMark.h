#pragma once

#include "host/HostTypes.h"

class IImage;

// What a press with the tool at hand would do to the ground, for a host whose views mark it there.
// See IPlugin.h for how a host gets it. The host calls it on the UI thread, in each frame: nothing
// here looks at heights, calls back or changes anything.

// What the tool is.
enum class EToolKind : uint32_t
{
    Other,
    Add,     // adds a height
    Smooth,  // pulls to the mean around
    Level,   // pulls to a height
    Terrace, // pulls to the nearest of some heights
    Point,   // follows the mouse up and down
    Ramp,    // a strip from the press to the release
    Paint,   // colours of the terrain-type bitmap
};

// Which way the ground goes.
enum class EToolSign : uint32_t
{
    Neutral, // either, or none
    Raise,
    Lower,
    RaiseOnly, // what lies higher than it would be stays
    LowerOnly, // what lies lower stays
};

// The height that a tool with one of the last two signs looks at.
enum class EToolTarget : uint32_t
{
    None,   // each place has its own, which is not told
    Height, // fHeight
    Picked, // that of the ground at the middle of the mark
};

// Lengths in terrain units. The weight of a place in the square footprint is power * (b +
// hardness), the sum kept within 0 to 1, with b the sample of the shape stretched over the
// footprint (host/ShapeSampling.h), and 0 where b is below 0.0001. Where a mask acts (IPluginTools)
// it is multiplied in, and so is the band: max(0, (fBand - distance in height) / fBand).
struct SToolMark
{
    EToolKind eKind = EToolKind::Other;
    EToolSign eSign = EToolSign::Neutral;
    EToolTarget eTarget = EToolTarget::None;
    float fHeight = 0.0F;
    float fExtent = 0.0F; // side of the footprint; of a ramp half the width of the strip
    float fPower = 1.0F;
    float fHardness = 0.0F;
    // From the height at the middle of the footprint, or from the ramp's own; 0: no band.
    float fBand = 0.0F;
    // Grey, one byte a pixel; borrowed until the plug-in is called again. Null for a ramp, which
    // has none, for a brush without one, and for what paints, whose shape the paint layer has.
    const IImage* pShape = nullptr;

    // Of a ramp. The weight is 1 in fSideShare of the half width and falls in a straight line to 0
    // at the half width; it rises from 0 to 1 over fEndShare of the length at each end.
    float fSideShare = 1.0F;
    float fEndShare = 0.0F;
    bool bLaid = false; // a drag lays it from first to second; else it can lead anywhere
    SVec3 first;
    SVec3 second;
};

class IPluginMark
{
public:
    virtual ~IPluginMark() = default;

    // Tells about the tool at hand, by the keys that are held now; with bSmooth about what
    // IPluginStrokes::BeginSmoothing would put in its place. False, and mark is left alone, when
    // no tool is at hand.
    virtual bool GetMark(bool bSmooth, SToolMark& mark) = 0;
};
