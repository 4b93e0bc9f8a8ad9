#pragma once

#include "parser/CTCParseNodes.h"

#include <string>

// Turns a parse tree into JSON text: an array of nodes, each with its name, its parameters and,
// when it has one, its block. Made for one tree. Does not recurse: trees may be deep.
class CJsonWriter
{
public:
    // pTree: borrowed for the call; null is an empty array.
    const std::string& Write(const CTCPARSE_KEYWORD* pTree);

private:
    void WriteNode(const CTCPARSE_KEYWORD& node, size_t nDepth);
    void WriteParam(const CTCPARSE_PARAM& param);
    void WriteFloats(std::initializer_list<float> values);
    void WriteFloat(float fValue);
    void WriteString(const char* pszText);
    void StartLine(size_t nDepth);

    std::string m_strText;
};
