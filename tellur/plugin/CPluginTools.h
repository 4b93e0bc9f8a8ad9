#pragma once

#include "host/IPluginTools.h"

#include <string>

class CBrushAtHand;
class CBrushContainer;
class CPainting;
class CPanelLink;
class CPluginModes;
class CRTTIField;

// What the keys of an editor do to the tool at hand, and what its windows say about it.
class CPluginTools : public IPluginTools
{
public:
    // All borrowed.
    CPluginTools(CBrushContainer& brushes,
                 CBrushAtHand& brush,
                 const CPluginModes& modes,
                 const CPainting& painting,
                 CPanelLink& panel);

    std::vector<SToolOffer> GetTools() override;
    bool IsTerraforming() override;
    bool IsPainting() override;
    std::string GetFunctionName() override;
    std::string GetToolName() override;
    float GetBrushExtent() override;
    bool IsMaskActing() override;
    bool HeedsMinMax() override;
    bool TakeTool(const char* pszFunction) override;
    float GetBrushValue(EBrushValue eValue) override;
    float SetBrushValue(EBrushValue eValue, float fValue) override;
    bool InvertTool(float& fHeight) override;
    bool SetToolHeight(float fHeight) override;
    std::string GetMaskPath() override;
    bool IsMaskEnabled() override;
    void EnableMask(bool bEnable) override;
    bool ChooseMask() override;
    bool GetToolSizes(const char* pszFunction, SToolSizes& sizes) override;
    bool SetToolSizes(const char* pszFunction, const SToolSizes& sizes) override;

private:
    CRTTIField* FindHeightFieldOf(const char* pszFunction) const;
    void ShowTool(bool bExtentOnly); // its values have changed

    CBrushContainer& m_Brushes;
    CBrushAtHand& m_Brush;
    const CPluginModes& m_Modes;
    const CPainting& m_Painting;
    CPanelLink& m_Panel;
};
