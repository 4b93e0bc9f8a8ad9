// The dialog's life: its controls, what they allow, and what is no number and no colour.

#include "tellur/painting/CTerrain2DDrawDlg.h"

#include "host/EditorHost.h"
#include "host/IPaintLayer.h"
#include "host/Image.h"
#include "host/ModeManager.h"
#include "host/Notice.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/IPaintingPlugin.h"
#include "tellur/painting/PaintLayer.h"

#include <cstring>
#include <memory>
#include <utility>

namespace
{

constexpr const char* FOLDER = "data";

std::string Browse(EFileDialog eKind,
                   const char* pszExtension,
                   const std::string& strInitial,
                   const char* pszFilter)
{
    EditorHost* pHost = GetPluginContext()->GetEditorHost();
    return pHost != nullptr
               ? pHost->BrowseForFile(eKind, pszExtension, strInitial.c_str(), FOLDER, pszFilter)
               : std::string();
}

} // namespace

CTerrain2DDrawDlg::CTerrain2DDrawDlg()
    : CDialog(DRAW_DIALOG)
{
    constexpr float RED[] = {1.0F, 0.0F, 0.0F, 1.0F};
    m_CurrentColor.SetColor(RED);
    BindControls();
    Listen();
    EnableToolTips(true);
}

void CTerrain2DDrawDlg::BindControls()
{
    BindText(DRAW_BITMAP_FILE, m_BitmapFile);
    BindText(DRAW_MATERIAL, m_Material);
    BindValue(DRAW_POWER_EDIT, m_Power);
    BindValue(DRAW_HARDNESS_EDIT, m_Hardness);
    BindCheck(DRAW_CENTIMETRES, m_Centimetres);
    BindCheck(DRAW_TEXEL_MAPPING, m_TexelMapping);
    Bind(DRAW_SHAPE, m_Shape);
    Bind(DRAW_BLENDING, m_BlendingSlider);
    Bind(DRAW_EXTENT_SLIDER, m_ExtentSlider);
    Bind(DRAW_POWER_SLIDER, m_PowerSlider);
    Bind(DRAW_HARDNESS_SLIDER, m_HardnessSlider);
    for (size_t i = 0; i < COLOR_COUNT; ++i)
    {
        Bind(DRAW_FIRST_COLOR + static_cast<uint32_t>(i), m_Colors[i]);
    }
    Bind(DRAW_CURRENT_COLOR, m_CurrentColor);
}

void CTerrain2DDrawDlg::Listen()
{
    OnTextChange(DRAW_BITMAP_FILE,
                 [this]
                 {
                     if (!m_bWriting)
                     {
                         UpdateControls();
                     }
                 });
    OnClick(DRAW_BITMAP_BROWSE, [this] { OnBrowseBitmap(); });
    OnClick(DRAW_SAVE, [this] { OnSave(); });
    OnClick(DRAW_MATERIAL_BROWSE, [this] { OnBrowseMaterial(); });
    On(ENotify::FocusLost, DRAW_MATERIAL, [this](SNotification&) { OnMaterialTyped(); });
    OnClick(DRAW_TEXEL_MAPPING, [this] { OnTexelMapping(); });
    OnClick(DRAW_SHAPE, [this] { OnBrowseShape(); });
    for (size_t i = 0; i < CHANNEL_BOXES; ++i)
    {
        const auto eBox = static_cast<EChannelBox>(i);
        OnClick(DRAW_RGB_VISIBLE + static_cast<uint32_t>(i), [this, eBox] { OnChannelBox(eBox); });
    }
    OnClick(DRAW_SET, [this] { ChooseFunction("Set"); });
    OnClick(DRAW_MUL, [this] { ChooseFunction("Mul"); });
    OnClick(DRAW_UNDO, [this] { OnStep(&ITerrain2DDrawDlgUser::Undo); });
    OnClick(DRAW_REDO, [this] { OnStep(&ITerrain2DDrawDlgUser::Redo); });
    OnClick(DRAW_EDIT, [this] { SwitchEditing(); });
    ListenToNumbers();
    ListenToColors();
}

void CTerrain2DDrawDlg::OnInit()
{
    constexpr int SHARES = 100;
    constexpr int EXTENTS = 1000;
    for (CSliderCtrl* pSlider : {&m_BlendingSlider, &m_PowerSlider, &m_HardnessSlider})
    {
        pSlider->SetRange(0, SHARES);
    }
    m_ExtentSlider.SetRange(0, EXTENTS);
    m_BlendingSlider.SetPos(static_cast<int>(m_Blending * SHARES));
    WriteFields();
    UpdateControls();
}

