#pragma once

#include "engine/terrain/SGeoTags.h"
#include "host/HostTypes.h"
#include "parser/CTCParseText.h"

#include <cstdint>
#include <string>
#include <vector>

// Of the picture of what a level protects, behind the level's name.
constexpr char PROTECTION_EXTENSION[] = ".protection.png";

// What a level file says. The height map is the truth about cells and size; the file repeats them
// for people and for programs that do not read heights.
struct SLevelText
{
    std::string strHeightMap;  // full path; in the file relative to it where it is below its folder
    std::string strBitmap;     // terrain types; empty for none
    std::string strMaterial;   // empty for none
    std::string strProtection; // a picture, full path as strHeightMap; empty: nothing is protected
    bool bUnreadProtection = false; // what the file says of it stays: it could not be used
    uint32_t uCellsX = 0;
    uint32_t uCellsZ = 0;
    SVec3 size;          // terrain units
    SGeoTags geo;        // of the vertices
    std::string strPath; // of the level file itself, full; not written

    // The whole file as it is written to strPath: declarations, then the calls. kept: the file that
    // was read, whose other lines stay; one that was not read gives a new file.
    std::string Write(const CTCParseText& kept = {}) const;
    // Fills this from the calls of a file at strPath. False when it names no height map.
    bool Read(const CTCPARSE_KEYWORD* pFirst);

private:
    std::vector<CTCParseText::SCall> GetCalls(const CTCParseText& kept) const;
    std::string GetHeightMapName(const CTCParseText& kept) const;
    std::string GetProtectionName(const CTCParseText& kept) const;
};

// As the document keeps paths: absolute and normal, with the spelling of the file that is there.
std::string GetFullPath(const char* pszPath);

// Where the files of a level lie that gets a name; full paths.
struct SLevelTargets
{
    std::string strPath;
    std::string strHeightPath;
    std::string strProtection;
};

SLevelTargets GetLevelTargets(const char* pszPath);
