#include "engine/elevation/VoidFiller.h"

#include <algorithm>
#include <cmath>

namespace
{

// A ring: the indices of voids that have a known neighbour, ascending. The samples themselves say
// what is void, so the largest grid needs no second array.
class CVoidFiller
{
public:
    explicit CVoidFiller(SSampleGrid& grid)
        : m_Samples(grid.samples.data())
        , m_Columns(grid.uColumns)
        , m_Rows(grid.uRows)
    {
    }

    void Fill()
    {
        std::vector<size_t> ring;
        for (size_t i = 0; i < m_Columns * m_Rows; ++i)
        {
            if (IsVoid(i) && HasKnownNeighbour(i))
            {
                ring.push_back(i);
            }
        }
        while (!ring.empty())
        {
            ring = FillRing(ring);
        }
    }

private:
    bool IsVoid(size_t nIndex) const { return std::isnan(m_Samples[nIndex]); }

    template <typename TVisit> void VisitNeighbours(size_t nIndex, TVisit visit) const
    {
        const size_t nX = nIndex % m_Columns;
        const size_t nZ = nIndex / m_Columns;
        for (size_t z = nZ > 0 ? nZ - 1 : 0; z <= std::min(nZ + 1, m_Rows - 1); ++z)
        {
            for (size_t x = nX > 0 ? nX - 1 : 0; x <= std::min(nX + 1, m_Columns - 1); ++x)
            {
                visit(z * m_Columns + x);
            }
        }
    }

    bool HasKnownNeighbour(size_t nIndex) const
    {
        bool bKnown = false;
        VisitNeighbours(nIndex, [&](size_t n) { bKnown = bKnown || !IsVoid(n); });
        return bKnown;
    }

    // In double: samples near the largest float must not add up to infinity.
    float GetMeanAround(size_t nIndex) const
    {
        double dSum = 0.0;
        double dCount = 0.0;
        VisitNeighbours(nIndex,
                        [&](size_t n)
                        {
                            if (!IsVoid(n))
                            {
                                dSum += static_cast<double>(m_Samples[n]);
                                dCount += 1.0;
                            }
                        });
        return static_cast<float>(dSum / dCount);
    }

    // Gives the ring inside this one.
    std::vector<size_t> FillRing(const std::vector<size_t>& ring)
    {
        // All means are taken before the first one is stored: no void of a ring counts for another,
        // and the result does not depend on the order.
        std::vector<float> means(ring.size());
        std::transform(
            ring.begin(), ring.end(), means.begin(), [this](size_t n) { return GetMeanAround(n); });
        for (size_t i = 0; i < ring.size(); ++i)
        {
            m_Samples[ring[i]] = means[i];
        }
        std::vector<size_t> next;
        for (const size_t nIndex : ring)
        {
            VisitNeighbours(nIndex,
                            [&](size_t n)
                            {
                                if (IsVoid(n))
                                {
                                    next.push_back(n);
                                }
                            });
        }
        // A void with several neighbours in the ring was found several times.
        std::sort(next.begin(), next.end());
        next.erase(std::unique(next.begin(), next.end()), next.end());
        return next;
    }

    float* m_Samples;
    size_t m_Columns;
    size_t m_Rows;
};

} // namespace

size_t FillVoids(SSampleGrid& grid)
{
    const auto nVoids = static_cast<size_t>(std::count_if(
        grid.samples.begin(), grid.samples.end(), [](float f) { return std::isnan(f); }));
    if (nVoids > 0 && nVoids < grid.samples.size())
    {
        CVoidFiller(grid).Fill();
    }
    return nVoids;
}
