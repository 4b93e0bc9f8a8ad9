#pragma once

#include "engine/elevation/SExportPlan.h"
#include "engine/elevation/SSampleView.h"
#include "host/Progress.h"

#include <vector>

// Heights as the samples of a file, a row at a time. Belongs to one export; the heights and the
// plan are borrowed for its life.
class CExportRows
{
public:
    CExportRows(const SSampleView& heights, const SExportPlan& plan);

    uint32_t GetColumns() const { return m_Heights.uColumns; }

    uint32_t GetRows() const { return m_Heights.uRows; }

    // Gives the samples of a row as they go into the file, whole numbers where that has integers,
    // valid until the next call. Rows are asked for from the first to the last, because that is
    // reported as progress. Null when the user cancelled.
    const float* GetRow(uint32_t uRow);

    // Counts what all rows lose, into the plan's numbers.
    static void CountLosses(const SSampleView& heights, SExportPlan& plan);

private:
    SSampleView m_Heights;
    const SExportPlan& m_Plan;
    std::vector<float> m_Row;
    CProgressSteps m_Progress;
};
