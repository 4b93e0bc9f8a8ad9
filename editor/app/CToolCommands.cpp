#include "editor/app/CToolCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CCursorNote.h"
#include "editor/app/CEditor.h"
#include "editor/app/CPluginCommands.h"
#include "editor/app/CViewArea.h"
#include "editor/app/KeyChords.h"
#include "editor/app/ToolTexts.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/ActionIds.h"
#include "host/IPluginTools.h"

#include <cmath>
#include <string_view>

namespace
{

constexpr float STEP = 1.1F; // of the extent

constexpr size_t DIGITS = 9; // keys for tools

// "BlurFunction" is "tool.blur", "SetHeightFunction" "tool.set_height".
std::string MakeCommandId(std::string_view strFunction)
{
    std::string strId = "tool.";
    for (const char c : strFunction.substr(0, strFunction.rfind("Function")))
    {
        const bool bWord = c >= 'A' && c <= 'Z';
        strId += bWord && strId.back() != '.' ? "_" : "";
        strId += bWord ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return strId;
}

} // namespace

CToolCommands::CToolCommands(CEditor& editor, CViewArea& views, CPluginCommands& plugin)
    : m_Host(editor.GetHost())
    , m_pTools(editor.FindInterface<IPluginTools>())
    , m_Views(views)
    , m_Plugin(plugin)
{
    const auto offers = m_pTools != nullptr ? m_pTools->GetTools() : std::vector<SToolOffer>();
    for (const SToolOffer& offer : offers)
    {
        m_Tools.push_back({MakeCommandId(offer.pszFunction), offer});
    }
}

void CToolCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    for (size_t i = 0; i < m_Tools.size(); ++i)
    {
        const STool& tool = m_Tools[i];
        const SKeyChord key = i < DIGITS ? Key(static_cast<uint32_t>('1' + i)) : SKeyChord();
        commands.Add(menu,
                     {{.pszId = tool.strId.c_str(),
                       .pszText = tool.offer.pszText,
                       .key = key,
                       .run = [this, &tool] { Take(tool.offer.pszFunction); },
                       .isChecked = [this, &tool] { return IsAtHand(tool); },
                       .bOnce = true}});
    }
    const auto scale = [this](bool bLarger)
    {
        return [this, bLarger]
        {
            ScaleExtent(bLarger);
        };
    };
    commands.Add(
        menu,
        {
            {.pszId = "tool.toggle",
             .pszText = "&Take the tool up or put it away",
             .key = Ctrl('T'),
             .run = [this] { Toggle(); },
             .isChecked = [this] { return m_pTools != nullptr && m_pTools->IsTerraforming(); },
             .bOnce = true},
            SCommand::Line(),
            SCommand::Run("brush.larger", "&Larger brush", Key(']'), scale(true)),
            SCommand::Run("brush.smaller", "S&maller brush", Key('['), scale(false)),
            SCommand::Once("brush.invert", "&Invert the tool", Key('X'), [this] { Invert(); }),
            SCommand::Run(
                "brush.pick_height", "Pick the &height to set", Key('P'), [this] { PickHeight(); }),
            SCommand::Hold("brush.hold_size", "Size of the brush, with the mouse", Key('B')),
            SCommand::Hold("brush.hold_power", "Power of the brush, with the mouse", Key('V')),
            SCommand::Hold(
                "brush.hold_hardness", "Hardness of the brush, with the mouse", Key('H')),
            SCommand::Hold("brush.hold_amount",
                           "Height, levels or neighbourhood of the tool, with the mouse",
                           Key('N')),
            SCommand::Line(),
            {.pszId = "brush.mask",
             .pszText = "Mas&k on and off",
             .key = Key('M'),
             .run = [this] { SwitchMask(); },
             .isChecked = [this] { return m_pTools != nullptr && m_pTools->IsMaskEnabled(); },
             .bOnce = true},
            SCommand::Once(
                "brush.choose_mask", "&Choose the mask...", Shift('M'), [this] { ChooseMask(); }),
        });
}

std::vector<std::string> CToolCommands::GetToolIds() const
{
    std::vector<std::string> ids;
    for (const STool& tool : m_Tools)
    {
        ids.push_back(tool.strId);
    }
    return ids;
}

