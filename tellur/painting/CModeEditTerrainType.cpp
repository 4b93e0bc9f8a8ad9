#include "tellur/painting/CModeEditTerrainType.h"

#include "host/EditorHost.h"
#include "host/EngineHost.h"
#include "host/IPluginStrokes.h"
#include "host/Log.h"
#include "host/ModeManager.h"
#include "host/World.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/CTellur2DFunctionMul.h"
#include "tellur/painting/CTellur2DFunctionSet.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/painting/IPaintingPlugin.h"
#include "tellur/painting/PaintLayer.h"
#include "tellur/painting/TerrainTypeImage.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace
{

constexpr const char* CAPTION = "Edit terrain type";
constexpr uint32_t PALETTE_CHANNELS = 0x1FE; // all but the alpha channel, and no free colours
constexpr uint32_t FREE_CHANNELS = 0x1FF;

} // namespace

IPaintLayer* GetPaintLayer()
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    return pHost != nullptr ? pHost->GetPaintLayer() : nullptr;
}

CModeEditTerrainType::CModeEditTerrainType()
    : m_Cursor(LoadCursorResource(CROSS_CURSOR_ID))
    , m_Undo(std::make_unique<CTellur2DDrawUndoManager>())
{
    std::unique_ptr<CTellur2DFunction> pSet = std::make_unique<CTellur2DFunctionSet>();
    std::unique_ptr<CTellur2DFunction> pMul = std::make_unique<CTellur2DFunctionMul>();
    m_Function = AddFunction(pSet) ? m_Functions.back().get() : nullptr;
    AddFunction(pMul);
}

// The dialog outlives the mode.
CModeEditTerrainType::~CModeEditTerrainType()
{
    CTerrain2DDrawDlg* pDialog = GetPluginPart<IPaintingPlugin>()->Get2DDrawDlg();
    if (pDialog != nullptr && pDialog->GetUser() == this)
    {
        pDialog->SetExtentPointer(nullptr);
        pDialog->SetUser(nullptr);
    }
}

bool CModeEditTerrainType::AddFunction(std::unique_ptr<CTellur2DFunction>& pFunction)
{
    if (pFunction == nullptr)
    {
        return false;
    }
    const auto isSame = [&](const auto& pOther)
    {
        return std::strcmp(pOther->GetName(), pFunction->GetName()) == 0;
    };
    if (std::any_of(m_Functions.begin(), m_Functions.end(), isSame))
    {
        return false;
    }
    m_Functions.push_back(std::move(pFunction));
    return true;
}

bool CModeEditTerrainType::SetCursor()
{
    if (m_Cursor == nullptr)
    {
        return false;
    }
    ::SetCursor(m_Cursor);
    return true;
}

bool CModeEditTerrainType::IsCurrent() const
{
    return IsPaintingModeOn() && GetPluginPart<IPaintingPlugin>()->GetEditTerrainTypeMode() == this;
}

void CModeEditTerrainType::Activate()
{
    TakeInput(CAPTION);
    IPaintLayer* pLayer = GetPaintLayer();
    if (pLayer == nullptr)
    {
        return;
    }
    const CTerrain2DDrawDlg* pDialog = GetPluginPart<IPaintingPlugin>()->Get2DDrawDlg();
    // The same file is not read again, so strokes that were not saved are still there.
    if (pDialog != nullptr && pDialog->GetBitmapFile() != m_BitmapPath)
    {
        if (pLayer->GetImage() != nullptr)
        {
            pLayer->End(); // undo has begun it with the file before
        }
        LoadBitmap(pDialog->GetBitmapFile());
    }
    if (m_WorkImage != nullptr && m_BrushShape != nullptr)
    {
        pLayer->Begin(m_WorkImage.get(), m_BrushShape.get(), m_Channels);
    }
}

void CModeEditTerrainType::LoadBitmap(const std::string& strPath)
{
    m_BitmapPath = strPath;
    m_WorkImage.reset(IL_LoadImage(strPath.c_str()));
    m_BitmapFormat = m_WorkImage != nullptr ? m_WorkImage->GetFormat() : EImageFormat::Unknown;
    m_Palette.reset(IL_LoadPalette(strPath.c_str()));
    SetChannelMask(m_Palette != nullptr ? PALETTE_CHANNELS : m_Channels | FREE_CHANNELS);
    if (m_WorkImage != nullptr)
    {
        // Strokes work on texels of 32 bits whatever the file has; MakeImageToSave leads back.
        m_WorkImage = MakeWorkImage(*m_WorkImage, m_Palette.get());
        if (m_WorkImage == nullptr)
        {
            CrashLog("[CModeEditTerrainType] %s: not enough memory to paint on it\n",
                     strPath.c_str());
        }
    }
    // Its entries are places and texels of the bitmap before.
    m_Undo->Clear();
    m_bUnsaved = false;
    ++m_Revision;
}

void CModeEditTerrainType::RestoreBitmap(const std::string& strPath, const IImage& texels)
{
    IPaintLayer* pLayer = GetPaintLayer();
    if (pLayer != nullptr && pLayer->GetImage() != nullptr)
    {
        pLayer->End(); // undo has begun it with the file before
    }
    LoadBitmap(strPath);
    const bool bSame = m_WorkImage != nullptr && m_WorkImage->GetWidth() == texels.GetWidth() &&
                       m_WorkImage->GetHeight() == texels.GetHeight();
    if (!bSame)
    {
        m_Palette.reset();
        m_BitmapFormat = EImageFormat::Rgba32;
        SetChannelMask(m_Channels | FREE_CHANNELS);
    }
    m_WorkImage.reset(IL_CreateImageFromImage(&texels, EImageFormat::Rgba32));
    m_bUnsaved = true;
}

