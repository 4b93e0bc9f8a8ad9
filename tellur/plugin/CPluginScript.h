#pragma once

#include "host/IPluginScript.h"

#include <string>
#include <vector>

class CBrushAtHand;
class CBrushContainer;
class CPainting;
class CPanelLink;
class CPluginModes;

// The plug-in's keywords in scripts, and its state written in them. What paints is in
// PaintKeywords.h.
class CPluginScript : public IPluginScript
{
public:
    // All borrowed.
    CPluginScript(CBrushContainer& brushes,
                  CBrushAtHand& brush,
                  const CPluginModes& modes,
                  CPainting& painting,
                  CPanelLink& panel);

    std::vector<SScriptKeyword> GetKeywords() override;
    std::vector<SScriptKeyword> GetBlockKeywords() override;
    EScriptResult Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy) override;
    bool WriteState(fs::ifile& file) override;

private:
    struct SRow;

    bool PlayBrush(const CTCPARSE_KEYWORD& keyword, std::string& strWhy);
    bool PlayBrushFile(const CTCPARSE_KEYWORD& keyword, std::string& strWhy);
    bool PlayUseBrush(const CTCPARSE_KEYWORD& keyword, std::string& strWhy);
    bool PlaySaveBrushes(const CTCPARSE_KEYWORD& keyword, std::string& strWhy);
    bool PlayMode(const CTCPARSE_KEYWORD& keyword, std::string& strWhy);
    bool PlayAutoNormals(const CTCPARSE_KEYWORD& keyword, std::string& strWhy);
    bool PlayResolution(const CTCPARSE_KEYWORD& keyword, std::string& strWhy);

    static const SRow ROWS[7];

    CBrushContainer& m_Brushes;
    CBrushAtHand& m_Brush;
    const CPluginModes& m_Modes;
    CPainting& m_Painting;
    CPanelLink& m_Panel;
};
