#include "tools/height/HgtReader.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr int16_t VOID_SAMPLE = -32768;

// Fills the holes of a square ring by ring: each ring takes the means of what is known around it.
class CVoidFiller
{
public:
    CVoidFiller(std::vector<float>& samples, uint32_t uSide)
        : m_Samples(samples)
        , m_Side(uSide)
        , m_States(samples.size(), KNOWN)
    {
    }

    void Mark(size_t nIndex)
    {
        m_States[nIndex] = VOID;
        ++m_Voids;
    }

    size_t GetVoidCount() const { return m_Voids; }

    void Fill()
    {
        std::vector<size_t> ring;
        for (size_t i = 0; i < m_States.size(); ++i)
        {
            if (m_States[i] == VOID && HasKnownNeighbour(i))
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
    enum EState : uint8_t
    {
        KNOWN,
        VOID,
        QUEUED,
    };

    template <typename TVisit> void VisitNeighbours(size_t nIndex, TVisit visit) const
    {
        const size_t nX = nIndex % m_Side;
        const size_t nZ = nIndex / m_Side;
        for (size_t z = nZ > 0 ? nZ - 1 : 0; z <= std::min<size_t>(nZ + 1, m_Side - 1); ++z)
        {
            for (size_t x = nX > 0 ? nX - 1 : 0; x <= std::min<size_t>(nX + 1, m_Side - 1); ++x)
            {
                visit(z * m_Side + x);
            }
        }
    }

    bool HasKnownNeighbour(size_t nIndex) const
    {
        bool bKnown = false;
        VisitNeighbours(nIndex, [&](size_t n) { bKnown = bKnown || m_States[n] == KNOWN; });
        return bKnown;
    }

    float GetMeanAround(size_t nIndex) const
    {
        float fSum = 0.0F;
        float fCount = 0.0F;
        VisitNeighbours(nIndex,
                        [&](size_t n)
                        {
                            const float fWeight = m_States[n] == KNOWN ? 1.0F : 0.0F;
                            fSum += fWeight * m_Samples[n];
                            fCount += fWeight;
                        });
        return fSum / fCount;
    }

    // Gives the ring inside this one.
    std::vector<size_t> FillRing(const std::vector<size_t>& ring)
    {
        std::vector<float> means(ring.size());
        std::transform(
            ring.begin(), ring.end(), means.begin(), [this](size_t n) { return GetMeanAround(n); });
        std::vector<size_t> next;
        for (size_t i = 0; i < ring.size(); ++i)
        {
            m_Samples[ring[i]] = means[i];
            m_States[ring[i]] = KNOWN;
        }
        for (const size_t nIndex : ring)
        {
            VisitNeighbours(nIndex,
                            [&](size_t n)
                            {
                                if (m_States[n] == VOID)
                                {
                                    m_States[n] = QUEUED;
                                    next.push_back(n);
                                }
                            });
        }
        return next;
    }

    std::vector<float>& m_Samples;
    uint32_t m_Side;
    std::vector<uint8_t> m_States;
    size_t m_Voids = 0;
};

} // namespace

bool DecodeHgt(std::span<const uint8_t> bytes, SSampleGrid& grid, std::string& strFault)
{
    const size_t nCount = bytes.size() / 2;
    const auto nSide = static_cast<size_t>(std::llround(std::sqrt(static_cast<double>(nCount))));
    if (bytes.size() % 2 != 0 || nSide * nSide != nCount || nSide < MIN_SAMPLES ||
        nSide > MAX_SAMPLES)
    {
        strFault = "its " + std::to_string(bytes.size()) + " bytes are no square of 16-bit samples";
        return false;
    }
    SSampleGrid read;
    read.uColumns = static_cast<uint32_t>(nSide);
    read.uRows = read.uColumns;
    read.samples.resize(nCount);
    CVoidFiller filler(read.samples, read.uColumns);
    for (size_t i = 0; i < nCount; ++i)
    {
        const auto iSample =
            static_cast<int16_t>(static_cast<uint16_t>(bytes[2 * i] << 8 | bytes[2 * i + 1]));
        read.samples[i] = iSample;
        if (iSample == VOID_SAMPLE)
        {
            filler.Mark(i);
        }
    }
    if (filler.GetVoidCount() == nCount)
    {
        strFault = "has no sample that is not void";
        return false;
    }
    filler.Fill();
    read.nFilledVoids = filler.GetVoidCount();
    grid = std::move(read);
    return true;
}