void CTerrain2DDrawDlg::WriteFields()
{
    const bool bBefore = std::exchange(m_bWriting, true);
    WriteControls();
    m_bWriting = bBefore;
}

bool CTerrain2DDrawDlg::HasUser()
{
    if (m_User == nullptr)
    {
        UpdateControls();
    }
    return m_User != nullptr;
}

void CTerrain2DDrawDlg::OnStep(void (ITerrain2DDrawDlgUser::*pStep)())
{
    if (HasUser())
    {
        (m_User->*pStep)();
    }
}

void CTerrain2DDrawDlg::SetUser(ITerrain2DDrawDlgUser* pUser)
{
    m_User = pUser;
    if (m_User == nullptr)
    {
        return;
    }
    constexpr float POSITIONS = 100.0F;
    m_Power = m_User->GetPower();
    m_Hardness = m_User->GetHardness();
    m_PowerSlider.SetPos(static_cast<int>(m_Power * POSITIONS));
    m_HardnessSlider.SetPos(static_cast<int>(m_Hardness * POSITIONS));
    const char* pszMaterial = m_User->GetPaintMaterial();
    m_Material = pszMaterial != nullptr ? pszMaterial : "";
    m_TexelMapping = m_User->GetTexelMapping() == ETexelMapping::Vertices ? CHECK_ON : CHECK_OFF;
    WriteFields();
    UpdateControls();
}

void CTerrain2DDrawDlg::SetBrushShape(const IImage* pImage, const char* pszPath)
{
    if (pImage == nullptr)
    {
        ChooseBrushShape(pszPath);
        return;
    }
    m_Shape.SetImage(pImage);
    if (m_User != nullptr)
    {
        m_User->SetBrushShape(pImage, pszPath);
    }
}

bool CTerrain2DDrawDlg::ChooseBrushShape(const std::string& strPath)
{
    const std::unique_ptr<IImage> pImage(IL_LoadImage(strPath.c_str()));
    if (pImage == nullptr)
    {
        return false; // the shape before stays
    }
    SetBrushShape(pImage.get(), strPath.c_str());
    return true;
}

void CTerrain2DDrawDlg::UpdateControls()
{
    ReadControls();
    const bool bPainting = IsPaintingModeOn();
    const bool bFile = !m_BitmapFile.empty();
    EnableItem(DRAW_EDIT, bFile);
    EnableItem(DRAW_SAVE, bFile);
    EnableItem(DRAW_EXTENT_EDIT, m_Extent != nullptr);
    EnableItem(DRAW_BITMAP_BROWSE, !bPainting);
    CheckItem(DRAW_EDIT, bPainting ? CHECK_ON : CHECK_OFF);
    if (m_User == nullptr)
    {
        return;
    }
    UpdateChannels(m_User->GetChannelMask(), bPainting);
    UpdateFunctions(bPainting);
    EnableItem(DRAW_CENTIMETRES, GetMappingSizes().uWidth != 0);
}

void CTerrain2DDrawDlg::UpdateChannels(uint32_t uMask, bool bPainting)
{
    const bool bBoxes = (uMask & PAINT_FREE_COLORS) != 0 && bPainting;
    for (size_t i = 0; i < CHANNEL_BOXES; ++i)
    {
        const uint32_t uId = DRAW_RGB_VISIBLE + static_cast<uint32_t>(i);
        const bool bSet = (uMask & GetChannelBit(static_cast<EChannelBox>(i))) != 0;
        EnableItem(uId, bBoxes);
        CheckItem(uId, bBoxes && bSet ? CHECK_ON : CHECK_OFF);
    }
    // Alpha takes its level from red, so that is what the swatches show for it.
    const uint32_t uShown = (uMask & PAINT_RGB_EDITABLE) != 0                            ? 7U
                            : (uMask & (PAINT_RED_EDITABLE | PAINT_ALPHA_EDITABLE)) != 0 ? 1U
                            : (uMask & PAINT_GREEN_EDITABLE) != 0                        ? 2U
                            : (uMask & PAINT_BLUE_EDITABLE) != 0                         ? 4U
                                                                                         : 0U;
    for (CColorButton& color : m_Colors)
    {
        color.SetDisplayChannels(uShown);
    }
    m_CurrentColor.SetDisplayChannels(uShown);
}

void CTerrain2DDrawDlg::UpdateFunctions(bool bPainting)
{
    const char* pszFunction = m_User->GetFunctionName();
    const std::string strFunction = pszFunction != nullptr ? pszFunction : "";
    EnableItem(DRAW_SET, bPainting);
    EnableItem(DRAW_MUL, bPainting && m_User->GetPalette() == nullptr);
    CheckItem(DRAW_SET, strFunction == "Set" ? CHECK_ON : CHECK_OFF);
    CheckItem(DRAW_MUL, strFunction == "Mul" ? CHECK_ON : CHECK_OFF);
}

