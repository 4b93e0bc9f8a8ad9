#pragma once

#include "engine/world/CTextMacroTable.h"
#include "engine/world/CTextureManager.h"
#include "engine/world/CWorld.h"
#include "host/EngineHost.h"
#include "host/Export.h"

#include <map>
#include <vector>

// A line shown for one frame, terrain units.
struct SDebugLine
{
    SVec3 from;
    SVec3 to;
    SColor color;
};

// The engine: the world, the textures from files, the objects by identifier, and what the tools
// draw over one frame. One at a time in a process; owned by the editor or the tool that runs it,
// and outlives the plug-in.
class TELLUR_API CEngineHost final : public EngineHost
{
public:
    CEngineHost(); // object fields of the reflection find their objects here from now on
    ~CEngineHost() override;
    CEngineHost(const CEngineHost&) = delete;
    CEngineHost& operator=(const CEngineHost&) = delete;

    int ReloadTexture(const char* pszName) override;
    ITextMacroTable* GetTextMacroTable() override;
    World* GetWorld() override;
    CRTTIObject* FindObjectById(int32_t iId) override;
    std::vector<CRTTIObject*> GetObjects() override;
    void StepCameraVertical(ViewId view, float fStep) override;
    void StrafeCamera(ViewId view, const SVec3& offset) override;
    void DollyCamera(ViewId view, float fDistance) override;
    void DrawLine(const SVec3& from, const SVec3& to, const SColor& color) override;
    void DrawLines(uint32_t uCount,
                   const SVec3* pPoints,
                   EPolyline eClosed,
                   const SColor& color) override;

    // A new frame starts: debug lines and the projected texture are gone.
    void BeginFrame();

    const std::vector<SDebugLine>& GetDebugLines() const { return m_DebugLines; }

    // Makes an object known under its identifier (borrowed until RemoveObject). False for null or
    // an identifier that is taken.
    bool AddObject(int32_t iId, CRTTIObject* pObject);
    void RemoveObject(int32_t iId);

    CWorld& GetCWorld() { return m_World; }

    CTextureManager& GetTextures() { return m_Textures; }

    CTextMacroTable& GetMacros() { return m_Macros; }

private:
    CWorld m_World;
    CTextureManager m_Textures; // after the world, which it tells when textures go
    CTextMacroTable m_Macros;
    std::map<int32_t, CRTTIObject*> m_Objects;
    std::vector<SDebugLine> m_DebugLines;
};
