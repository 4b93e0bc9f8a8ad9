#include "tellur/modes/CModeExportTerrainExtent.h"

#include "host/EditorHost.h"
#include "host/EngineHost.h"
#include "host/Notice.h"
#include "host/Terrain.h"
#include "tellur/context/CommandIds.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modes/IModesPlugin.h"

#include <cmath>

namespace
{

constexpr float MIN_DIAGONAL = 100.0F; // terrain units; smaller drags export nothing
constexpr SColor OUTLINE_COLOR = {1.0F, 1.0F, 0.0F, 1.0F};
constexpr const char* CAPTION = "Export terrain extent";

} // namespace

std::string AskForStlFile()
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    return pHost != nullptr
               ? pHost->BrowseForFile(
                     FILE_DIALOG_SAVE, "stl", nullptr, "data", "STL files (*.stl)|*.stl")
               : std::string();
}

CModeExportTerrainExtent::CModeExportTerrainExtent()
    : m_Cursor(LoadCursorResource(CROSS_CURSOR_ID))
{
}

bool CModeExportTerrainExtent::IsAvailable()
{
    return GetCurrentTerrain() != nullptr;
}

bool CModeExportTerrainExtent::SetCursor()
{
    if (m_Cursor == nullptr)
    {
        return false;
    }
    ::SetCursor(m_Cursor);
    return true;
}

void CModeExportTerrainExtent::Activate()
{
    TakeInput(CAPTION);
    GetPluginPart<IModesPlugin>()->SetToolBarButton(COMMAND_EXPORT_EXTENT, true);
}

void CModeExportTerrainExtent::Deactivate()
{
    GetPluginPart<IModesPlugin>()->SetToolBarButton(COMMAND_EXPORT_EXTENT, false);
    m_Dragging = false;
}

void CModeExportTerrainExtent::Suspend(bool bSuspended)
{
    if (!bSuspended)
    {
        TakeInput(CAPTION);
    }
    GetPluginPart<IModesPlugin>()->SetToolBarButton(COMMAND_EXPORT_EXTENT, !bSuspended);
    m_Suspended = bSuspended;
}

bool CModeExportTerrainExtent::Pick(ViewId view, ViewPoint point, SVec3& hit) const
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    return pHost != nullptr && pHost->PickTerrain(view, point, hit, 0) == PICK_HIT;
}

void CModeExportTerrainExtent::RecomputeBox()
{
    const SVec3& a = m_Start;
    const SVec3& b = m_Current;
    m_Box.min.x = a.x < b.x ? a.x : b.x;
    m_Box.max.x = a.x > b.x ? a.x : b.x;
    m_Box.min.z = a.z < b.z ? a.z : b.z;
    m_Box.max.z = a.z > b.z ? a.z : b.z;
    // Flat at the lower height, so that the size test on release is a horizontal one.
    m_Box.min.y = a.y < b.y ? a.y : b.y;
    m_Box.max.y = m_Box.min.y;
}

void CModeExportTerrainExtent::OnLButtonDown(ViewId view, ViewPoint point, uint32_t /*uFlags*/)
{
    // A press beside the terrain begins a drag, too; the box stays that of before until a move
    // meets the ground.
    m_Dragging = true;
    SVec3 hit;
    if (Pick(view, point, hit))
    {
        m_Start = hit;
        m_Current = hit;
        RecomputeBox();
    }
}

void CModeExportTerrainExtent::OnMouseMove(
    ViewId view, uint32_t /*uFlags*/, ViewPoint point, uintptr_t /*uExtra1*/, uintptr_t /*uExtra2*/)
{
    SVec3 hit;
    if (m_Dragging && !m_Suspended && Pick(view, point, hit))
    {
        m_Current = hit;
        RecomputeBox();
    }
}

void CModeExportTerrainExtent::OnLButtonUp(ViewId /*view*/,
                                           ViewPoint /*point*/,
                                           uint32_t /*uFlags*/)
{
    m_Dragging = false;
    if (m_Suspended)
    {
        return;
    }
    const float fX = m_Box.min.x - m_Box.max.x;
    const float fY = m_Box.min.y - m_Box.max.y;
    const float fZ = m_Box.min.z - m_Box.max.z;
    Terrain* pTerrain = GetCurrentTerrain();
    if (!(std::sqrt(fX * fX + fY * fY + fZ * fZ) > MIN_DIAGONAL) || pTerrain == nullptr)
    {
        return;
    }
    const std::string strPath = AskForStlFile();
    const CSaveNotice notice;
    if (!strPath.empty() && pTerrain->ExportToSTL(strPath.c_str(), &m_Box))
    {
        notice.Say(strPath.c_str());
    }
}

void CModeExportTerrainExtent::Render()
{
    EngineHost* pEngine = GetPluginContext()->GetEngineHost();
    if (!m_Dragging || m_Suspended || pEngine == nullptr)
    {
        return;
    }
    const float fY = m_Box.min.y;
    const SVec3 points[] = {{m_Box.min.x, fY, m_Box.min.z},
                            {m_Box.max.x, fY, m_Box.min.z},
                            {m_Box.max.x, fY, m_Box.max.z},
                            {m_Box.min.x, fY, m_Box.max.z}};
    pEngine->DrawLines(4, points, POLYLINE_CLOSED, OUTLINE_COLOR);
}