void CTerrain2DDrawDlg::OnChannelBox(EChannelBox eBox)
{
    if (m_User != nullptr)
    {
        const uint32_t uMask = m_User->GetChannelMask();
        const uint32_t uClicked = GetClickedMask(uMask, eBox);
        if (uClicked != uMask)
        {
            m_User->SetChannelMask(uClicked);
        }
    }
    UpdateControls();
}

void CTerrain2DDrawDlg::ChooseChannelMask(uint32_t uChannels)
{
    if (m_User != nullptr)
    {
        m_User->SetChannelMask(uChannels);
    }
    UpdateControls();
}

bool CTerrain2DDrawDlg::ChooseFunction(const char* pszName)
{
    const uint32_t uButton = std::strcmp(pszName, "Mul") == 0 ? DRAW_MUL : DRAW_SET;
    const bool bAllowed = IsItemEnabled(uButton) || !IsPaintingModeOn();
    if (m_User != nullptr && bAllowed)
    {
        m_User->SetFunction(pszName);
    }
    UpdateControls();
    return bAllowed;
}

void CTerrain2DDrawDlg::OnSave()
{
    ReadControls();
    CModeEditTerrainType* pMode = GetPluginPart<IPaintingPlugin>()->GetEditTerrainTypeMode();
    const CSaveNotice notice;
    if (!m_BitmapFile.empty() && pMode != nullptr && pMode->SaveBitmap(m_BitmapFile.c_str()))
    {
        notice.Say(m_BitmapFile.c_str());
    }
}

void CTerrain2DDrawDlg::SwitchEditing()
{
    auto* pPlugin = GetPluginPart<IPaintingPlugin>();
    ReadControls();
    if (IsPaintingModeOn())
    {
        pPlugin->SetMode(NO_MODE, 0);
    }
    else
    {
        pPlugin->SetMode(pPlugin->GetEditTerrainTypeModeId(), 0);
        LoadColours();
    }
    UpdateControls();
    ShowExtent(); // pixels count from now on, or have another width
}

void CTerrain2DDrawDlg::OnTexelMapping()
{
    ReadControls();
    if (HasUser())
    {
        m_User->SetTexelMapping(m_TexelMapping == CHECK_ON);
    }
}

void CTerrain2DDrawDlg::OnBrowseBitmap()
{
    ReadControls();
    const std::string strPath =
        Browse(FILE_DIALOG_SAVE,
               nullptr,
               m_BitmapFile,
               "Bitmap files (*.dds; *.png; *.jpg; *.tga)|*.dds|*.png|*.jpg|*.tga");
    if (!strPath.empty())
    {
        ChooseBitmapFile(strPath);
    }
    UpdateControls();
}

void CTerrain2DDrawDlg::ChooseBitmapFile(const std::string& strPath)
{
    m_BitmapFile = strPath;
    WriteFields();
    UpdateControls();
}

void CTerrain2DDrawDlg::OnBrowseMaterial()
{
    ReadControls();
    const std::string strPath =
        Browse(FILE_DIALOG_OPEN, "mat", m_Material, "Material files (*.mat)|*.mat");
    if (strPath.empty())
    {
        return;
    }
    m_Material = strPath;
    WriteFields();
    if (HasUser())
    {
        m_User->SetPaintMaterial(m_Material.c_str());
    }
}

// A name counts when it is whole.
void CTerrain2DDrawDlg::OnMaterialTyped()
{
    ReadControls();
    const char* pszBefore = m_User != nullptr ? m_User->GetPaintMaterial() : nullptr;
    if (pszBefore != nullptr && m_Material != pszBefore)
    {
        m_User->SetPaintMaterial(m_Material.c_str());
    }
}

void CTerrain2DDrawDlg::OnBrowseShape()
{
    // The last pattern is not that of the text, and dialogs have always listed it so.
    constexpr const char* FILTER = "Bitmap files (*.jpg;*.png;*.dds)|*.jpg|*.png|*.dat";
    if (!HasUser())
    {
        return;
    }
    const std::string strPath =
        Browse(FILE_DIALOG_OPEN, nullptr, m_User->GetBrushShapeName(), FILTER);
    if (!strPath.empty())
    {
        ChooseBrushShape(strPath);
    }
}

bool CTerrain2DDrawDlg::OnToolTipText(SToolTipText& tip)
{
    return GetPluginContext()->GetToolTipText(tip);
}
