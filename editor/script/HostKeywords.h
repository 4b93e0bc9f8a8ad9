#pragma once

#include "host/HostTypes.h"
#include "host/ScriptKeywords.h"

#include <span>
#include <string>
#include <string_view>

class CEditorHost;
class CScriptCall;
class CScriptFolder;
class CScriptMouse;
class CScriptPicture;

// What the keywords of one script work with; all borrowed from its player.
struct SScriptPlaying
{
    CEditorHost& host;
    ViewId view; // events are sent to it
    CScriptFolder& folder;
    CScriptMouse& mouse;
    CScriptPicture& picture;
};

// A keyword that the host plays.
struct SHostKeyword
{
    SScriptKeyword keyword;
    // call: with the arguments that the keyword names. False with one line in strWhy.
    bool (*pPlay)(SScriptPlaying& playing, const CScriptCall& call, std::string& strWhy) = nullptr;
};

// In the order in which scripts declare them.
std::span<const SHostKeyword> GetHostKeywords();
// By its name, letter by letter; null for none of them.
const SHostKeyword* FindHostKeyword(std::string_view strName);
