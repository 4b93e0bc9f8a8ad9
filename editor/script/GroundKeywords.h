#pragma once

#include <string>

class CScriptCall;
struct SGroundAct;
struct SScriptPlaying;

// What the keywords play that change the ground of a level as a whole; as SHostKeyword::pPlay.
bool PlayLevelSize(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayLevelExtend(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayLevelShift(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayLevelTurn(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayLevelMirror(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayLevelRaise(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);

// The call that does the act, as a line.
std::string GetGroundCall(const SGroundAct& act);
