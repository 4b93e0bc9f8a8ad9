#include "editor/script/CScriptPlayer.h"

#include "editor/core/CEditorHost.h"
#include "editor/script/CScriptCall.h"
#include "editor/script/HeightText.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPlugin.h"
#include "host/IPluginScript.h"
#include "host/NumberText.h"
#include "host/Terrain.h"
#include "host/TerrainSize.h"
#include "host/World.h"
#include "parser/CTCParseNodes.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <utility>
#include <vector>

namespace
{

constexpr char NOT_WRITTEN[] = "cannot be written, see the log";
constexpr char NO_TERRAIN[] = "there is no terrain";

bool IsFinite(const SVec3& vec)
{
    return std::isfinite(vec.x) && std::isfinite(vec.y) && std::isfinite(vec.z);
}

template <typename... TArguments> std::string Format(const char* pszFormat, TArguments... arguments)
{
    char szText[256];
    std::snprintf(szText, sizeof(szText), pszFormat, arguments...);
    return szText;
}

} // namespace

struct CScriptPlayer::SRow
{
    SScriptKeyword keyword;
    bool (CScriptPlayer::*pPlay)(const CScriptCall&, std::string&);
};

const CScriptPlayer::SRow CScriptPlayer::ROWS[] = {
    {{"level", "iv"}, &CScriptPlayer::PlayLevel},
    {{"open", "s", EKeywordFile::Read}, &CScriptPlayer::PlayOpen},
    {{"heights", "iis"}, &CScriptPlayer::PlayHeights},
    {{"keys", "s"}, &CScriptPlayer::PlayKeys},
    {{"press", "ff"}, &CScriptPlayer::PlayMouse<EMouseEvent::Press, ECursorTarget::Position>},
    {{"move", "ffi"}, &CScriptPlayer::PlayMouse<EMouseEvent::Move, ECursorTarget::Position>},
    {{"release", "ff"}, &CScriptPlayer::PlayMouse<EMouseEvent::Release, ECursorTarget::Position>},
    {{"press_at", "v"}, &CScriptPlayer::PlayMouse<EMouseEvent::Press, ECursorTarget::Hit>},
    {{"move_at", "vi"}, &CScriptPlayer::PlayMouse<EMouseEvent::Move, ECursorTarget::Hit>},
    {{"release_at", "v"}, &CScriptPlayer::PlayMouse<EMouseEvent::Release, ECursorTarget::Hit>},
    {{"press_miss", ""}, &CScriptPlayer::PlayMouse<EMouseEvent::Press, ECursorTarget::Nothing>},
    {{"move_miss", "i"}, &CScriptPlayer::PlayMouse<EMouseEvent::Move, ECursorTarget::Nothing>},
    {{"release_miss", ""}, &CScriptPlayer::PlayMouse<EMouseEvent::Release, ECursorTarget::Nothing>},
    {{"action", "ii"}, &CScriptPlayer::PlayAction},
    {{"undo", ""}, &CScriptPlayer::PlayUndo},
    {{"redo", ""}, &CScriptPlayer::PlayRedo},
    {{"save", "s", EKeywordFile::Written}, &CScriptPlayer::PlaySave},
    {{"export_stl", "s", EKeywordFile::Written}, &CScriptPlayer::PlayExportStl},
    {{"picture", "s", EKeywordFile::Written}, &CScriptPlayer::PlayPicture},
    {{"expect_height", "iiff"}, &CScriptPlayer::PlayExpectHeight},
    {{"expect_undo", "i"}, &CScriptPlayer::PlayExpectUndo},
};

std::vector<SScriptKeyword> CScriptPlayer::GetHostKeywords()
{
    std::vector<SScriptKeyword> keywords;
    for (const SRow& row : ROWS)
    {
        keywords.push_back(row.keyword);
    }
    return keywords;
}

CScriptPlayer::CScriptPlayer(CEditorHost& host,
                             CScriptCursor& cursor,
                             ViewId view,
                             IPlugin* pPlugin,
                             const std::string& strScriptPath,
                             std::function<void()> onPlayed)
    : m_Host(host)
    , m_View(view)
    , m_Script(dynamic_cast<IPluginScript*>(pPlugin))
    , m_OnPlayed(std::move(onPlayed))
    , m_ScriptPath(strScriptPath)
    , m_Keywords(pPlugin)
    , m_Folder(strScriptPath, m_Keywords)
    , m_Mouse(host, cursor, view, pPlugin)
{
}