bool CToolCommands::IsReady() const
{
    return m_pTools != nullptr && !m_Host.GetInput().IsDragging();
}

bool CToolCommands::IsAtHand(const STool& tool) const
{
    return m_pTools != nullptr && m_pTools->IsTerraforming() &&
           m_pTools->GetFunctionName() == tool.offer.pszFunction;
}

bool CToolCommands::IsSculpting() const
{
    if (!IsReady())
    {
        return false;
    }
    const bool bTool = m_pTools->IsTerraforming() && !m_pTools->GetFunctionName().empty();
    if (!bTool)
    {
        Say(Words(NO_TOOL));
    }
    return bTool;
}

void CToolCommands::Take(const char* pszFunction)
{
    if (IsReady() && m_pTools->TakeTool(pszFunction))
    {
        m_Views.SetMeasuring(false);
        m_Views.SetProtecting(false); // whoever takes a tool wants to work with it
        Say(GetToolName());
        Follow();
    }
}

// Without a tool the plug-in's own action would only be refused.
void CToolCommands::Toggle()
{
    if (m_pTools == nullptr || m_pTools->IsTerraforming())
    {
        m_Plugin.SendAction(ACTION_TOGGLE_TERRAFORMING);
        return;
    }
    // The tool that was up last.
    Take(nullptr);
}

void CToolCommands::ScaleExtent(bool bLarger)
{
    if (!IsReady() || m_pTools->GetFunctionName().empty())
    {
        return;
    }
    const float fExtent = m_pTools->GetBrushValue(EBrushValue::Extent);
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    const bool bWhole = pTerrain != nullptr && fExtent > pTerrain->GetSize().x;
    if (!bLarger || !bWhole) // whoever wants a larger one gets no smaller one
    {
        m_pTools->SetBrushValue(EBrushValue::Extent,
                                RoundExtent(bLarger ? fExtent * STEP : fExtent / STEP));
    }
    Say(Words("brush ") + GetExtentText(m_pTools->GetBrushValue(EBrushValue::Extent)));
    Follow();
}

void CToolCommands::Invert()
{
    float fHeight = 0.0F;
    if (!IsSculpting())
    {
        return;
    }
    if (!m_pTools->InvertTool(fHeight))
    {
        Say(GetToolName() + Words(" has no inverse"));
        return;
    }
    Say((fHeight < 0.0F ? Words("lowers ") : Words("raises ")) +
        QString::number(std::fabs(static_cast<double>(fHeight))));
}

void CToolCommands::PickHeight()
{
    SVec3 hit;
    if (!IsSculpting())
    {
        return;
    }
    if (!m_Views.GetActive()->GetInput().PickCursor(hit))
    {
        Say(Words("no ground under the cursor"));
        return;
    }
    const bool bSet = m_pTools->SetToolHeight(hit.y);
    Say(bSet ? Words("sets ") + QString::number(static_cast<double>(hit.y), 'f', 2)
             : GetToolName() + Words(" sets no height"));
}

void CToolCommands::SwitchMask()
{
    if (!IsSculpting())
    {
        return;
    }
    if (m_pTools->GetMaskPath().empty())
    {
        ChooseMask();
        return;
    }
    m_pTools->EnableMask(!m_pTools->IsMaskEnabled());
    Say(m_pTools->IsMaskEnabled() ? Words("mask on") : Words("mask off"));
}

void CToolCommands::ChooseMask()
{
    if (IsSculpting() && m_pTools->ChooseMask())
    {
        Say(m_pTools->GetMaskPath().empty() ? Words("no mask")
                                            : Words("mask on")); // the log says why
    }
}

QString CToolCommands::GetToolName() const
{
    return QString::fromStdString(m_pTools->GetToolName());
}

void CToolCommands::Say(const QString& strText) const
{
    m_Views.GetActive()->GetNote().ShowValue(strText);
}

void CToolCommands::Follow()
{
    // Cursor and mark belong to the tool and would else wait for the next move of the mouse.
    m_Host.GetModes().SetModeCursor();
    m_Views.RepeatHover();
    m_Views.RequestFrames();
}
