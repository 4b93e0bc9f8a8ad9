#pragma once

#include "engine/terrain/SGeoTags.h"
#include "parser/CTCParseText.h"

#include <vector>

// How a level file keeps where its ground lies on a map: the places of three corners as texts,
// since the syntax's own numbers are too short for them, and what a GeoTIFF says beside.

// The declarations of the calls.
constexpr char MAP_DECLARATIONS[] = "!map_place( s, s, s )\n!map_tags( s, s, s, s, s )\n";

// What the file is to say; nothing of an unknown place, unless kept says one that must go.
std::vector<CTCParseText::SCall> GetMapCalls(const SGeoTags& geo, const CTCParseText& kept);

// Takes over what a call of a level file says; others change nothing. What makes no sense leaves
// the place unknown.
void ReadMapCall(const CTCPARSE_KEYWORD* pKey, SGeoTags& geo);
