#include "editor/core/CToolBrushes.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/KeptFiles.h"
#include "editor/core/ToolBrushFile.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/CTextFile.h"
#include "host/IPlugin.h"
#include "host/IPluginScript.h"
#include "host/IPluginTools.h"
#include "host/Log.h"
#include "parser/CTCParseNodes.h"
#include "parser/DeclarativeText.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace
{

// The plug-in reads its brushes, this reads their shares.
constexpr char READY_FILE[] = "data/brushes/ready.brushes";

} // namespace

CToolBrushes::CToolBrushes(CEditorHost& host)
    : m_Host(host)
{
    m_Host.GetObservers().Add(this);
}

CToolBrushes::~CToolBrushes()
{
    m_Host.GetObservers().Remove(this);
}

void CToolBrushes::Begin(IPlugin* pPlugin,
                         std::string strFile,
                         std::function<bool()> isScriptPlayed)
{
    m_pBrushes = dynamic_cast<IPluginBrushes*>(pPlugin);
    m_pScript = dynamic_cast<IPluginScript*>(pPlugin);
    m_pTools = dynamic_cast<IPluginTools*>(pPlugin);
    if (m_pBrushes == nullptr || m_pScript == nullptr || m_pTools == nullptr)
    {
        m_pBrushes = nullptr;
        return;
    }
    m_File = std::move(strFile);
    m_IsScriptPlayed = std::move(isScriptPlayed);
    m_pBrushes->SetBrushTaker(this);
    if (m_Ready.Read(READY_FILE))
    {
        ListReadyBrushes();
    }
    Load();
    FitAll();
}

void CToolBrushes::End()
{
    if (m_pBrushes == nullptr)
    {
        return;
    }
    m_pBrushes->SetBrushTaker(nullptr);
    Save();
    m_Tools.clear();
    m_pBrushes = nullptr;
    m_pScript = nullptr;
    m_pTools = nullptr;
}

// A library that is there and can be read is the person's, whatever it holds.
void CToolBrushes::ListReadyBrushes()
{
    const std::vector<SBrushFault>& faults = m_pBrushes->GetBrushFaults();
    const bool bDamaged = std::any_of(
        faults.begin(), faults.end(), [](const SBrushFault& fault) { return fault.bWholeFile; });
    if (fs::exists(m_pBrushes->GetBrushFile()) && !bDamaged)
    {
        return;
    }
    if (bDamaged)
    {
        CrashLog("[CToolBrushes::ListReadyBrushes] the ready brushes are listed instead\n");
    }
    CTCPARSE_KEYWORD keyword;
    std::snprintf(keyword.name, sizeof(keyword.name), "brush_file");
    keyword.params = new CTCPARSE_STRING(READY_FILE);
    std::string strWhy;
    m_pScript->Play(&keyword, strWhy);
}

void CToolBrushes::Load()
{
    std::set<std::string> found;
    FittedTools fitted;
    m_bMayReplace = LoadToolBrushes(m_File, *m_pScript, found, fitted) != EToolFile::Faulty ||
                    !KeepFile(m_File).empty();
    for (const SToolOffer& offer : m_pTools->GetTools())
    {
        STool tool;
        tool.strFunction = offer.pszFunction;
        tool.share = m_Ready.FindShare(tool.strFunction);
        const auto mark = fitted.find(tool.strFunction);
        const bool bReady = mark != fitted.end() && !mark->second.empty();
        const SReadyBrush* pReady = bReady ? m_Ready.FindBrush(mark->second) : nullptr;
        if (pReady != nullptr)
        {
            tool.strReady = pReady->strName;
            tool.share = pReady->share;
        }
        // One that comes from a brush that is ready no longer is kept as any other.
        const bool bKept = found.contains(tool.strFunction);
        if (!bKept || (mark != fitted.end() && bReady == (pReady != nullptr)))
        {
            NoteFitted(tool);
        }
        m_Tools.push_back(std::move(tool));
    }
}

void CToolBrushes::Save()
{
    if (!m_bMayReplace)
    {
        return;
    }
    std::string strText = GetToolBrushDeclarations(*m_pScript);
    for (const STool& tool : m_Tools)
    {
        const std::string strBrush = GetText(tool.strFunction);
        strText += strBrush;
        if (!strBrush.empty() && IsAsFitted(tool))
        {
            strText += MakeFittedLine(tool.strFunction, tool.strReady);
        }
    }
    WriteTextFile("CToolBrushes::Save", m_File, strText);
}