bool CScriptPlayer::Play(CTCPARSE_KEYWORD* pFirst, std::string& strFault)
{
    size_t nPlayed = 0;
    for (CTCPARSE_KEYWORD* pKeyword = pFirst; pKeyword != nullptr; pKeyword = pKeyword->next)
    {
        ++nPlayed;
        std::string strWhy;
        std::string strCall = CScriptCall(*pKeyword).GetText(); // playing changes file names
        bool bPlayed = false;
        if (!m_Host.GetInput().Guard("CScriptPlayer::Play",
                                     [&] { bPlayed = PlayKeyword(*pKeyword, strWhy); }))
        {
            strWhy = "not enough memory";
        }
        if (!bPlayed)
        {
            strFault = m_ScriptPath + ": " + strCall.append(": ").append(strWhy);
            strFault += " (keyword " + std::to_string(nPlayed) + ")";
            return false;
        }
        if (m_OnPlayed)
        {
            m_OnPlayed();
        }
    }
    m_Mouse.EndDrag();
    return true;
}

bool CScriptPlayer::PlayKeyword(CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    const SScriptKeyword* pOfHost = m_Keywords.FindOfHost(keyword.name);
    const SScriptKeyword* pOfPlugin = m_Keywords.FindOfPlugin(keyword.name);
    const SScriptKeyword* pKeyword = pOfHost != nullptr ? pOfHost : pOfPlugin;
    const CScriptCall call(keyword);
    if (pKeyword == nullptr)
    {
        strWhy = "not a keyword of scripts";
        return false;
    }
    if (!call.HasTypes(pKeyword->pszTypes))
    {
        strWhy = "wrong arguments";
        return false;
    }
    if (m_Folder.WouldReplaceScript(keyword))
    {
        strWhy = "would replace the script itself";
        return false;
    }
    if (keyword.block != nullptr && (pOfHost != nullptr || pKeyword->bWindows))
    {
        strWhy = "takes no block";
        return false;
    }
    if (pOfHost != nullptr)
    {
        const auto* pRow =
            std::find_if(std::begin(ROWS),
                         std::end(ROWS),
                         [&](const SRow& row) { return row.keyword.pszName == pOfHost->pszName; });
        return (this->*pRow->pPlay)(call, strWhy);
    }
    if (pKeyword->bWindows && !m_Host.PrepareWindows())
    {
        strWhy = "there are no windows to paint with";
        return false;
    }
    return PlayPluginKeyword(keyword, strWhy);
}

bool CScriptPlayer::PlayPluginKeyword(CTCPARSE_KEYWORD& keyword, std::string& strWhy)
{
    m_Folder.LocateFiles(keyword);
    const EScriptResult eResult = m_Script->Play(&keyword, strWhy);
    if (eResult == EScriptResult::Unknown)
    {
        strWhy = "not a keyword of this plug-in";
    }
    return eResult == EScriptResult::Done;
}

bool CScriptPlayer::PlayLevel(const CScriptCall& call, std::string& strWhy)
{
    const int32_t nCells = call.GetInt(0);
    const SVec3 size = call.GetVec3(1);
    if (nCells < 1 || nCells > static_cast<int32_t>(TERRAIN_MAX_CELLS))
    {
        strWhy = "a level has 1 to 16384 cells per side";
        return false;
    }
    if (!IsFinite(size) || size.x == 0.0F || size.y == 0.0F || size.z == 0.0F)
    {
        strWhy = "a component of the size is 0 or not finite";
        return false;
    }
    return FinishLevel(
        m_Host.NewLevel(static_cast<uint32_t>(nCells), size), "cannot be made", strWhy);
}

bool CScriptPlayer::PlayOpen(const CScriptCall& call, std::string& strWhy)
{
    const std::string strPath = m_Folder.GetPath(call.GetString(0));
    return FinishLevel(m_Host.OpenLevel(strPath.c_str()), "cannot be opened, see the log", strWhy);
}

bool CScriptPlayer::PlayHeights(const CScriptCall& call, std::string& strWhy)
{
    CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    std::vector<float> heights;
    if (pTerrain == nullptr || !ReadHeightText(call.GetString(2), heights))
    {
        strWhy = pTerrain == nullptr ? NO_TERRAIN : "the heights cannot be read";
        return false;
    }
    const int32_t iColumn = call.GetInt(0);
    const int32_t iRow = call.GetInt(1);
    if (iColumn < 0 || iRow < 0 || static_cast<uint32_t>(iRow) >= pTerrain->GetVerticesZ() ||
        static_cast<size_t>(iColumn) + heights.size() > pTerrain->GetVerticesX())
    {
        strWhy = "the terrain has no such vertices";
        return false;
    }
    pTerrain->SetRowHeights(static_cast<uint32_t>(iColumn),
                            static_cast<uint32_t>(iRow),
                            heights.data(),
                            static_cast<uint32_t>(heights.size()));
    m_Host.GetUndoStack().Clear(); // its records know nothing of this
    return true;
}

