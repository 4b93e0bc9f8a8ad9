#include "editor/core/CTerrainStep.h"

#include "editor/core/CLevelHeights.h"

#include <utility>

CTerrainStep::CTerrainStep(CLevelHeights& heights)
    : m_Heights(heights)
{
}

void CTerrainStep::Hold(SHeightField&& before, std::unique_ptr<IGroundCompanion> pCompanion)
{
    m_Companion = std::move(pCompanion);
    m_Other.Put(std::move(before), m_Heights.GetScratch());
}

bool CTerrainStep::Prepare()
{
    // What may fail, memory and reading, is done here, before anything of the level has changed.
    return m_Ready.pHeights != nullptr || (m_Heights.CanExchange() && m_Other.Take(m_Ready));
}

void CTerrainStep::Exchange()
{
    if (Prepare())
    {
        if (m_Companion != nullptr)
        {
            m_Companion->Swap();
        }
        m_Other.Put(m_Heights.Exchange(std::move(m_Ready)), m_Heights.GetScratch());
        m_Heights.TellExchanged();
    }
}
