#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// The keywords of replay scripts, which host and plug-in share out between them. What stands in the
// block of a brush is in BrushBlock.h.

enum class EKeywordPlayer : uint8_t
{
    Host,
    Plugin,
    PluginInWindows, // it shows windows for it, which the host has to have
};

// What the first argument names.
enum class EKeywordFile : uint8_t
{
    None,
    Read,
    Written,
};

struct SScriptKeyword
{
    const char* pszName = "";
    const char* pszTypes = ""; // a letter an argument: i f s, v of three numbers, w of four
    EKeywordPlayer ePlayer = EKeywordPlayer::Host;
    EKeywordFile eFile = EKeywordFile::None;
};

// In the order in which scripts declare them.
inline constexpr SScriptKeyword SCRIPT_KEYWORDS[] = {
    {"level", "iv", EKeywordPlayer::Host},
    {"open", "s", EKeywordPlayer::Host, EKeywordFile::Read},
    {"heights", "iis", EKeywordPlayer::Host},
    {"brush", "", EKeywordPlayer::Plugin},
    {"brush_file", "s", EKeywordPlayer::Plugin, EKeywordFile::Read},
    {"use_brush", "s", EKeywordPlayer::Plugin},
    {"save_brushes", "s", EKeywordPlayer::Plugin, EKeywordFile::Written},
    {"mode", "s", EKeywordPlayer::Plugin},
    {"keys", "s", EKeywordPlayer::Host},
    {"press", "ff", EKeywordPlayer::Host},
    {"move", "ffi", EKeywordPlayer::Host},
    {"release", "ff", EKeywordPlayer::Host},
    {"press_at", "v", EKeywordPlayer::Host},
    {"move_at", "vi", EKeywordPlayer::Host},
    {"release_at", "v", EKeywordPlayer::Host},
    {"press_miss", "", EKeywordPlayer::Host},
    {"move_miss", "i", EKeywordPlayer::Host},
    {"release_miss", "", EKeywordPlayer::Host},
    {"paint_bitmap", "s", EKeywordPlayer::PluginInWindows, EKeywordFile::Read},
    {"paint_restore", "ss", EKeywordPlayer::PluginInWindows},
    {"paint_function", "s", EKeywordPlayer::PluginInWindows},
    {"paint_color", "w", EKeywordPlayer::PluginInWindows},
    {"paint_mask", "i", EKeywordPlayer::PluginInWindows},
    {"paint_brush", "sf", EKeywordPlayer::PluginInWindows, EKeywordFile::Read},
    {"paint_power", "f", EKeywordPlayer::PluginInWindows},
    {"paint_hardness", "f", EKeywordPlayer::PluginInWindows},
    {"paint_texel_mapping", "i", EKeywordPlayer::PluginInWindows},
    {"paint_undo", "", EKeywordPlayer::PluginInWindows},
    {"paint_redo", "", EKeywordPlayer::PluginInWindows},
    {"save_bitmap", "s", EKeywordPlayer::PluginInWindows, EKeywordFile::Written},
    {"action", "ii", EKeywordPlayer::Host},
    {"undo", "", EKeywordPlayer::Host},
    {"redo", "", EKeywordPlayer::Host},
    {"auto_normals", "i", EKeywordPlayer::Plugin},
    {"resolution", "i", EKeywordPlayer::Plugin},
    {"save", "s", EKeywordPlayer::Host, EKeywordFile::Written},
    {"export_stl", "s", EKeywordPlayer::Host, EKeywordFile::Written},
    {"picture", "s", EKeywordPlayer::Host, EKeywordFile::Written},
    {"expect_height", "iiff", EKeywordPlayer::Host},
    {"expect_undo", "i", EKeywordPlayer::Host},
};

// Null for a name that is none of them, letter by letter.
constexpr const SScriptKeyword* FindScriptKeyword(std::string_view strName)
{
    for (const SScriptKeyword& keyword : SCRIPT_KEYWORDS)
    {
        if (keyword.pszName == strName)
        {
            return &keyword;
        }
    }
    return nullptr;
}

// Whether a table of pairs of name and handler has one for each keyword that ePlayer plays, and no
// other.
template <typename THandler, size_t COUNT>
constexpr bool HasEachHandler(const THandler (&handlers)[COUNT], EKeywordPlayer ePlayer)
{
    size_t nKeywords = 0;
    bool bEach = true;
    for (const SScriptKeyword& keyword : SCRIPT_KEYWORDS)
    {
        size_t nHandlers = 0;
        for (const THandler& handler : handlers)
        {
            nHandlers += std::string_view(keyword.pszName) == handler.first ? 1U : 0U;
        }
        const size_t nWanted = keyword.ePlayer == ePlayer ? 1U : 0U;
        nKeywords += nWanted;
        bEach = bEach && nHandlers == nWanted;
    }
    return bEach && nKeywords == COUNT;
}
