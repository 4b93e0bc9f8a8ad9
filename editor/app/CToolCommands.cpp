#include "editor/app/CToolCommands.h"

#include "editor/app/CBrushHand.h"
#include "editor/app/CCommandList.h"
#include "editor/app/CCursorNote.h"
#include "editor/app/CViewArea.h"
#include "editor/app/ToolTexts.h"
#include "editor/core/CEditorHost.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/ActionIds.h"
#include "host/IPluginTools.h"

#include <QAction>
#include <QMenu>

#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

CToolCommands::CToolCommands(CEditorHost& host,
                             IPluginTools* pTools,
                             CViewArea& views,
                             std::function<void(int32_t)> sendAction)
    : m_Host(host)
    , m_pTools(pTools)
    , m_Views(views)
    , m_SendAction(std::move(sendAction))
{
}

void CToolCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    AddTools(menu, commands);
    menu.addSeparator();
    AddValues(menu, commands);
    menu.addSeparator();
    AddMask(menu, commands);
}

void CToolCommands::AddTools(QMenu& menu, CCommandList& commands)
{
    const std::vector<SToolOffer> tools =
        m_pTools != nullptr ? m_pTools->GetTools() : std::vector<SToolOffer>();
    for (size_t i = 0; i < tools.size(); ++i)
    {
        const uint32_t uKey = i < DIGITS ? static_cast<uint32_t>('1' + i) : 0;
        commands
            .Add(&menu,
                 MakeCommandId(tools[i].pszFunction).c_str(),
                 tools[i].pszText,
                 {uKey, 0},
                 [this, pszFunction = tools[i].pszFunction] { Take(pszFunction); })
            ->setAutoRepeat(false);
    }
    commands
        .Add(&menu,
             "tool.toggle",
             "&Take the tool up or put it away",
             {'T', KEY_CONTROL},
             [this] { Toggle(); })
        ->setAutoRepeat(false);
}

void CToolCommands::AddValues(QMenu& menu, CCommandList& commands)
{
    commands.Add(&menu, "brush.larger", "&Larger brush", {']', 0}, [this] { ScaleExtent(true); });
    commands.Add(
        &menu, "brush.smaller", "S&maller brush", {'[', 0}, [this] { ScaleExtent(false); });
    commands.Add(&menu, "brush.invert", "&Invert the tool", {'X', 0}, [this] { Invert(); })
        ->setAutoRepeat(false);
    commands.Add(
        &menu, "brush.pick_height", "Pick the &height to set", {'P', 0}, [this] { PickHeight(); });
    constexpr std::tuple<const char*, const char*, uint32_t> HELD[] = {
        {"size", "Size of the brush, with the mouse", 'B'},
        {"power", "Power of the brush, with the mouse", 'V'},
        {"hardness", "Hardness of the brush, with the mouse", 'H'},
        {"amount", "Height, levels or neighbourhood of the tool, with the mouse", 'N'},
    };
    for (const auto& [pszName, pszText, uKey] : HELD)
    {
        commands.AddHeld((std::string(HAND_COMMAND) + pszName).c_str(), pszText, {uKey, 0});
    }
}

void CToolCommands::AddMask(QMenu& menu, CCommandList& commands)
{
    commands.Add(&menu, "brush.mask", "Mas&k on and off", {'M', 0}, [this] { SwitchMask(); })
        ->setAutoRepeat(false);
    commands
        .Add(&menu,
             "brush.choose_mask",
             "&Choose the mask...",
             {'M', KEY_SHIFT},
             [this] { ChooseMask(); })
        ->setAutoRepeat(false);
}

bool CToolCommands::IsReady() const
{
    return m_pTools != nullptr && !m_Host.IsDragging();
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
        Say(NO_TOOL);
    }
    return bTool;
}

void CToolCommands::Take(const char* pszFunction)
{
    if (IsReady() && m_pTools->TakeTool(pszFunction))
    {
        Say(GetToolName());
        Follow();
    }
}

// Without a tool the plug-in's own action would only be refused.
void CToolCommands::Toggle()
{
    if (m_pTools == nullptr || m_pTools->IsTerraforming())
    {
        m_SendAction(ACTION_TOGGLE_TERRAFORMING);
        return;
    }
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
    Say("brush " + GetExtentText(m_pTools->GetBrushValue(EBrushValue::Extent)));
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
        Say(GetToolName() + " has no inverse");
        return;
    }
    Say((fHeight < 0.0F ? "lowers " : "raises ") +
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
        Say("no ground under the cursor");
        return;
    }
    const bool bSet = m_pTools->SetToolHeight(hit.y);
    Say(bSet ? "sets " + QString::number(static_cast<double>(hit.y), 'f', 2)
             : GetToolName() + " sets no height");
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
    Say(m_pTools->IsMaskEnabled() ? "mask on" : "mask off");
}

void CToolCommands::ChooseMask()
{
    if (IsSculpting() && m_pTools->ChooseMask())
    {
        Say(m_pTools->GetMaskPath().empty() ? "no mask" : "mask on"); // the log says why
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
    m_Host.GetModes().SetModeCursor();
    m_Views.RepeatHover();
    m_Views.RequestFrames();
}
