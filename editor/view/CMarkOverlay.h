#pragma once

#include "editor/view/OpenGl.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <optional>

class CPaintLayer;
class CShader;
class CTerrain;
class CTextureCopies;
struct SGroundMark;
struct SRenderSettings;
enum class EToolSign : uint32_t;

// The colour of a mark on the ground. Orange and yellow raise, blues lower, green is what may do
// either: they differ for every kind of colour blindness, and the sign beside the middle says it
// without colours.
SColor GetMarkColor(EToolSign eSign);

// The mark of the tool at hand on the ground of one view: tells the ground's shader where which
// weight is. Owned by the view's renderer, whose context is current around Set.
class CMarkOverlay
{
public:
    // For one frame; ground: in use. Returns the bytes that went to the card.
    uint64_t Set(OpenGl& gl,
                 CShader& ground,
                 CTextureCopies& textures,
                 const CTerrain& terrain,
                 const SRenderSettings& settings);

    // Where the middle of the mark is, on the ground as it is now; nothing while none is shown.
    const std::optional<SVec3>& GetMiddle() const { return m_Middle; }

private:
    bool Place(const SGroundMark& mark, const SExtents& box, const CTerrain& terrain, SVec3& at);
    static int SetFootprints(CShader& ground, const SGroundMark& mark, const SVec3& at, SVec3 size);
    static int SetStrips(CShader& ground, const SGroundMark& mark, const SVec3& at);

    SVec3 m_BoxSize; // of the last box that was one
    std::optional<SVec3> m_Middle;
};
