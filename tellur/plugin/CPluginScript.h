#pragma once

#include "host/IPluginScript.h"

#include <string>
#include <vector>

class CBrushAtHand;
class CBrushChanges;
class CBrushContainer;
class CPainting;
class CPanelLink;
class CPluginModes;

// What the plug-in's keywords work with; all borrowed.
struct SScriptParts
{
    CBrushContainer& brushes;
    CBrushChanges& changes;
    CBrushAtHand& brush;
    const CPluginModes& modes;
    CPainting& painting;
    CPanelLink& panel;
};

// The plug-in's keywords in scripts, and its state written in them. What paints is in
// PaintKeywords.h.
class CPluginScript : public IPluginScript
{
public:
    explicit CPluginScript(const SScriptParts& parts)
        : m_Parts(parts)
    {
    }

    std::vector<SScriptKeyword> GetKeywords() override;
    std::vector<SScriptKeyword> GetBlockKeywords() override;
    EScriptResult Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy) override;
    bool WriteState(fs::ifile& file) override;

private:
    SScriptParts m_Parts;
};
