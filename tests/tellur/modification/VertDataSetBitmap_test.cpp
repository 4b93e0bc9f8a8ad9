#include "tests/tellur/modification/DragParts.h"

namespace
{

using CVertDataSetShapes = CDragTest;

// The weight of one vertex, step by step as the brush shape is defined.
float GetPlainWeight(const SVec3& vert,
                     const SVec3& center,
                     float fExtent,
                     const std::vector<uint8_t>& pixels,
                     int iSide,
                     float fPower,
                     float fHardness)
{
    struct SPair
    {
        int i0 = 0;
        int i1 = 0;
        float fWeight0 = 0.0F;
    };

    const auto getPair = [fExtent](float fOffset, int iSize)
    {
        const float fPixels = static_cast<float>(iSize) * fOffset * (1.0F / fExtent);
        SPair pair;
        if (fOffset > 0.0F)
        {
            const float fWhole = std::trunc(fPixels);
            pair.i0 = iSize / 2 + static_cast<int>(fWhole);
            pair.i1 = pair.i0 + 1;
            pair.fWeight0 = 1.0F - (fPixels - fWhole);
        }
        else
        {
            const float fWhole = std::trunc(std::fabs(fPixels));
            pair.i0 = iSize / 2 - static_cast<int>(fWhole) - 1;
            pair.i1 = iSize / 2 - static_cast<int>(fWhole);
            pair.fWeight0 = std::fabs(fPixels) - fWhole;
        }
        pair.i0 = std::min(std::max(pair.i0, 0), iSize - 1);
        pair.i1 = std::min(std::max(pair.i1, 0), iSize - 1);
        return pair;
    };
    const SPair x = getPair(vert.x - center.x, iSide);
    const SPair z = getPair(vert.z - center.z, iSide);
    const auto getPixel = [&](int iColumn, int iRow)
    {
        return static_cast<float>(pixels[static_cast<size_t>(iRow * iSide + iColumn)]);
    };
    float b = 0.0F;
    b += getPixel(x.i0, z.i0) * 0.003921569F * x.fWeight0 * z.fWeight0;
    b += getPixel(x.i1, z.i0) * 0.003921569F * (1.0F - x.fWeight0) * z.fWeight0;
    b += getPixel(x.i0, z.i1) * 0.003921569F * x.fWeight0 * (1.0F - z.fWeight0);
    b += getPixel(x.i1, z.i1) * 0.003921569F * (1.0F - x.fWeight0) * (1.0F - z.fWeight0);
    if (std::fabs(b) >= 0.0001F)
    {
        b = std::min(std::max(b + fHardness, 0.0F), 1.0F);
    }
    return fPower * b;
}

} // namespace

TEST_F(CVertDataSetShapes, WeightsFollowTheShapeVertexByVertex)
{
    CNumbers numbers(7);
    constexpr int SIDES[] = {1, 2, 3, 8, 64, 65, 7, 9};
    for (int iRound = 0; iRound < 240; ++iRound)
    {
        SCOPED_TRACE(iRound);
        const int iSide = SIDES[iRound % 8];
        std::vector<uint8_t> pixels(static_cast<size_t>(iSide * iSide));
        for (uint8_t& pixel : pixels)
        {
            const int iKind = numbers.Int(0, 3); // many black and white ones
            pixel = static_cast<uint8_t>(iKind == 0 ? 0 : iKind == 1 ? 255 : numbers.Int(0, 255));
        }
        const auto pBitmap = MakeShape(iSide, pixels);
        CTerrain terrain =
            MakeTerrain(17, 11, {numbers.Float(50, 300), 500, numbers.Float(50, 300)});
        std::vector<float> heights(18 * 12);
        for (float& fHeight : heights)
        {
            fHeight = numbers.Int(0, 9) == 0 ? -1.0F : 1.0F;
        }
        CVertDataSet set;
        const SVec3 size = terrain.GetSize();
        ASSERT_TRUE(set.Initialize(&terrain, {{0, 0, 0}, {size.x, 0, size.z}}));
        set.SetData(heights.data(), 18, 12);

        // Images smaller and larger than the footprint, mirrored ones, centres on a vertex and
        // far off it.
        const float fExtent = numbers.Float(1.0F, 400.0F) * (iRound % 7 == 0 ? -1.0F : 1.0F);
        const float fPower = numbers.Float(-2.0F, 2.0F);
        const float fHardness = iRound % 3 == 0 ? 0.0F : numbers.Float(-1.5F, 1.5F);
        SVec3 center = {numbers.Float(-50.0F, 350.0F), 9.0F, numbers.Float(-50.0F, 350.0F)};
        if (iRound % 4 == 0)
        {
            const SVert vert = set.GetVerts().GetVert(static_cast<size_t>(numbers.Int(0, 100)));
            center = {vert.x, vert.y, vert.z};
        }
        set.GetDataFromBitmap(center, fExtent, pBitmap.get(), fPower, fHardness);
        for (size_t i = 0; i < set.GetVerts().GetCount(); ++i)
        {
            const SVert vert = set.GetVerts().GetVert(i);
            const float fPlain = GetPlainWeight(
                {vert.x, vert.y, vert.z}, center, fExtent, pixels, iSide, fPower, fHardness);
            ASSERT_NEAR(vert.weight, fPlain, 5.0e-6F) << vert.ix << "," << vert.iz;
        }
    }
}
