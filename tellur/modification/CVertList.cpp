#include "tellur/modification/CVertList.h"

#include <algorithm>
#include <cstring>

void CVertList::SetSteps(float fStepX, float fStepZ)
{
    m_StepX = fStepX;
    m_StepZ = fStepZ;
}

void CVertList::Clear()
{
    m_Count = 0;
    m_Heights.Clear();
    m_Weights.Clear();
    m_Runs.clear();
}

bool CVertList::Reserve(size_t nVerts)
{
    return m_Heights.Reserve(nVerts) && m_Weights.Reserve(nVerts);
}

bool CVertList::AppendRun(int ixFirst, int iz, const float* pHeights, size_t nCount)
{
    if (nCount == 0)
    {
        return true;
    }
    const size_t nNeeded = m_Count + nCount;
    const size_t nRoom = m_Weights.GetCapacity(); // the heights have no less
    // Twice the room spares most copies; where there is no memory for that, what is needed may do.
    if (nNeeded > nRoom && !Reserve(std::max(nNeeded, nRoom * 2)) && !Reserve(nNeeded))
    {
        return false;
    }
    m_Runs.push_back({iz, ixFirst, m_Count, nCount});
    m_Heights.Resize(nNeeded);
    m_Weights.Resize(nNeeded);
    if (pHeights != nullptr)
    {
        std::memcpy(m_Heights.Get() + m_Count, pHeights, nCount * sizeof(float));
    }
    else
    {
        std::fill_n(m_Heights.Get() + m_Count, nCount, 0.0F);
    }
    std::fill_n(m_Weights.Get() + m_Count, nCount, 0.0F);
    m_Count = nNeeded;
    return true;
}

SVert CVertList::GetVert(size_t nIndex) const
{
    const auto run = std::upper_bound(m_Runs.begin(),
                                      m_Runs.end(),
                                      nIndex,
                                      [](size_t n, const SVertRun& r) { return n < r.nFirst; }) -
                     1;
    const int ix = run->ixFirst + static_cast<int>(nIndex - run->nFirst);
    return {static_cast<float>(ix) * m_StepX,
            GetHeights()[nIndex],
            static_cast<float>(run->iz) * m_StepZ,
            ix,
            run->iz,
            GetWeights()[nIndex]};
}
