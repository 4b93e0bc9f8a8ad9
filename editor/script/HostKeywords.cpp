#include "editor/script/HostKeywords.h"

#include "editor/core/CEditorHost.h"
#include "editor/script/CScriptCall.h"
#include "editor/script/CScriptFolder.h"
#include "editor/script/CScriptMouse.h"
#include "editor/script/CScriptPicture.h"
#include "editor/script/GroundKeywords.h"
#include "editor/script/HeightText.h"
#include "editor/script/ProtectionKeywords.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/HeightFile.h"
#include "engine/world/CEngineHost.h"
#include "host/FileSystem.h"
#include "host/NumberText.h"
#include "host/TerrainSize.h"
#include "host/World.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

namespace
{

constexpr char NOT_WRITTEN[] = "cannot be written, see the log";
constexpr char NO_TERRAIN[] = "there is no terrain";
constexpr char LEVEL_EXTENSION[] = ".level";

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

bool FinishLevel(SScriptPlaying& playing, bool bDone, const char* pszFailure, std::string& strWhy)
{
    playing.mouse.EndDrag();
    if (!bDone)
    {
        strWhy = pszFailure;
        return false;
    }
    playing.picture.ForgetLevel();
    return true;
}

bool PlayLevel(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
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
    return FinishLevel(playing,
                       playing.host.NewLevel(static_cast<uint32_t>(nCells), size),
                       "cannot be made",
                       strWhy);
}

bool PlayOpen(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const std::string strPath = playing.folder.GetPath(call.GetString(0));
    const bool bLevel = std::filesystem::path(strPath).extension() == LEVEL_EXTENSION;
    // Of a file that is gone the log says where its backup is.
    const bool bGone = !fs::exists(strPath.c_str()) && FindHeightBackup(strPath).empty();
    if (bLevel || bGone)
    {
        strWhy = bLevel ? "a script opens the \".height\" file that a level names"
                        : "there is no such file; names count from the folder of the script";
        return false;
    }
    return FinishLevel(
        playing, playing.host.OpenLevel(strPath.c_str()), "cannot be opened, see the log", strWhy);
}

bool PlayHeights(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    CTerrain* pTerrain = playing.host.GetEngine().GetCWorld().GetCTerrain();
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
    playing.host.GetUndoStack().Clear(); // its records know nothing of this
    return true;
}

bool PlayKeys(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const bool bKnown = playing.mouse.SetKeys(call.GetString(0));
    strWhy = bKnown ? "" : R"(must be "", "ctrl", "alt" or "ctrl+alt")";
    return bKnown;
}

bool PlayPressure(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    SPointForm form = playing.host.GetInput().GetPointForm();
    form.fPower = call.GetFloat(0);
    const bool bShare = form.fPower >= 0.0F && form.fPower <= 1.0F; // false for no number, too
    strWhy = bShare ? "" : "must be 0 to 1";
    if (bShare)
    {
        playing.host.GetInput().SetPointForm(form);
    }
    return bShare;
}

bool PlayTurn(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const SVec4 turn = call.GetVec4(0);
    for (const float fElement : {turn.x, turn.y, turn.z, turn.w})
    {
        if (!(std::fabs(fElement) <= 1.0F)) // no number is refused, too
        {
            strWhy = "elements are -1 to 1";
            return false;
        }
    }
    const SPointForm form = {
        playing.host.GetInput().GetPointForm().fPower, turn.x, turn.y, turn.z, turn.w};
    playing.host.GetInput().SetPointForm(form);
    return true;
}

template <EMouseEvent eEvent, ECursorTarget eTarget>
bool PlayMouse(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    return playing.mouse.Play(eEvent, eTarget, call, strWhy);
}

bool PlayAction(SScriptPlaying& playing, const CScriptCall& call, std::string& /*strWhy*/)
{
    playing.host.GetInput().SendAction(
        playing.view, call.GetInt(0), static_cast<uint32_t>(call.GetInt(1)));
    return true;
}

bool PlayUndo(SScriptPlaying& playing, const CScriptCall& /*call*/, std::string& /*strWhy*/)
{
    playing.mouse.LetGo(); // as the key does
    playing.host.Undo();
    return true;
}

bool PlayRedo(SScriptPlaying& playing, const CScriptCall& /*call*/, std::string& /*strWhy*/)
{
    playing.mouse.LetGo();
    playing.host.Redo();
    return true;
}

bool PlayBeginStep(SScriptPlaying& playing, const CScriptCall& /*call*/, std::string& strWhy)
{
    playing.mouse.LetGo();
    const bool bBegun = playing.host.GetHistory().BeginStep(playing.view);
    strWhy = bBegun ? "" : "a step is open already";
    return bBegun;
}

bool PlayEndStep(SScriptPlaying& playing, const CScriptCall& /*call*/, std::string& /*strWhy*/)
{
    playing.mouse.LetGo();
    playing.host.GetHistory().EndStep(); // nothing when something else has ended it
    return true;
}

bool WriteTerrain(SScriptPlaying& playing,
                  const CScriptCall& call,
                  bool (*pWrite)(Terrain&, const char*),
                  std::string& strWhy)
{
    Terrain* pTerrain = playing.host.GetEngine().GetWorld()->GetTerrain();
    if (pTerrain == nullptr)
    {
        strWhy = NO_TERRAIN;
        return false;
    }
    const bool bWritten = pWrite(*pTerrain, playing.folder.GetPath(call.GetString(0)).c_str());
    strWhy = bWritten ? "" : NOT_WRITTEN;
    return bWritten;
}

bool PlaySave(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const auto save = [](Terrain& terrain, const char* pszPath)
    {
        return terrain.SaveHeightMap(pszPath, nullptr, 0, 0);
    };
    return WriteTerrain(playing, call, save, strWhy);
}

bool PlayExportStl(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const auto exportWhole = [](Terrain& terrain, const char* pszPath)
    {
        return terrain.ExportToSTL(pszPath, nullptr);
    };
    return WriteTerrain(playing, call, exportWhole, strWhy);
}

bool PlayPicture(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const CTerrain* pTerrain = playing.host.GetEngine().GetCWorld().GetCTerrain();
    if (pTerrain == nullptr)
    {
        strWhy = NO_TERRAIN;
        return false;
    }
    const bool bWritten =
        playing.picture.Write(*pTerrain, playing.folder.GetPath(call.GetString(0)));
    strWhy = bWritten ? "" : NOT_WRITTEN;
    return bWritten;
}

bool PlayExpectHeight(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const CTerrain* pTerrain = playing.host.GetEngine().GetCWorld().GetCTerrain();
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

bool PlayExpectUndo(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const size_t nRecords = playing.host.GetUndoStack().GetCount();
    const bool bEqual = call.GetInt(0) >= 0 && static_cast<size_t>(call.GetInt(0)) == nRecords;
    strWhy = bEqual ? "" : Format("the undo stack has %zu records", nRecords);
    return bEqual;
}

constexpr SHostKeyword KEYWORDS[] = {
    {{"level", "iv"}, &PlayLevel},
    {{"open", "s", EKeywordFile::Read}, &PlayOpen},
    {{"heights", "iis"}, &PlayHeights},
    {{"keys", "s"}, &PlayKeys},
    {{"pressure", "f"}, &PlayPressure},
    {{"turn", "w"}, &PlayTurn},
    {{"press", "ff"}, &PlayMouse<EMouseEvent::Press, ECursorTarget::Position>},
    {{"move", "ffi"}, &PlayMouse<EMouseEvent::Move, ECursorTarget::Position>},
    {{"release", "ff"}, &PlayMouse<EMouseEvent::Release, ECursorTarget::Position>},
    {{"press_at", "v"}, &PlayMouse<EMouseEvent::Press, ECursorTarget::Hit>},
    {{"move_at", "vi"}, &PlayMouse<EMouseEvent::Move, ECursorTarget::Hit>},
    {{"release_at", "v"}, &PlayMouse<EMouseEvent::Release, ECursorTarget::Hit>},
    {{"press_miss", ""}, &PlayMouse<EMouseEvent::Press, ECursorTarget::Nothing>},
    {{"move_miss", "i"}, &PlayMouse<EMouseEvent::Move, ECursorTarget::Nothing>},
    {{"release_miss", ""}, &PlayMouse<EMouseEvent::Release, ECursorTarget::Nothing>},
    {{"action", "ii"}, &PlayAction},
    {{"begin_step", ""}, &PlayBeginStep},
    {{"end_step", ""}, &PlayEndStep},
    {{"undo", ""}, &PlayUndo},
    {{"redo", ""}, &PlayRedo},
    {{"save", "s", EKeywordFile::Written}, &PlaySave},
    {{"export_stl", "s", EKeywordFile::Written}, &PlayExportStl},
    {{"picture", "s", EKeywordFile::Written}, &PlayPicture},
    {{"expect_height", "iiff"}, &PlayExpectHeight},
    {{"expect_undo", "i"}, &PlayExpectUndo},
    {{"protected", "iis"}, &PlayProtected},
    {{"protect", "s", EKeywordFile::Read}, &PlayProtect},
    {{"protect_stroke", ""}, &PlayProtectStroke},
    {{"protect_end", ""}, &PlayProtectEnd},
    {{"protect_disc", "fffi"}, &PlayProtectDisc},
    {{"protect_invert", ""}, &PlayProtectInvert},
    {{"protect_clear", ""}, &PlayProtectClear},
    {{"protect_grow", "i"}, &PlayProtectGrow},
    {{"protect_slope", "f"}, &PlayProtectSlope},
    {{"protect_height", "ff"}, &PlayProtectHeight},
    {{"expect_protected", "iii"}, &PlayExpectProtected},
    {{"level_size", "vi"}, &PlayLevelSize},
    {{"level_extend", "iiiii"}, &PlayLevelExtend},
    {{"level_shift", "iii"}, &PlayLevelShift},
    {{"level_turn", "i"}, &PlayLevelTurn},
    {{"level_mirror", "s"}, &PlayLevelMirror},
    {{"level_raise", "f"}, &PlayLevelRaise},
};

} // namespace

std::span<const SHostKeyword> GetHostKeywords()
{
    return KEYWORDS;
}

const SHostKeyword* FindHostKeyword(std::string_view strName)
{
    const auto* pFound =
        std::find_if(std::begin(KEYWORDS),
                     std::end(KEYWORDS),
                     [strName](const SHostKeyword& row) { return strName == row.keyword.pszName; });
    return pFound != std::end(KEYWORDS) ? pFound : nullptr;
}
