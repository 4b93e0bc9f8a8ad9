#pragma once

#include "editor/view/CShader.h"
#include "editor/view/OpenGl.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class CPaintLayer;
class CTerrain;
class CTextureCopies;
struct SGroundMark;
struct SRenderSettings;
struct SToolMark;
struct SViewProjection;
enum class EToolSign : uint32_t;

// The colour of a mark on the ground. Orange and yellow raise, blues lower, green is what may do
// either: they differ for every kind of colour blindness, and the sign beside the middle says it
// without colours.
SColor GetMarkColor(EToolSign eSign);

// The mark of the tool at hand on the ground of one view. It is laid over the patches of ground
// that it touches once more, so that all others cost nothing. Owned by the view's renderer, whose
// context is current around every operation.
class CMarkOverlay
{
public:
    bool Make(OpenGl& gl, std::string& strFault); // as CShader::Make
    void Release(OpenGl& gl);

    // For one frame, after the ground: tells the shader where which weight is, and takes it into
    // use where a mark is shown. Returns the bytes that went to the card.
    uint64_t Place(OpenGl& gl,
                   CTextureCopies& textures,
                   const CTerrain& terrain,
                   const SRenderSettings& settings);

    // Lay what is drawn between them over the ground that is there, within the part of the picture
    // where the mark can be. fMargin: device pixels that ground drawn coarsely may be beside its
    // place. False, and nothing is to be drawn, where the mark is out of sight.
    bool
    Begin(OpenGl& gl, const SViewProjection& view, const CTerrain& terrain, float fMargin) const;
    static void End(OpenGl& gl);

    CShader& GetShader() { return m_Shader; }

    // Around what the mark covers, x and z; empty while none is shown.
    const std::vector<SExtents>& GetBoxes() const { return m_Boxes; }

    // Where the middle of the mark is, on the ground as it is now; nothing while none is shown.
    const std::optional<SVec3>& GetMiddle() const { return m_Middle; }

private:
    bool
    FindMiddle(const SGroundMark& mark, const SExtents& box, const CTerrain& terrain, SVec3& at);
    void SetStrength(const SToolMark& tool, float fTint, bool bPaint);
    int SetFootprints(const SGroundMark& mark, const SVec3& at, const SVec3& size);
    int SetStrips(const SGroundMark& mark, const SVec3& at);
    void AddBox(const SVec3& middle, float fReach);

    CShader m_Shader;
    std::vector<SExtents> m_Boxes;
    SVec3 m_BoxSize; // of the last box that was one
    std::optional<SVec3> m_Middle;
};