bool CScriptPlayer::FinishLevel(bool bDone, const char* pszFailure, std::string& strWhy)
{
    m_Mouse.EndDrag();
    if (!bDone)
    {
        strWhy = pszFailure;
        return false;
    }
    m_Picture.ForgetLevel();
    return true;
}

bool CScriptPlayer::PlayKeys(const CScriptCall& call, std::string& strWhy)
{
    const bool bKnown = m_Mouse.SetKeys(call.GetString(0));
    strWhy = bKnown ? "" : R"(must be "", "ctrl", "alt" or "ctrl+alt")";
    return bKnown;
}

template <EMouseEvent eEvent, ECursorTarget eTarget>
bool CScriptPlayer::PlayMouse(const CScriptCall& call, std::string& strWhy)
{
    return m_Mouse.Play(eEvent, eTarget, call, strWhy);
}

bool CScriptPlayer::PlayAction(const CScriptCall& call, std::string& /*strWhy*/)
{
    m_Host.GetInput().SendAction(m_View, call.GetInt(0), static_cast<uint32_t>(call.GetInt(1)));
    return true;
}

bool CScriptPlayer::PlayUndo(const CScriptCall& /*call*/, std::string& /*strWhy*/)
{
    m_Mouse.LetGo(); // as the key does
    m_Host.Undo();
    return true;
}

bool CScriptPlayer::PlayRedo(const CScriptCall& /*call*/, std::string& /*strWhy*/)
{
    m_Mouse.LetGo();
    m_Host.Redo();
    return true;
}

bool CScriptPlayer::PlaySave(const CScriptCall& call, std::string& strWhy)
{
    const auto save = [](Terrain& terrain, const char* pszPath)
    {
        return terrain.SaveHeightMap(pszPath, nullptr, 0, 0);
    };
    return WriteTerrain(call, save, strWhy);
}

bool CScriptPlayer::PlayExportStl(const CScriptCall& call, std::string& strWhy)
{
    const auto exportWhole = [](Terrain& terrain, const char* pszPath)
    {
        return terrain.ExportToSTL(pszPath, nullptr);
    };
    return WriteTerrain(call, exportWhole, strWhy);
}

bool CScriptPlayer::WriteTerrain(const CScriptCall& call,
                                 bool (*pWrite)(Terrain&, const char*),
                                 std::string& strWhy)
{
    Terrain* pTerrain = m_Host.GetEngine().GetWorld()->GetTerrain();
    if (pTerrain == nullptr)
    {
        strWhy = NO_TERRAIN;
        return false;
    }
    const bool bWritten = pWrite(*pTerrain, m_Folder.GetPath(call.GetString(0)).c_str());
    strWhy = bWritten ? "" : NOT_WRITTEN;
    return bWritten;
}

bool CScriptPlayer::PlayPicture(const CScriptCall& call, std::string& strWhy)
{
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    if (pTerrain == nullptr)
    {
        strWhy = NO_TERRAIN;
        return false;
    }
    const bool bWritten = m_Picture.Write(*pTerrain, m_Folder.GetPath(call.GetString(0)));
    strWhy = bWritten ? "" : NOT_WRITTEN;
    return bWritten;
}

bool CScriptPlayer::PlayExpectHeight(const CScriptCall& call, std::string& strWhy)
{
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    if (pTerrain == nullptr)
    {
        strWhy = NO_TERRAIN;
        return false;
    }
    const auto uColumn = static_cast<uint32_t>(call.GetInt(0));
    const auto uRow = static_cast<uint32_t>(call.GetInt(1));
    if (uColumn >= pTerrain->GetVerticesX() || uRow >= pTerrain->GetVerticesZ())
    {
        strWhy = Format(
            "the terrain has %u x %u vertices", pTerrain->GetVerticesX(), pTerrain->GetVerticesZ());
        return false;
    }
    const double fHeight =
        pTerrain->GetHeightData()[size_t{uRow} * pTerrain->GetVerticesX() + uColumn];
    const bool bWithin = std::fabs(fHeight - call.GetFloat(2)) <= call.GetFloat(3);
    strWhy = bWithin ? "" : "the height is " + FormatNumber(fHeight, 9, std::chars_format::general);
    return bWithin;
}

bool CScriptPlayer::PlayExpectUndo(const CScriptCall& call, std::string& strWhy)
{
    const size_t nRecords = m_Host.GetUndoStack().GetCount();
    const bool bEqual = call.GetInt(0) >= 0 && static_cast<size_t>(call.GetInt(0)) == nRecords;
    strWhy = bEqual ? "" : Format("the undo stack has %zu records", nRecords);
    return bEqual;
}
