#include "editor/core/CToolBrushes.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/KeptFiles.h"
#include "editor/core/ToolBrushFile.h"
#include "editor/core/Words.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/CTextFile.h"
#include "host/IPlugin.h"
#include "host/IPluginScript.h"
#include "host/IPluginTools.h"
#include "host/Log.h"
#include "host/Notice.h"
#include "parser/CTCParseNodes.h"
#include "parser/DeclarativeText.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace
{

// The plug-in reads its brushes, this reads their shares.
constexpr char READY_FILE[] = "data/brushes/ready.brushes";

bool HasMask(const std::string& strBrush)
{
    return strBrush.find("\n  mask( ") != std::string::npos;
}

// Whether the two blocks differ in one field of the function and in nothing else.
bool DifferInOneField(const std::string& strFirst, const std::string& strSecond)
{
    const auto start = std::ranges::mismatch(strFirst, strSecond).in1;
    const size_t iLine = std::string(strFirst.begin(), start).rfind('\n') + 1;
    const size_t iFirst = strFirst.find('\n', iLine);
    const size_t iSecond = strSecond.find('\n', iLine);
    const size_t iText = strFirst.find_first_not_of(' ', iLine);
    return iFirst != std::string::npos && iSecond != std::string::npos &&
           strFirst.compare(iText, 7, "attrib(") == 0 &&
           strFirst.compare(iFirst, std::string::npos, strSecond, iSecond) == 0;
}

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
    m_Written = MakeFile();
}

void CToolBrushes::End()
{
    if (m_pBrushes == nullptr)
    {
        return;
    }
    m_pBrushes->SetBrushTaker(nullptr);
    m_Written.clear(); // it may not have been possible to write it
    Keep();
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
        WarnLog("[CToolBrushes::ListReadyBrushes] the ready brushes are listed instead\n");
    }
    CTCPARSE_KEYWORD keyword;
    std::snprintf(keyword.name, sizeof(keyword.name), "brush_file");
    keyword.params = new CTCPARSE_STRING(READY_FILE);
    std::string strWhy;
    m_pScript->Play(&keyword, strWhy);
}

void CToolBrushes::Load()
{
    SKeptTools kept;
    m_bMayReplace =
        LoadToolBrushes(m_File, *m_pScript, m_pTools->GetTools(), kept) != EToolFile::Faulty ||
        !KeepFile(m_File).empty();
    for (const SToolOffer& offer : m_pTools->GetTools())
    {
        STool tool;
        tool.strFunction = offer.pszFunction;
        tool.share = m_Ready.FindShare(tool.strFunction);
        const auto mark = kept.fitted.find(tool.strFunction);
        const bool bReady = mark != kept.fitted.end() && !mark->second.empty();
        const SReadyBrush* pReady = bReady ? m_Ready.FindBrush(mark->second) : nullptr;
        if (pReady != nullptr)
        {
            tool.strReady = pReady->strName;
            tool.share = pReady->share;
        }
        // One that comes from a brush that is ready no longer is kept as any other.
        const bool bKept = kept.found.contains(tool.strFunction);
        if (!bKept || (mark != kept.fitted.end() && bReady == (pReady != nullptr)))
        {
            NoteFitted(tool);
        }
        const bool bMask = HasMask(GetText(tool.strFunction));
        tool.strLostMask = bMask ? "" : kept.masks[tool.strFunction];
        m_Tools.push_back(std::move(tool));
    }
}

std::string CToolBrushes::MakeFile()
{
    std::string strText = GetToolBrushDeclarations(*m_pScript);
    for (STool& tool : m_Tools)
    {
        const bool bFitted = IsAsFitted(tool);
        const std::string strBrush = bFitted ? tool.strFitted : GetText(tool.strFunction);
        strText += strBrush;
        if (bFitted)
        {
            strText += MakeFittedLine(tool.strFunction, tool.strReady);
        }
        if (HasMask(strBrush))
        {
            tool.strLostMask.clear(); // it has another one now
        }
        if (!strBrush.empty() && !tool.strLostMask.empty())
        {
            strText += MakeLostMaskLine(tool.strFunction, tool.strLostMask);
        }
    }
    return strText + MakeEndLine();
}

void CToolBrushes::Keep()
{
    if (m_pBrushes == nullptr || !m_bMayReplace)
    {
        return;
    }
    std::string strText = MakeFile();
    if (strText != m_Written)
    {
        // One that cannot be written is not tried again until it is another one.
        m_Written = std::move(strText);
        WriteTextFile("CToolBrushes::Keep", m_File, m_Written);
    }
}

void CToolBrushes::OnBeforeEvent(const SHostEvent& event)
{
    m_bFitted = m_bFitted && event.eKind != EHostEvent::Reshaped; // of another change
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
        m_bFitted = FitAll();
        if (bReloaded && m_bFitted)
        {
            Notice(Words("The brushes that nobody has changed fit the new size"));
        }
    }
    // The step comes after the ground that it is about.
    if (event.eKind == EHostEvent::Reshaped && std::exchange(m_bFitted, false) &&
        event.pGround != nullptr)
    {
        m_Host.GetUndoStack().Describe(Words("brushes fitted anew"));
    }
}

bool CToolBrushes::HasOtherSize(const CTerrain& terrain) const
{
    const SVec3 size = terrain.GetSize();
    return size.x != m_FittedSize.x || size.y != m_FittedSize.y || size.z != m_FittedSize.z;
}

bool CToolBrushes::FitAll()
{
    const CTerrain* pTerrain = FindTerrain();
    if (pTerrain == nullptr)
    {
        return false;
    }
    bool bOther = false;
    m_FittedSize = pTerrain->GetSize();
    const SGroundSize ground = MeasureGround(*pTerrain);
    for (STool& tool : m_Tools)
    {
        if (IsAsFitted(tool))
        {
            const std::string strBefore = tool.strFitted;
            PutBackPicked(tool);
            Fit(tool, ground);
            bOther = bOther || tool.strFitted != strBefore;
        }
    }
    return bOther;
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

// What a stroke has picked from the ground is nobody's wish.
void CToolBrushes::PutBackPicked(const STool& tool)
{
    SToolSizes sizes;
    if (m_pTools->GetToolSizes(tool.strFunction.c_str(), sizes) && sizes.bPicksHeight &&
        sizes.fAmount != tool.fAmount)
    {
        sizes.fAmount = tool.fAmount;
        m_pTools->SetToolSizes(tool.strFunction.c_str(), sizes);
    }
}

bool CToolBrushes::IsAsFitted(const STool& tool) const
{
    SToolSizes sizes;
    if (tool.strFitted.empty() || !m_pTools->GetToolSizes(tool.strFunction.c_str(), sizes))
    {
        return false;
    }
    const std::string strText = GetText(tool.strFunction);
    const bool bPicked = sizes.bPicksHeight && sizes.fAmount != tool.fAmount;
    return strText == tool.strFitted || (bPicked && DifferInOneField(strText, tool.strFitted));
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
    tool->strLostMask.clear();
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
