#pragma once

#include <string>

namespace fs
{
class ifile;
}
class CRTTIField;
class CTellurBrush;

// A brush as scripts have it, and what is read off one.

// Of the brush of a tool, which becomes current only where the tool is at hand.
constexpr const char* TOOL_BRUSH_KEYWORD = "tool_brush";

// Appends the brush as a call of the keyword whose numbers read back to the same bits. False on a
// file fault.
bool WriteBrush(fs::ifile& file, const CTellurBrush& brush, const char* pszKeyword = "brush");

// The reflected field "m_Height" of the brush's function; null without a brush (pBrush may be null)
// or such a field.
CRTTIField* FindHeightField(const CTellurBrush* pBrush);

bool HasFunction(const CTellurBrush& brush, const char* pszClassName);

// A function's class name as a person reads it: "SetHeightFunction" is "Set height".
std::string MakeToolName(std::string strClassName);
// The same text for the brush's function; empty without a brush (pBrush may be null) or a function.
std::string GetToolName(const CTellurBrush* pBrush);
