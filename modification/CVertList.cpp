#include "modification/CVertList.h"

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
    m_Runs.clear();
}

void CVertList::Reserve(size_t nVerts)
{
    if (nVerts > m_Heights.size())
    {
        m_Heights.resize(nVerts);
        m_Weights.resize(nVerts);
    }
}

void CVertList::AppendRun(int ixFirst, int iz, const float* pHeights, size_t nCount)
{
    if (nCount == 0)
    {
        return;
    }
    if (m_Count + nCount > m_Heights.size())
    {
        Reserve(std::max(m_Count + nCount, m_Heights.size() * 2));
    }
    if (pHeights != nullptr)
    {
        std::memcpy(m_Heights.data() + m_Count, pHeights, nCount * sizeof(float));
    }
    else
    {
        std::fill_n(m_Heights.data() + m_Count, nCount, 0.0F);
    }
    std::fill_n(m_Weights.data() + m_Count, nCount, 0.0F);
    m_Runs.push_back({iz, ixFirst, m_Count, nCount});
    m_Count += nCount;
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
            m_Heights[nIndex],
            static_cast<float>(run->iz) * m_StepZ,
            ix,
            run->iz,
            m_Weights[nIndex]};
}
