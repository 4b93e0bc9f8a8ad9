#pragma once

#include "parser/CTCParseNodes.h"

#include <string>

// A parse tree as JSON text: an array of nodes, each with its name, its parameters and, when it has
// one, its block. pTree: borrowed for the call; null is an empty array.
std::string MakeTreeJson(const CTCPARSE_KEYWORD* pTree);
