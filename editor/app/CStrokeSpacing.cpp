#include "editor/app/CStrokeSpacing.h"

#include "editor/app/SInputSettings.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/Words.h"
#include "editor/view/DenseStrokes.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginTools.h"
#include "host/Notice.h"

namespace
{

constexpr float PERCENT = 0.01F;

} // namespace

CStrokeSpacing::CStrokeSpacing(CEditorHost& host,
                               IPluginTools* pTools,
                               const SInputSettings& settings)
    : m_Host(host)
    , m_Tools(pTools)
    , m_Settings(settings)
{
}

void CStrokeSpacing::Choose(float fSpacing, float fExtent, bool bSculpts)
{
    const bool bPath = fSpacing > 0.0F && fExtent > 0.0F;
    m_Share = bPath ? fSpacing / fExtent : 0.0F;
    const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
    if (bPath && m_Settings.iSpacingPercent > 0)
    {
        m_Share = static_cast<float>(m_Settings.iSpacingPercent) * PERCENT;
    }
    else if (bSculpts && m_Settings.bSampleStrokes && pTerrain != nullptr)
    {
        const SHeightView view = pTerrain->GetView();
        const double dBrush = fExtent;
        const float fLeast = GetLeastShare(dBrush / view.fStepX * dBrush / view.fStepZ);
        if (fLeast > m_Share)
        {
            m_Share = fLeast;
            Notice(Words("Large brush: the points of the stroke lie farther apart"));
        }
    }
}

float CStrokeSpacing::Get() const
{
    return m_Tools != nullptr ? m_Share * m_Tools->GetBrushExtent() : 0.0F;
}
