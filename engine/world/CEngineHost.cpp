#include "engine/world/CEngineHost.h"

#include "engine/terrain/CTerrain.h"
#include "host/ReflectionFields.h"

namespace
{

CEngineHost* g_Engine = nullptr; // the finder of the reflection is a plain function

CRTTIObject* FindInEngine(int32_t iId)
{
    return g_Engine != nullptr ? g_Engine->FindObjectById(iId) : nullptr;
}

} // namespace

CEngineHost::CEngineHost()
    : m_Textures(&m_World)
{
    g_Engine = this;
    SetObjectFinder(&FindInEngine);
}

CEngineHost::~CEngineHost()
{
    // A later engine may have taken the place.
    if (g_Engine == this)
    {
        g_Engine = nullptr;
        SetObjectFinder(nullptr);
    }
}

int CEngineHost::ReloadTexture(const char* pszName)
{
    return m_Textures.Reload(pszName) ? 1 : 0;
}

ITextMacroTable* CEngineHost::GetTextMacroTable()
{
    return &m_Macros;
}

World* CEngineHost::GetWorld()
{
    return &m_World;
}

CRTTIObject* CEngineHost::FindObjectById(int32_t iId)
{
    const auto found = m_Objects.find(iId);
    return found != m_Objects.end() ? found->second : nullptr;
}

std::vector<CRTTIObject*> CEngineHost::GetObjects()
{
    std::vector<CRTTIObject*> objects;
    for (const auto& [iId, pObject] : m_Objects)
    {
        objects.push_back(pObject);
    }
    return objects;
}

void CEngineHost::StepCameraVertical(ViewId view, float fStep)
{
    if (CCamera* pCamera = m_World.GetCameraList().GetCameraOfView(view))
    {
        pCamera->StepVertical(fStep);
    }
}

void CEngineHost::StrafeCamera(ViewId view, const SVec3& offset)
{
    if (CCamera* pCamera = m_World.GetCameraList().GetCameraOfView(view))
    {
        pCamera->Strafe(offset);
    }
}

void CEngineHost::DollyCamera(ViewId view, float fDistance)
{
    if (CCamera* pCamera = m_World.GetCameraList().GetCameraOfView(view))
    {
        pCamera->Dolly(fDistance);
    }
}

void CEngineHost::DrawLine(const SVec3& from, const SVec3& to, const SColor& color)
{
    m_DebugLines.push_back({from, to, color});
}

void CEngineHost::DrawLines(uint32_t uCount,
                            const SVec3* pPoints,
                            EPolyline eClosed,
                            const SColor& color)
{
    if (pPoints == nullptr)
    {
        return;
    }
    for (uint32_t i = 1; i < uCount; ++i)
    {
        DrawLine(pPoints[i - 1], pPoints[i], color);
    }
    // Two points are one line, closed or not.
    if (eClosed == POLYLINE_CLOSED && uCount > 2)
    {
        DrawLine(pPoints[uCount - 1], pPoints[0], color);
    }
}

void CEngineHost::BeginFrame()
{
    m_DebugLines.clear();
    if (CTerrain* pTerrain = m_World.GetCTerrain())
    {
        pTerrain->BeginFrame();
    }
}

bool CEngineHost::AddObject(int32_t iId, CRTTIObject* pObject)
{
    return pObject != nullptr && m_Objects.emplace(iId, pObject).second;
}

void CEngineHost::RemoveObject(int32_t iId)
{
    m_Objects.erase(iId);
}
