#include "benchmarks/PointYardstick.h"

#include "host/Image.h"

#include <algorithm>
#include <cmath>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace
{

constexpr float MOST = 2000.0F;
constexpr float AMOUNT = 0.25F;

struct SRow
{
    const float* pImage; // blended, 0 to 1
    const int32_t* pColumns;
    const float* pWeights;
    const float* pSource;
    float* pDest;
    float* pTerrain;
    int iCount;
};

void RunRest(const SRow& row, int i)
{
    for (; i < row.iCount; ++i)
    {
        const float fLeft = row.pImage[row.pColumns[i]];
        const float fRight = row.pImage[row.pColumns[i] + 1];
        const float fNew = row.pSource[i] + (fLeft + (fRight - fLeft) * row.pWeights[i]) * AMOUNT;
        const bool bWrite =
            std::fabs(fNew - row.pSource[i]) >= std::fabs(row.pDest[i] - row.pSource[i]);
        const float fHeight = bWrite ? std::clamp(fNew, 0.0F, MOST) : row.pDest[i];
        row.pDest[i] = fHeight;
        row.pTerrain[i] = fHeight;
    }
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void RunRowAvx2(const SRow& row)
{
    const __m256 sign = _mm256_set1_ps(-0.0F);
    int i = 0;
    for (; i + 8 <= row.iCount; i += 8)
    {
        const __m256i columns =
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(row.pColumns + i));
        const int iBase = row.pColumns[i];
        __m256 left;
        __m256 right;
        if (row.pColumns[i + 7] + 1 - iBase < 8) // all pixels in one load
        {
            const __m256 pixels = _mm256_loadu_ps(row.pImage + iBase);
            const __m256i first = _mm256_sub_epi32(columns, _mm256_set1_epi32(iBase));
            left = _mm256_permutevar8x32_ps(pixels, first);
            right = _mm256_permutevar8x32_ps(pixels, _mm256_add_epi32(first, _mm256_set1_epi32(1)));
        }
        else
        {
            left = _mm256_i32gather_ps(row.pImage, columns, 4);
            right = _mm256_i32gather_ps(row.pImage + 1, columns, 4);
        }
        const __m256 weight = _mm256_loadu_ps(row.pWeights + i);
        const __m256 shape = _mm256_add_ps(left, _mm256_mul_ps(_mm256_sub_ps(right, left), weight));
        const __m256 source = _mm256_loadu_ps(row.pSource + i);
        const __m256 dest = _mm256_loadu_ps(row.pDest + i);
        const __m256 raised = _mm256_add_ps(source, _mm256_mul_ps(shape, _mm256_set1_ps(AMOUNT)));
        const __m256 reach = _mm256_andnot_ps(sign, _mm256_sub_ps(raised, source));
        const __m256 reached = _mm256_andnot_ps(sign, _mm256_sub_ps(dest, source));
        const __m256 clamped =
            _mm256_min_ps(_mm256_max_ps(raised, _mm256_setzero_ps()), _mm256_set1_ps(MOST));
        const __m256 height =
            _mm256_blendv_ps(dest, clamped, _mm256_cmp_ps(reach, reached, _CMP_GE_OQ));
        _mm256_storeu_ps(row.pDest + i, height);
        _mm256_storeu_ps(row.pTerrain + i, height);
    }
    RunRest(row, i);
}
#endif

void RunRow(const SRow& row)
{
#if defined(__x86_64__)
    static const bool s_bAvx2 = __builtin_cpu_supports("avx2");
    if (s_bAvx2)
    {
        RunRowAvx2(row);
        return;
    }
#endif
    RunRest(row, 0);
}

} // namespace

CPointYardstick::CPointYardstick(uint32_t uSide, const float* pHeights)
    : m_Side(uSide)
    , m_Source(pHeights, pHeights + size_t{uSide} * uSide)
    , m_Dest(m_Source)
    , m_Terrain(m_Source)
{
}

void CPointYardstick::Run(int iFirstX, int iFirstZ, int iCount, const IImage& image)
{
    const auto iPixels = static_cast<int>(image.GetWidth());
    const uint8_t* pPixels = image.GetRawData();
    const float fScale = static_cast<float>(iPixels - 1) / static_cast<float>(iCount);
    m_Row.resize(static_cast<size_t>(iPixels) + 8);
    m_Columns.resize(static_cast<size_t>(iCount));
    m_Weights.resize(static_cast<size_t>(iCount));
    for (int i = 0; i < iCount; ++i)
    {
        const float fAt = static_cast<float>(i) * fScale;
        m_Columns[i] = static_cast<int32_t>(fAt);
        m_Weights[i] = fAt - static_cast<float>(m_Columns[i]);
    }
    for (int z = 0; z < iCount; ++z)
    {
        const float fAt = static_cast<float>(z) * fScale;
        const auto iRow = static_cast<int>(fAt);
        const float fLower = (fAt - static_cast<float>(iRow)) * (1.0F / 255.0F);
        const float fUpper = 1.0F / 255.0F - fLower;
        const uint8_t* pUpper = pPixels + static_cast<ptrdiff_t>(iRow) * iPixels;
        for (int i = 0; i < iPixels; ++i)
        {
            m_Row[i] = static_cast<float>(pUpper[i]) * fUpper +
                       static_cast<float>(pUpper[i + iPixels]) * fLower;
        }
        const size_t nPlace = static_cast<size_t>(iFirstZ + z) * m_Side + iFirstX;
        RunRow({m_Row.data(),
                m_Columns.data(),
                m_Weights.data(),
                m_Source.data() + nPlace,
                m_Dest.data() + nPlace,
                m_Terrain.data() + nPlace,
                iCount});
    }
}
