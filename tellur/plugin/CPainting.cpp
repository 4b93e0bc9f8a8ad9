#include "tellur/plugin/CPainting.h"

#include "host/EditorHost.h"
#include "host/FileSystem.h"
#include "host/Reflection.h"
#include "parser/KeywordValues.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/PaintLayer.h"
#include "tellur/plugin/CPluginModes.h"

#include <utility>

namespace
{

constexpr const char* SETTING_KEY = "Tellur2DDrawUndoMgrStackSize";
constexpr int32_t DEFAULT_UNDO_DEPTH = 10;

} // namespace

CPainting::CPainting(const CPluginModes& modes)
    : m_Modes(modes)
    , m_2DDrawUndoMgrStackSize(DEFAULT_UNDO_DEPTH)
{
}

CPainting::~CPainting() = default;

bool CPainting::OpenDialog()
{
    CModeEditTerrainType* pMode = GetMode();
    if (pMode == nullptr)
    {
        return false;
    }
    if (m_p2DDrawDlg == nullptr)
    {
        auto pDialog = std::make_unique<CTerrain2DDrawDlg>();
        if (!pDialog->Create(nullptr))
        {
            return false;
        }
        m_p2DDrawDlg = std::move(pDialog);
        // The user comes first, since the dialog gives it the colour and the shape that follow.
        m_p2DDrawDlg->SetUser(pMode);
        m_p2DDrawDlg->SetExtentPointer(pMode->GetBrushHalfSize());
        m_p2DDrawDlg->LoadColours();
        m_p2DDrawDlg->SetBrushShape(pMode->GetBrushShape(), CTerrain2DDrawDlg::DEFAULT_SHAPE);
    }
    m_p2DDrawDlg->ShowWindow(true);
    return true;
}

void CPainting::DestroyDialog()
{
    m_p2DDrawDlg.reset();
}

CModeEditTerrainType* CPainting::GetMode() const
{
    return m_Modes.GetPaintingMode();
}

bool CPainting::IsOn() const
{
    return IsPaintingModeOn() && GetMode()->HasBitmap() && m_p2DDrawDlg != nullptr;
}

bool CPainting::SwitchOn(std::string& strWhy)
{
    const bool bSwitched = m_p2DDrawDlg != nullptr
                               ? m_p2DDrawDlg->PressItem(DRAW_EDIT)
                               : m_Modes.SetMode(m_Modes.GetEditTerrainTypeId(), 0);
    // The button is disabled while no file is named.
    if (m_p2DDrawDlg != nullptr && !bSwitched)
    {
        strWhy = "there is no bitmap file, name it with paint_bitmap";
        return false;
    }
    if (m_p2DDrawDlg != nullptr && !GetMode()->HasBitmap())
    {
        strWhy = "the bitmap cannot be painted on, the log says why";
        return false;
    }
    strWhy = bSwitched ? "" : R"(the mode "edit_terrain_type" was refused)";
    return IsPaintingModeOn();
}

void CPainting::RegisterSetting()
{
    GetPluginContext()->GetEditorHost()->RegisterSetting(
        "2D draw undo manager stack size",
        RTTI_INT,
        &m_2DDrawUndoMgrStackSize,
        "f:EDIT;e:EDIT;c:Tellur;d:2D draw undo manager stack size;");
}

void CPainting::ResetSetting()
{
    m_2DDrawUndoMgrStackSize = DEFAULT_UNDO_DEPTH;
}

void CPainting::SaveSetting(fs::ifile& file) const
{
    file.printf("\n!%s( i )\n\n", SETTING_KEY);
    file.printf("%s( %d )\n", SETTING_KEY, m_2DDrawUndoMgrStackSize);
}

void CPainting::LoadSetting(const CTCPARSE_KEYWORD* pFirst)
{
    for (const CTCPARSE_KEYWORD* pKey = pFirst; pKey != nullptr; pKey = pKey->next)
    {
        if (IsKeyword(pKey, SETTING_KEY))
        {
            m_2DDrawUndoMgrStackSize = GetIntValue(pKey->params);
            if (GetMode() != nullptr)
            {
                GetMode()->ApplyUndoDepth();
            }
        }
    }
}

const IImage* CPainting::GetBitmap()
{
    return GetMode() != nullptr ? GetMode()->GetWorkImage() : nullptr;
}

uint64_t CPainting::GetBitmapRevision()
{
    return GetBitmap() != nullptr ? GetMode()->GetRevision() : 0;
}

std::string CPainting::GetBitmapFile()
{
    return GetMode() != nullptr ? GetMode()->GetBitmapPath() : "";
}

std::string CPainting::GetUnsavedBitmap()
{
    return GetMode() != nullptr && GetMode()->IsUnsaved() ? GetMode()->GetBitmapPath() : "";
}

std::string CPainting::GetUnreadBitmap()
{
    return IsPaintingModeOn() && !GetMode()->HasBitmap() ? GetMode()->GetBitmapPath() : "";
}

bool CPainting::WouldDropPainting(int32_t iModeId)
{
    return iModeId == m_Modes.GetEditTerrainTypeId() && m_p2DDrawDlg != nullptr &&
           GetMode() != nullptr && GetMode()->IsUnsaved() &&
           m_p2DDrawDlg->GetBitmapFile() != GetMode()->GetBitmapPath();
}

bool CPainting::SaveBitmap(const char* pszPath)
{
    return GetMode() != nullptr && GetMode()->SaveBitmap(pszPath);
}

bool CPainting::StepPaint(bool bRedo)
{
    CModeEditTerrainType* pMode = GetMode();
    if (pMode == nullptr)
    {
        return false;
    }
    // The position tells of a step, also of one that changed no texel.
    const uint32_t uPosition = pMode->GetUndoPosition();
    bRedo ? pMode->Redo() : pMode->Undo();
    return pMode->GetUndoPosition() != uPosition;
}
