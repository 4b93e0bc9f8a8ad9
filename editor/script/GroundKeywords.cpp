#include "editor/script/GroundKeywords.h"

#include "editor/core/CEditorHost.h"
#include "editor/script/CScriptCall.h"
#include "editor/script/CScriptMouse.h"
#include "editor/script/CScriptPicture.h"
#include "editor/script/HostKeywords.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/GroundChange.h"
#include "engine/world/CEngineHost.h"
#include "parser/DeclarativeText.h"

#include <initializer_list>

namespace
{

bool Do(SScriptPlaying& playing, const SGroundAct& act, std::string& strWhy)
{
    playing.mouse.LetGo(); // as a command does
    const CTerrain* pTerrain = playing.host.GetEngine().GetCWorld().GetCTerrain();
    const char* pszFault = pTerrain == nullptr ? "there is no terrain"
                                               : FindGroundFault(GetGroundMeasures(*pTerrain), act);
    const bool bDone = pszFault == nullptr && playing.host.GetGround().Do(act);
    strWhy = pszFault != nullptr ? pszFault : "cannot be done, see the log";
    if (bDone)
    {
        playing.picture.ForgetLevel(); // the range of heights may be another one
    }
    return bDone;
}

std::string MakeCall(const char* pszName, std::initializer_list<int32_t> values)
{
    std::string strCall = pszName;
    const char* pszBefore = "( ";
    for (const int32_t iValue : values)
    {
        strCall += pszBefore + std::to_string(iValue);
        pszBefore = ", ";
    }
    return strCall + " )\n";
}

} // namespace

bool PlayLevelSize(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    return Do(playing,
              {.eKind = EGround::Size, .size = call.GetVec3(0), .bScale = call.GetInt(1) != 0},
              strWhy);
}

bool PlayLevelExtend(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    return Do(playing,
              {.eKind = EGround::Extend,
               .iWest = call.GetInt(0),
               .iNorth = call.GetInt(1),
               .iEast = call.GetInt(2),
               .iSouth = call.GetInt(3),
               .bAtZero = call.GetInt(4) != 0},
              strWhy);
}

bool PlayLevelShift(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    return Do(playing,
              {.eKind = EGround::Shift,
               .iCellsX = call.GetInt(0),
               .iCellsZ = call.GetInt(1),
               .bWrap = call.GetInt(2) != 0},
              strWhy);
}

bool PlayLevelTurn(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    return Do(playing, {.eKind = EGround::Turn, .iTurns = call.GetInt(0)}, strWhy);
}

bool PlayLevelMirror(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const std::string strAxis = call.GetString(0);
    if (strAxis != "x" && strAxis != "z")
    {
        strWhy = R"(must be "x" or "z")";
        return false;
    }
    return Do(playing, {.eKind = strAxis == "x" ? EGround::MirrorX : EGround::MirrorZ}, strWhy);
}

bool PlayLevelRaise(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    return Do(playing, {.eKind = EGround::Raise, .fBy = call.GetFloat(0)}, strWhy);
}

std::string GetGroundCall(const SGroundAct& act)
{
    switch (act.eKind)
    {
    case EGround::Size:
        return "level_size( [" + MakeExactNumber(act.size.x) + ", " + MakeExactNumber(act.size.y) +
               ", " + MakeExactNumber(act.size.z) + (act.bScale ? "], 1 )\n" : "], 0 )\n");
    case EGround::Extend:
        return MakeCall("level_extend",
                        {act.iWest, act.iNorth, act.iEast, act.iSouth, act.bAtZero ? 1 : 0});
    case EGround::Shift:
        return MakeCall("level_shift", {act.iCellsX, act.iCellsZ, act.bWrap ? 1 : 0});
    case EGround::Turn:
        return MakeCall("level_turn", {act.iTurns});
    case EGround::MirrorX:
        return "level_mirror( \"x\" )\n";
    case EGround::MirrorZ:
        return "level_mirror( \"z\" )\n";
    case EGround::Raise:
        break;
    }
    return "level_raise( " + MakeExactNumber(act.fBy) + " )\n";
}
