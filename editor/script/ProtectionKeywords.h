#pragma once

#include <string>

class CScriptCall;
struct SScriptPlaying;

// What the keywords play that say which vertices strokes leave alone; as SHostKeyword::pPlay.
bool PlayProtected(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayProtect(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayProtectStroke(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayProtectEnd(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayProtectDisc(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayProtectInvert(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayProtectClear(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayProtectGrow(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayProtectSlope(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayProtectHeight(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
bool PlayExpectProtected(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy);
