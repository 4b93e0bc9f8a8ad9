#pragma once

#include "editor/view/CMarkOverlay.h"
#include "editor/view/CPaintCopy.h"
#include "editor/view/CProtectionCopy.h"
#include "editor/view/CTextureCopies.h"
#include "editor/view/OpenGl.h"
#include "editor/view/SRenderSettings.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <string>

class CEngineHost;
class CShader;
class CTerrain;

// What modes and level lay over the ground of one view: mask, bitmap of terrain types, what is
// protected, mark of the brush. Binds their copies on the card and tells the ground's shader where
// they lie. Owned by the view's renderer, whose context is current around every operation.
class CGroundOverlays
{
public:
    bool Make(OpenGl& gl, std::string& strFault) { return m_Mark.Make(gl, strFault); }

    // For one frame, in this order; ground: in use. Set and PlaceMark, which comes after the ground
    // is drawn, return the bytes that went to the card.
    void Begin() { m_Textures.Begin(); }

    uint64_t Set(OpenGl& gl, CShader& ground, CEngineHost& engine, const SRenderSettings& settings);

    uint64_t PlaceMark(OpenGl& gl, const CTerrain& terrain, const SRenderSettings& settings);

    void Sweep(OpenGl& gl) { m_Textures.Sweep(gl); } // what this frame did not use goes

    void Release(OpenGl& gl);

    CMarkOverlay& GetMark() { return m_Mark; }

private:
    uint64_t
    SetMask(OpenGl& gl, CShader& ground, CEngineHost& engine, const SRenderSettings& settings);
    uint64_t SetTypes(OpenGl& gl, CShader& ground, const SRenderSettings& settings);

    CTextureCopies m_Textures;
    CPaintCopy m_Paint;
    CMarkOverlay m_Mark;
    float m_MaskScaleX = 0.0F; // terrain units to the mask, 0 without one
    float m_MaskScaleZ = 0.0F;
    CProtectionCopy m_Protection;
};
