// The painting mode as the draw dialog's user.

#include "host/EditorHost.h"
#include "host/ModeManager.h"
#include "host/Terrain.h"
#include "host/World.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/painting/CTellur2DFunction.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/painting/IPaintingPlugin.h"
#include "tellur/painting/PaintLayer.h"
#include "tellur/painting/TerrainTypeImage.h"

#include <algorithm>
#include <cstring>

namespace
{

constexpr float SHARE_OF_WIDTH = 0.25F; // of the terrain, what the extent slider reaches

} // namespace

bool IsPaintingModeOn()
{
    const PluginContext* pContext = GetPluginContext();
    EditorHost* pHost = pContext->GetEditorHost();
    const int iMode = GetPluginPart<IPaintingPlugin>()->GetEditTerrainTypeModeId();
    return pHost != nullptr && iMode != NO_MODE &&
           pHost->GetModeManager()->GetCurrentModeId() == iMode;
}

void CModeEditTerrainType::SetBrushShape(const IImage* pImage, const char* pszPath)
{
    if (pImage != nullptr)
    {
        m_BrushShape.reset(IL_CreateImageFromImage(pImage));
        IPaintLayer* pLayer = IsCurrent() ? GetPaintLayer() : nullptr;
        if (pLayer != nullptr)
        {
            pLayer->SetBrush(nullptr, m_BrushShape.get());
        }
    }
    m_BrushShapePath = pszPath != nullptr ? pszPath : "";
}

void CModeEditTerrainType::SetFunction(const char* pszName)
{
    const auto found = std::find_if(m_Functions.begin(),
                                    m_Functions.end(),
                                    [pszName](const auto& pFunction) {
                                        return pszName != nullptr &&
                                               std::strcmp(pFunction->GetName(), pszName) == 0;
                                    });
    if (found == m_Functions.end())
    {
        return;
    }
    m_Function = found->get();
    // Only the current function hears of colour and channels, so the new one is told now.
    m_Function->SetChannelMask(m_Channels);
    if (const CTerrain2DDrawDlg* pDialog = GetPluginPart<IPaintingPlugin>()->Get2DDrawDlg())
    {
        m_Function->SetColor(pDialog->GetCurrentColor());
    }
}

const char* CModeEditTerrainType::GetFunctionName() const
{
    return m_Function != nullptr ? m_Function->GetName() : nullptr;
}

void CModeEditTerrainType::SetChannelMask(uint32_t uChannels)
{
    m_Channels = uChannels;
    if (m_Function != nullptr)
    {
        m_Function->SetChannelMask(uChannels);
    }
    if (IPaintLayer* pLayer = GetPaintLayer())
    {
        pLayer->SetChannelMask(uChannels);
    }
}

const char* CModeEditTerrainType::GetPaintMaterial() const
{
    const IPaintLayer* pLayer = GetPaintLayer();
    return pLayer != nullptr ? pLayer->GetMaterial() : nullptr;
}

void CModeEditTerrainType::SetPaintMaterial(const char* pszName)
{
    if (IPaintLayer* pLayer = GetPaintLayer())
    {
        pLayer->SetMaterial(pszName);
    }
}

void CModeEditTerrainType::SetTexelMapping(bool bVertices)
{
    if (IPaintLayer* pLayer = GetPaintLayer())
    {
        pLayer->SetTexelToVertexMapping(bVertices);
    }
}

ETexelMapping CModeEditTerrainType::GetTexelMapping() const
{
    const IPaintLayer* pLayer = GetPaintLayer();
    return pLayer != nullptr ? pLayer->GetTexelMapping() : ETexelMapping::Centers;
}

void CModeEditTerrainType::GetMappingSizes(float* pLength, uint32_t* pWidth) const
{
    const Terrain* pTerrain = GetCurrentTerrain();
    *pLength = pTerrain != nullptr ? pTerrain->GetSize().x * SHARE_OF_WIDTH : 0.0F;
    *pWidth = m_WorkImage != nullptr ? m_WorkImage->GetWidth() : 0;
}

void CModeEditTerrainType::SetColor(const float* pColor)
{
    if (m_Function != nullptr)
    {
        m_Function->SetColor(pColor);
    }
}

void CModeEditTerrainType::ApplyUndoDepth()
{
    const int32_t iDepth = std::max(GetPluginPart<IPaintingPlugin>()->Get2DDrawUndoDepth(), 1);
    if (m_Undo->GetStackSize() != static_cast<uint32_t>(iDepth))
    {
        m_Undo->SetStackSize(static_cast<uint32_t>(iDepth));
    }
}

void CModeEditTerrainType::Undo()
{
    Step(&ITellur2DDrawUndoManager::Undo);
}

void CModeEditTerrainType::Redo()
{
    Step(&ITellur2DDrawUndoManager::Redo);
}

void CModeEditTerrainType::Step(bool (ITellur2DDrawUndoManager::*pStep)(IImage*))
{
    IPaintLayer* pLayer = GetPaintLayer();
    if (pLayer == nullptr || m_WorkImage == nullptr || m_BrushShape == nullptr)
    {
        return;
    }
    ApplyUndoDepth();
    if ((m_Undo.get()->*pStep)(m_WorkImage.get()))
    {
        m_bUnsaved = true;
        ++m_Revision;
        // Kept as it always was: the layer begins also while the mode is not current, and the
        // bitmap then lies on the ground until the mode has been switched on and off.
        pLayer->Begin(m_WorkImage.get(), m_BrushShape.get(), m_Channels);
    }
}

bool CModeEditTerrainType::SaveBitmap(const char* pszPath)
{
    World* pWorld = GetPluginContext()->GetWorld();
    if (pszPath == nullptr || *pszPath == '\0' || pWorld == nullptr)
    {
        return false;
    }
    TakeLayerImage();
    if (m_WorkImage == nullptr)
    {
        return false;
    }
    const std::unique_ptr<IImage> pImage =
        MakeImageToSave(*m_WorkImage, m_Palette.get(), m_BitmapFormat);
    const bool bSaved = pWorld->SaveImage(pszPath, pImage.get(), m_Palette.get());
    m_bUnsaved = m_bUnsaved && !(bSaved && m_BitmapPath == pszPath); // a copy is no save
    return bSaved;
}
