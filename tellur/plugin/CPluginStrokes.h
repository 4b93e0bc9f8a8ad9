#pragma once

#include "host/IPluginStrokes.h"

#include <utility>

class CBrushAtHand;
class CPluginTools;
class CTerraformingState;

// What a view asks to lay the points of a stroke, and what comes of them: the counts of the drag
// and the outcome of its latest point, which the functions fill through the context.
class CPluginStrokes : public IPluginStrokes
{
public:
    // All borrowed.
    CPluginStrokes(CTerraformingState& terraforming, CBrushAtHand& brush, CPluginTools& tools);

    SDragStatistics& GetStatistics() { return m_DragStatistics; }

    SPointOutcome& GetOutcome() { return m_PointOutcome; }

    const SPointForm& GetForm() const { return m_PointForm; }

    // IPluginStrokes
    float GetStrokeSpacing() override;
    bool HasFreePoints() override;
    const float* GetPressTile(uint32_t uTileX, uint32_t uTileZ) override;

    SPointOutcome TakePointOutcome() override { return std::exchange(m_PointOutcome, {}); }

    SDragStatistics TakeDragStatistics() override { return std::exchange(m_DragStatistics, {}); }

    void SetPointForm(const SPointForm& form) override { m_PointForm = form; }

    bool BeginSmoothing() override;
    void EndSmoothing() override;
    bool DropDrag() override;

private:
    CTerraformingState& m_Terraforming;
    CBrushAtHand& m_Brush;
    CPluginTools& m_Tools;
    SDragStatistics m_DragStatistics;
    SPointOutcome m_PointOutcome;
    SPointForm m_PointForm;
};