void CToolBrushes::OnBeforeEvent(const SHostEvent& event)
{
    if (m_pBrushes != nullptr && event.eKind == EHostEvent::Command)
    {
        m_CommandFunction = m_pTools->GetFunctionName();
        m_CommandSizes = {};
        m_pTools->GetToolSizes(m_CommandFunction.c_str(), m_CommandSizes);
    }
}

// The plug-in's menu gives a height to a tool that picks its own; with the next press that would be
// gone.
void CToolBrushes::HeedGivenHeight()
{
    SToolSizes sizes;
    const bool bSame = m_pTools->GetFunctionName() == m_CommandFunction &&
                       m_pTools->GetToolSizes(m_CommandFunction.c_str(), sizes);
    if (bSame && sizes.bPicksHeight && sizes.fAmount != m_CommandSizes.fAmount &&
        !m_IsScriptPlayed())
    {
        sizes.bPicksHeight = false;
        m_pTools->SetToolSizes(m_CommandFunction.c_str(), sizes);
    }
}

void CToolBrushes::OnEvent(const SHostEvent& event)
{
    if (m_pBrushes != nullptr && event.eKind == EHostEvent::Command)
    {
        HeedGivenHeight();
    }
    const CTerrain* pTerrain = m_pBrushes != nullptr ? FindTerrain() : nullptr;
    if (pTerrain == nullptr)
    {
        return;
    }
    // An import into the level is as good as another one; another resolution is not.
    const bool bReloaded = event.eKind == EHostEvent::TerrainReloaded;
    if (event.eKind == EHostEvent::LevelChanged || (bReloaded && HasOtherSize(*pTerrain)))
    {
        FitAll();
    }
}

bool CToolBrushes::HasOtherSize(const CTerrain& terrain) const
{
    const SVec3 size = terrain.GetSize();
    return size.x != m_FittedSize.x || size.y != m_FittedSize.y || size.z != m_FittedSize.z;
}

void CToolBrushes::FitAll()
{
    const CTerrain* pTerrain = FindTerrain();
    if (pTerrain == nullptr)
    {
        return;
    }
    m_FittedSize = pTerrain->GetSize();
    const SGroundSize ground = MeasureGround(*pTerrain);
    for (STool& tool : m_Tools)
    {
        if (IsAsFitted(tool))
        {
            Fit(tool, ground);
        }
    }
}

void CToolBrushes::Fit(STool& tool, const SGroundSize& ground)
{
    if (tool.share.fExtent > 0.0F && ground.fSide > 0.0F)
    {
        m_pTools->SetToolSizes(tool.strFunction.c_str(), FitSizes(tool.share, ground));
    }
    NoteFitted(tool);
}

void CToolBrushes::NoteFitted(STool& tool)
{
    SToolSizes sizes;
    m_pTools->GetToolSizes(tool.strFunction.c_str(), sizes);
    tool.fAmount = sizes.fAmount;
    tool.strFitted = GetText(tool.strFunction);
}

bool CToolBrushes::IsAsFitted(const STool& tool)
{
    SToolSizes sizes;
    if (tool.strFitted.empty() || !m_pTools->GetToolSizes(tool.strFunction.c_str(), sizes))
    {
        return false;
    }
    // What a stroke has picked from the ground is nobody's wish.
    if (sizes.bPicksHeight && sizes.fAmount != tool.fAmount)
    {
        sizes.fAmount = tool.fAmount;
        m_pTools->SetToolSizes(tool.strFunction.c_str(), sizes);
    }
    return GetText(tool.strFunction) == tool.strFitted;
}

void CToolBrushes::OnBrushTaken(const char* pszName, const char* pszFunction)
{
    const auto tool =
        std::find_if(m_Tools.begin(),
                     m_Tools.end(),
                     [&](const STool& one) { return one.strFunction == pszFunction; });
    SToolSizes sizes;
    if (tool == m_Tools.end() || !m_pTools->GetToolSizes(pszFunction, sizes))
    {
        return;
    }
    tool->strFitted.clear();
    const SReadyBrush* pReady = m_Ready.FindAlike(pszName, pszFunction, sizes);
    if (m_IsScriptPlayed() || pReady == nullptr)
    {
        return;
    }
    tool->strReady = pReady->strName;
    tool->share = pReady->share;
    NoteFitted(*tool);
    if (const CTerrain* pTerrain = FindTerrain())
    {
        Fit(*tool, MeasureGround(*pTerrain));
    }
}

// Empty for one that cannot be written.
std::string CToolBrushes::GetText(const std::string& strFunction) const
{
    CTextFile file;
    return m_pBrushes->WriteToolBrush(file, strFunction.c_str()) ? file.GetText() : std::string();
}

const CTerrain* CToolBrushes::FindTerrain() const
{
    return m_Host.GetEngine().GetCWorld().GetCTerrain();
}
