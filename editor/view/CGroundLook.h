#pragma once

#include "editor/view/CMaterialCache.h"
#include "editor/view/CShader.h"
#include "editor/view/OpenGl.h"

#include <cstdint>
#include <map>
#include <string>

class CEngineHost;
class CPatchTree;
class CTerrain;
struct SRenderSettings;
struct SViewProjection;

// How the ground and the sky of one view look: the shader for what a frame shows, with material and
// light. A shader is made when a frame first needs it and kept: one for everything would cost a
// processor that draws a multiple of the frame. Owned by the view's renderer, whose context is
// current around every operation.
class CGroundLook
{
public:
    // Makes the shader of natural ground, and with it sure that the driver takes them. As
    // CShader::Make.
    bool Make(OpenGl& gl, std::string& strFault);
    void Release(OpenGl& gl);

    // Takes the shader for a frame of the engine's terrain into use; good until Release.
    CShader& Use(OpenGl& gl,
                 const SViewProjection& view,
                 CEngineHost& engine,
                 const CPatchTree& tree,
                 const SRenderSettings& settings);

    // sky: in use.
    static void SetSky(CShader& sky, const SViewProjection& view, const SRenderSettings& settings);

private:
    const SMaterial& FindMaterial(const CTerrain& terrain, const SRenderSettings& settings);
    CShader& Find(OpenGl& gl, uint32_t uParts);
    static void
    SetLight(CShader& shader, const SViewProjection& view, const SRenderSettings& settings);
    static void SetMaterial(CShader& shader,
                            const SMaterial& material,
                            const SViewProjection& view,
                            const CTerrain& terrain,
                            const CPatchTree& tree);

    CMaterialCache m_Materials;
    std::map<uint32_t, CShader> m_Shaders; // by what they are made of
};
