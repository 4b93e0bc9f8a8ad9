#pragma once

#include "editor/view/CPaintCopy.h"
#include "editor/view/CTextureCopies.h"
#include "editor/view/OpenGl.h"
#include "editor/view/SRenderSettings.h"
#include "host/HostTypes.h"

#include <cstdint>

class CEngineHost;
class CShader;

// What modes and level lay over the ground of one view: mask, bitmap of terrain types, mark of the
// brush. Binds their copies on the card and tells the ground's shader where they lie. Owned by the
// view's renderer, whose context is current around every operation.
class CGroundOverlays
{
public:
    // For one frame, in this order; ground: in use. Set returns the bytes that went to the card.
    void Begin() { m_Textures.Begin(); }

    uint64_t Set(OpenGl& gl, CShader& ground, CEngineHost& engine, const SRenderSettings& settings);

    void Sweep(OpenGl& gl) { m_Textures.Sweep(gl); } // what this frame did not use goes

    void Release(OpenGl& gl);

private:
    uint64_t
    SetMask(OpenGl& gl, CShader& ground, CEngineHost& engine, const SRenderSettings& settings);
    uint64_t SetTypes(OpenGl& gl, CShader& ground, const SRenderSettings& settings);
    uint64_t
    SetMark(OpenGl& gl, CShader& ground, CEngineHost& engine, const SRenderSettings& settings);

    CTextureCopies m_Textures;
    CPaintCopy m_Paint;
    SVec3 m_MarkSize; // of the last box that was one
};