void CModeEditTerrainType::Deactivate()
{
    // The layer lets go of its image when it ends.
    TakeLayerImage();
    m_bPainting = false;
    if (IPaintLayer* pLayer = GetPaintLayer())
    {
        pLayer->End();
    }
    if (CTerrain2DDrawDlg* pDialog = GetPluginPart<IPaintingPlugin>()->Get2DDrawDlg())
    {
        pDialog->UpdateControls();
    }
    ReloadTexture();
}

// What else shows the bitmap's file takes it anew, as it was saved. Textures go by their path or by
// the file's name alone.
void CModeEditTerrainType::ReloadTexture()
{
    EngineHost* pEngine = GetPluginContext()->GetEngineHost();
    World* pWorld = GetPluginContext()->GetWorld();
    if (m_BitmapPath.empty() || pEngine == nullptr)
    {
        return;
    }
    std::string strName = m_BitmapPath;
    std::transform(strName.begin(),
                   strName.end(),
                   strName.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    int iReloaded = pEngine->ReloadTexture(strName.c_str());
    if (iReloaded == 0)
    {
        const std::string strFile = strName.substr(strName.find_last_of("/\\") + 1);
        iReloaded = pEngine->ReloadTexture(strFile.c_str());
    }
    if (iReloaded != 0 && pWorld != nullptr)
    {
        pWorld->OnTexturesChanged();
    }
}

void CModeEditTerrainType::Suspend(bool bSuspended)
{
    if (!bSuspended)
    {
        TakeInput(CAPTION);
        return;
    }
    // What the stroke has painted so far stays, without an entry of undo.
    TakeLayerImage();
    m_bPainting = false;
}

// The work image is the bitmap before a stroke, the layer's the bitmap now; here the first catches
// up.
void CModeEditTerrainType::TakeLayerImage()
{
    const IPaintLayer* pLayer = GetPaintLayer();
    const IImage* pImage = pLayer != nullptr ? pLayer->GetImage() : nullptr;
    if (pImage == nullptr)
    {
        return;
    }
    const bool bSameSize = m_WorkImage != nullptr &&
                           m_WorkImage->GetFormat() == pImage->GetFormat() &&
                           m_WorkImage->GetWidth() == pImage->GetWidth() &&
                           m_WorkImage->GetHeight() == pImage->GetHeight();
    if (bSameSize) // fresh memory costs more than the copy
    {
        const size_t nTexels = size_t{pImage->GetWidth()} * pImage->GetHeight();
        std::memcpy(m_WorkImage->GetRawData(),
                    pImage->GetRawData(),
                    nTexels * pImage->GetBitsPerPixel() / 8);
        return;
    }
    m_WorkImage.reset(IL_CreateImageFromImage(pImage));
}

bool CModeEditTerrainType::Pick(ViewId view, ViewPoint point, SExtents& box) const
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    SVec3 hit;
    if (pHost == nullptr || m_Function == nullptr ||
        pHost->PickTerrain(view, point, hit, 0) != PICK_HIT)
    {
        return false;
    }
    box.min.x = hit.x - m_HalfSize;
    box.min.z = hit.z - m_HalfSize;
    box.max.x = hit.x + m_HalfSize;
    box.max.z = hit.z + m_HalfSize;
    return true;
}

void CModeEditTerrainType::Paint(const SExtents& box)
{
    if (IPaintLayer* pLayer = GetPaintLayer())
    {
        const float fPower = m_Power * GetPluginContext()->GetPointForm().fPower;
        pLayer->Paint(box, m_Function, fPower, m_Hardness);
        // A layer without an image has painted nothing.
        m_bUnsaved = m_bUnsaved || pLayer->GetImage() != nullptr;
        ++m_Revision;
        ++GetPluginContext()->GetDragStatistics().nPoints;
        GetPluginContext()->GetPointOutcome() = {m_Power == 0.0F ? EPointOutcome::NoPower
                                                                 : EPointOutcome::Changed};
    }
}

void CModeEditTerrainType::OnLButtonDown(ViewId view, ViewPoint point, uint32_t /*uFlags*/)
{
    m_bPainting = true;
    SExtents box;
    if (Pick(view, point, box))
    {
        Paint(box);
    }
    else
    {
        GetPluginContext()->GetPointOutcome() = {EPointOutcome::NoGround};
    }
}

void CModeEditTerrainType::OnMouseMove(
    ViewId view, uint32_t /*uFlags*/, ViewPoint point, uintptr_t /*uExtra1*/, uintptr_t /*uExtra2*/)
{
    SExtents box;
    IPaintLayer* pLayer = GetPaintLayer();
    if (pLayer == nullptr || !Pick(view, point, box))
    {
        return;
    }
    pLayer->SetBrush(&box, nullptr);
    if (m_bPainting)
    {
        Paint(box);
    }
}

void CModeEditTerrainType::OnLButtonUp(ViewId /*view*/, ViewPoint /*point*/, uint32_t /*uFlags*/)
{
    m_bPainting = false;
    ApplyUndoDepth();
    if (const IPaintLayer* pLayer = GetPaintLayer())
    {
        // The work image has the texels of before the stroke until it takes over the layer's below.
        m_Undo->AddEntry(m_WorkImage.get(), pLayer->GetImage());
    }
    TakeLayerImage();
}
