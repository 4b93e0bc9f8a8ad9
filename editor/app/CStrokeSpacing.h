#pragma once

class CEditorHost;
class IPluginTools;
struct SInputSettings;

// How far apart the points of a stroke lie. A share of the brush is kept and not the length, since
// the brush may change during the stroke. Owned by the stroke of a view.
class CStrokeSpacing
{
public:
    CStrokeSpacing(CEditorHost& host, IPluginTools* pTools, const SInputSettings& settings);

    // For the stroke that begins. fSpacing: what the tool asks for; 0: each position is a point.
    // fExtent: of the brush; both terrain units. bSculpts: the tool changes heights.
    void Choose(float fSpacing, float fExtent, bool bSculpts);

    float Get() const; // terrain units; 0: each position is a point

private:
    CEditorHost& m_Host;
    IPluginTools* m_Tools; // null for a plug-in without
    const SInputSettings& m_Settings;
    float m_Share = 0.0F;
};
