#include "editor/script/ProtectionKeywords.h"

#include "editor/core/CEditorHost.h"
#include "editor/core/SProtectAct.h"
#include "editor/script/CScriptCall.h"
#include "editor/script/CScriptFolder.h"
#include "editor/script/CScriptMouse.h"
#include "editor/script/HostKeywords.h"
#include "editor/script/ProtectionText.h"
#include "engine/terrain/CTerrain.h"
#include "engine/terrain/ProtectedAreas.h"
#include "engine/world/CEngineHost.h"

#include <cmath>

namespace
{

constexpr float RIGHT_ANGLE = 90.0F;

CTerrain* FindTerrain(SScriptPlaying& playing, std::string& strWhy)
{
    CTerrain* pTerrain = playing.host.GetEngine().GetCWorld().GetCTerrain();
    strWhy = pTerrain != nullptr ? "" : "there is no terrain";
    return pTerrain;
}

bool Do(SScriptPlaying& playing, const SProtectAct& act, std::string& strWhy)
{
    playing.mouse.LetGo(); // as a command does
    const bool bDone = playing.host.GetProtection().Do(act);
    strWhy = bDone ? "" : "cannot be done, see the log";
    return bDone;
}

} // namespace

bool PlayProtected(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    CTerrain* pTerrain = FindTerrain(playing, strWhy);
    if (pTerrain == nullptr)
    {
        return false;
    }
    playing.mouse.LetGo(); // the stroke's record is of the protection before
    playing.host.GetProtection().End();
    if (!ReadSquareText(
            call.GetString(2), call.GetInt(0), call.GetInt(1), pTerrain->GetProtection()))
    {
        strWhy = "the terrain has no such square, or the text is none";
        return false;
    }
    playing.host.GetUndoStack().Clear(); // its records were made under another protection
    return true;
}

bool PlayProtect(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    return Do(playing,
              {.eKind = EProtect::Picture, .strPath = playing.folder.GetPath(call.GetString(0))},
              strWhy);
}

bool PlayProtectStroke(SScriptPlaying& playing, const CScriptCall& /*call*/, std::string& strWhy)
{
    playing.mouse.LetGo();
    playing.host.GetProtection().Begin();
    return FindTerrain(playing, strWhy) != nullptr;
}

bool PlayProtectEnd(SScriptPlaying& playing, const CScriptCall& /*call*/, std::string& /*strWhy*/)
{
    playing.host.GetProtection().End();
    return true;
}

bool PlayProtectDisc(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const float aValues[] = {call.GetFloat(0), call.GetFloat(1), call.GetFloat(2)};
    if (!std::isfinite(aValues[0]) || !std::isfinite(aValues[1]) || !(aValues[2] >= 0.0F))
    {
        strWhy = "a position is not finite, or the radius is below 0";
        return false;
    }
    return Do(
        playing, {EProtect::Disc, aValues[0], aValues[1], aValues[2], call.GetInt(3) != 0}, strWhy);
}

bool PlayProtectInvert(SScriptPlaying& playing, const CScriptCall& /*call*/, std::string& strWhy)
{
    return Do(playing, {EProtect::Invert}, strWhy);
}

bool PlayProtectClear(SScriptPlaying& playing, const CScriptCall& /*call*/, std::string& strWhy)
{
    return Do(playing, {EProtect::Clear}, strWhy);
}

bool PlayProtectGrow(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const int32_t nVertices = call.GetInt(0);
    if (nVertices < 0 || nVertices > static_cast<int32_t>(MOST_GROWTH))
    {
        strWhy = "a protection grows by 0 to 64 vertices";
        return false;
    }
    return Do(playing, {EProtect::Grow, static_cast<float>(nVertices)}, strWhy);
}

bool PlayProtectSlope(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const float fDegrees = call.GetFloat(0);
    if (!(fDegrees >= 0.0F && fDegrees <= RIGHT_ANGLE))
    {
        strWhy = "a slope has 0 to 90 degrees";
        return false;
    }
    return Do(playing, {EProtect::Slope, fDegrees}, strWhy);
}

bool PlayProtectHeight(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    return Do(playing, {EProtect::Heights, call.GetFloat(0), call.GetFloat(1)}, strWhy);
}

bool PlayExpectProtected(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy)
{
    const CTerrain* pTerrain = FindTerrain(playing, strWhy);
    if (pTerrain == nullptr)
    {
        return false;
    }
    const auto uColumn = static_cast<uint32_t>(call.GetInt(0));
    const auto uRow = static_cast<uint32_t>(call.GetInt(1));
    if (uColumn >= pTerrain->GetVerticesX() || uRow >= pTerrain->GetVerticesZ())
    {
        strWhy = "the terrain has no such vertex";
        return false;
    }
    const bool bProtected = pTerrain->GetProtection().IsProtected(uColumn, uRow);
    const bool bAsExpected = bProtected == (call.GetInt(2) != 0);
    strWhy = bAsExpected  ? ""
             : bProtected ? "the vertex is protected"
                          : "the vertex is not protected";
    return bAsExpected;
}
