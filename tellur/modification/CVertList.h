#pragma once

#include "tellur/modification/CPlainArray.h"
#include "tellur/modification/SVert.h"

#include <cstddef>
#include <vector>

// Vertices of one grid row that follow each other without a gap.
struct SVertRun
{
    int iz = 0;        // grid row
    int ixFirst = 0;   // grid column of the first vertex
    size_t nFirst = 0; // its place in the list
    size_t nCount = 0;
};

// A list of grid vertices in creation order: rows of increasing iz, within a row increasing ix.
// Heights and weights are two plain arrays in list order, because almost every loop of the tool
// needs nothing else; positions follow from the runs. Clearing keeps the memory, so a list that is
// filled once per mouse move allocates only when the footprint grows.
class CVertList
{
public:
    // fStepX, fStepZ: distance of two grid lines, terrain units.
    void SetSteps(float fStepX, float fStepZ);
    void Clear();
    bool Reserve(size_t nVerts); // false, and nothing happens, when there is no memory
    // Appends nCount vertices of row iz from column ixFirst on; heights are copied from pHeights
    // (null: 0), weights are 0. False as for Reserve.
    bool AppendRun(int ixFirst, int iz, const float* pHeights, size_t nCount);

    size_t GetCount() const { return m_Count; }

    bool IsEmpty() const { return m_Count == 0; }

    float* GetHeights() { return m_Heights.Get(); }

    const float* GetHeights() const { return m_Heights.Get(); }

    float* GetWeights() { return m_Weights.Get(); }

    const float* GetWeights() const { return m_Weights.Get(); }

    const std::vector<SVertRun>& GetRuns() const { return m_Runs; }

    float GetStepX() const { return m_StepX; }

    float GetStepZ() const { return m_StepZ; }

    // The vertex at a place of the list as one record. For single look-ups, not for loops.
    SVert GetVert(size_t nIndex) const;

private:
    CPlainArray<float> m_Heights; // m_Count of each
    CPlainArray<float> m_Weights;
    std::vector<SVertRun> m_Runs;
    size_t m_Count = 0;
    float m_StepX = 1.0F;
    float m_StepZ = 1.0F;
};
