// The paint layer: which texels a box reaches, with which weights, and what counts as changed.

#include "engine/paint/CPaintLayer.h"
#include "engine/world/CTexture.h"
#include "engine/world/CWorld.h"
#include "host/ITerrain2DRowFunction.h"
#include "host/Image.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/CLogCatcher.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace
{

// Writes down which texels it is called for and with what.
class CRecordingPaint : public ITerrain2DFunction
{
public:
    struct SCall
    {
        size_t nTexel = 0;
        float fWeight = 0.0F;
        float fStrength = 0.0F;
        uint32_t uExtra = 1;
    };

    const char* GetName() const override { return "Recording"; }

    bool IsUsableFor(bool) const override { return true; }

    bool Apply(uint8_t* pTexel, float fWeight, float fStrength, uint32_t uExtra) override
    {
        calls.push_back({static_cast<size_t>(pTexel - pFirst) / 4, fWeight, fStrength, uExtra});
        ++pTexel[0];
        return bChanges;
    }

    std::vector<size_t> TakeTexels()
    {
        std::vector<size_t> texels;
        for (const SCall& call : calls)
        {
            texels.push_back(call.nTexel);
        }
        calls.clear();
        return texels;
    }

    const uint8_t* pFirst = nullptr;
    bool bChanges = true;
    std::vector<SCall> calls;
};

// The same, called by rows.
class CRecordingRows final : public CRecordingPaint, public ITerrain2DRowFunction
{
public:
    bool ApplyRow(uint8_t* pTexels, const float* pWeights, size_t nCount, float fStrength) override
    {
        rows.push_back(nCount);
        for (size_t i = 0; i < nCount; ++i)
        {
            Apply(pTexels + 4 * i, pWeights[i], fStrength, 0);
        }
        return bChanges;
    }

    std::vector<size_t> rows;
};

class CPaintLayerTest : public testing::Test
{
protected:
    CPaintLayerTest()
    {
        m_World.CreateTerrain(4, 4, {80.0F, 100.0F, -160.0F});
        m_Layer.SetListener([this] { ++m_Told; });
    }

    static std::unique_ptr<IImage> MakeImage(uint32_t uWidth,
                                             uint32_t uHeight,
                                             EImageFormat eFormat,
                                             const std::vector<uint8_t>& bytes = {})
    {
        return std::unique_ptr<IImage>(IL_CreateImageFromBufferFormat(
            uWidth, uHeight, eFormat, bytes.empty() ? nullptr : bytes.data()));
    }

    // A layer that is painting on W x H black texels with a shape of 2 x 2 pixels.
    void Begin(uint32_t uWidth, uint32_t uHeight, const std::vector<uint8_t>& shape)
    {
        const auto pShape = MakeImage(2, 2, EImageFormat::Indexed8, shape);
        const auto pWork = MakeImage(uWidth, uHeight, EImageFormat::Rgba32);
        m_Layer.End();
        m_Layer.Begin(pWork.get(), pShape.get(), 0x1FF);
        ASSERT_NE(m_Layer.GetImage(), nullptr);
        m_Function.pFirst = m_Layer.GetImage()->GetRawData();
    }

    std::vector<size_t> Paint(float fMinX, float fMinZ, float fMaxX, float fMaxZ)
    {
        m_Layer.Paint({{fMinX, 9.0F, fMinZ}, {fMaxX, -9.0F, fMaxZ}}, &m_Function, 0.5F, 0.0F);
        return m_Function.TakeTexels();
    }

    CLogCatcher m_Log;
    CWorld m_World;
    CPaintLayer m_Layer{m_World};
    CRecordingPaint m_Function;
    int m_Told = 0;
};

using Texels = std::vector<size_t>;
const std::vector<uint8_t> WHITE(4, 255);

} // namespace

TEST_F(CPaintLayerTest, TexelsWhoseCentreIsInTheBoxAreVisitedRowByRow)
{
    // Centres are 10, 30, 50, 70 along x and 40, 120 along z.
    ASSERT_NO_FATAL_FAILURE(Begin(4, 2, WHITE));
    EXPECT_EQ(Paint(0, 0, 80, 160), (Texels{0, 1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(Paint(10, 40, 50, 120), (Texels{0, 1, 2, 4, 5, 6})) << "edges count";
    EXPECT_EQ(Paint(10.001F, 40, 49.999F, 119.999F), Texels{1});
    EXPECT_EQ(Paint(11, 30, 29, 50), Texels{}) << "between two";
    EXPECT_EQ(Paint(-500, -500, 9, 900), Texels{});
    EXPECT_EQ(Paint(60, 100, 900, 900), Texels{7});
    EXPECT_EQ(Paint(50, 50, 10, 120), Texels{}) << "turned round";
    EXPECT_EQ(Paint(NAN, 0, 80, 160), Texels{});
    EXPECT_EQ(Paint(10, 40, 10, 40), Texels{}) << "no side to stretch over";
}

TEST_F(CPaintLayerTest, WithTheOtherMappingTexelsLieOnTheEdges)
{
    ASSERT_NO_FATAL_FAILURE(Begin(5, 2, WHITE)); // 0, 20, 40, 60, 80 and 0, 160
    EXPECT_EQ(m_Layer.GetTexelMapping(), ETexelMapping::Centers);
    m_Layer.SetTexelToVertexMapping(true);
    EXPECT_EQ(m_Layer.GetTexelMapping(), ETexelMapping::Vertices);
    EXPECT_EQ(Paint(0, -10, 20, 10), (Texels{0, 1}));
    EXPECT_EQ(Paint(61, 0, 80, 160), (Texels{4, 9}));
    ASSERT_NO_FATAL_FAILURE(Begin(1, 1, WHITE)); // a single one lies at 0
    EXPECT_EQ(Paint(-1, -1, 1, 1), Texels{0});
    EXPECT_EQ(Paint(1, 1, 80, 160), Texels{});
    m_Layer.SetTexelToVertexMapping(false);
    EXPECT_EQ(Paint(1, 1, 79, 159), Texels{0});
}

TEST_F(CPaintLayerTest, TheShapeIsStretchedOverTheBox)
{
    // A shape of 4 x 4 pixels, white in the right half, over a box of 8 x 8 texels.
    std::vector<uint8_t> half;
    for (int i = 0; i < 16; ++i)
    {
        half.push_back(i % 4 < 2 ? 0 : 255);
    }
    const auto pShape = MakeImage(4, 4, EImageFormat::Indexed8, half);
    const auto pWork = MakeImage(8, 8, EImageFormat::Rgba32);
    m_Layer.Begin(pWork.get(), pShape.get(), 0x1FF);
    m_Function.pFirst = m_Layer.GetImage()->GetRawData();
    m_Layer.Paint({{0, 0, 0}, {80, 0, 160}}, &m_Function, 0.5F, 0.0F);
    // Left of the centre pixels 1 and 2 mix, more of the black one the farther it is: offsets of
    // -5, -15, -25, -35 are -0.25, -0.75, -1.25 and -1.75 pixels.
    ASSERT_EQ(m_Function.calls.size(), 48U) << "none for those without weight";
    const float row[] = {0.75F, 0.25F, 1.0F, 1.0F, 1.0F, 1.0F};
    const size_t columns[] = {3, 2, 4, 5, 6, 7};
    for (const CRecordingPaint::SCall& call : m_Function.calls)
    {
        const size_t nColumn = call.nTexel % 8;
        const auto* pFound = std::find(std::begin(columns), std::end(columns), nColumn);
        ASSERT_NE(pFound, std::end(columns)) << nColumn;
        EXPECT_NEAR(call.fWeight, row[pFound - columns], 1e-5F) << nColumn;
        EXPECT_EQ(call.fStrength, 0.5F);
        EXPECT_EQ(call.uExtra, 0U);
    }
    m_Function.calls.clear();

    // Hardness is added to all that is not black, and the sum is kept within 0 and 1.
    m_Layer.Paint({{0, 0, 0}, {80, 0, 160}}, &m_Function, 1.0F, 0.5F);
    ASSERT_EQ(m_Function.calls.size(), 48U);
    EXPECT_NEAR(m_Function.calls[0].fWeight, 0.75F, 1e-5F);
    EXPECT_EQ(m_Function.calls[1].fWeight, 1.0F);
    m_Function.calls.clear();
    m_Layer.Paint({{0, 0, 0}, {80, 0, 160}}, &m_Function, 1.0F, -0.5F);
    EXPECT_EQ(m_Function.calls.size(), 40U) << "a weight of 0 is none";
}

TEST_F(CPaintLayerTest, OnlyWhatAStrokeReachesCountsAsChanged)
{
    ASSERT_NO_FATAL_FAILURE(Begin(8, 8, WHITE));
    EXPECT_EQ(m_Layer.GetChangedSince(0), (STexelRect{0, 0, 8, 8}));
    const uint64_t uSeen = m_Layer.GetRevision();
    EXPECT_TRUE(m_Layer.GetChangedSince(uSeen).IsEmpty());
    m_Told = 0;
    Paint(20, 60, 40, 100);
    EXPECT_EQ(m_Layer.GetChangedSince(uSeen), (STexelRect{2, 3, 4, 5}));
    EXPECT_EQ(m_Told, 1);
    m_Function.bChanges = false;
    const uint64_t uThen = m_Layer.GetRevision();
    EXPECT_EQ(Paint(20, 60, 40, 100).size(), 4U);
    EXPECT_TRUE(m_Layer.GetChangedSince(uThen).IsEmpty());
    EXPECT_EQ(m_Told, 1);

    // Beginning again takes over what differs, as undo does.
    const std::unique_ptr<IImage> pWork(IL_CreateImageFromImage(m_Layer.GetImage()));
    pWork->GetRawData()[(5 * 8 + 1) * 4 + 3] = 77;
    pWork->GetRawData()[(6 * 8 + 2) * 4] = 77;
    m_Layer.Begin(pWork.get(), nullptr, 0x1FF);
    EXPECT_EQ(m_Layer.GetChangedSince(uThen), (STexelRect{1, 5, 3, 7}));
    EXPECT_EQ(m_Layer.GetImage()->GetRawData()[(5 * 8 + 1) * 4 + 3], 77);
    EXPECT_NE(m_Layer.GetImage(), pWork.get());
    EXPECT_EQ(Paint(20, 60, 40, 100), Texels{}) << "no shape any more";
    const auto pLow = MakeImage(8, 3, EImageFormat::Rgba32);
    m_Layer.Begin(pLow.get(), nullptr, 0x1FF);
    EXPECT_EQ(m_Layer.GetImage()->GetHeight(), 3U);
    const auto pOther = MakeImage(3, 8, EImageFormat::Rgba32);
    m_Layer.Begin(pOther.get(), nullptr, 0x1FF);
    EXPECT_EQ(m_Layer.GetChangedSince(m_Layer.GetRevision() - 1), (STexelRect{0, 0, 3, 8}));
}

TEST_F(CPaintLayerTest, AFunctionOfRowsIsCalledOnceARow)
{
    CRecordingRows rows;
    ASSERT_NO_FATAL_FAILURE(Begin(4, 4, {255, 255, 0, 255}));
    rows.pFirst = m_Function.pFirst;
    const uint64_t uSeen = m_Layer.GetRevision();
    rows.bChanges = false;
    m_Layer.Paint({{0, 9.0F, 41}, {59, -9.0F, 120}}, &rows, 0.5F, 0.0F);
    EXPECT_EQ(rows.rows, (std::vector<size_t>{3, 3})) << "centres at 60 and 100";
    EXPECT_EQ(rows.calls.at(1).nTexel, 5U);
    EXPECT_EQ(rows.calls.at(1).fStrength, 0.5F);
    EXPECT_TRUE(m_Layer.GetChangedSince(uSeen).IsEmpty());
    rows.bChanges = true;
    m_Layer.Paint({{0, 9.0F, 41}, {59, -9.0F, 120}}, &rows, 0.5F, 0.0F);
    EXPECT_EQ(m_Layer.GetChangedSince(uSeen), (STexelRect{0, 1, 3, 3}));
}

TEST_F(CPaintLayerTest, IsShownWhileItPaintsWithAShareOfBlending)
{
    ASSERT_NO_FATAL_FAILURE(Begin(2, 2, WHITE));
    EXPECT_TRUE(m_Layer.IsShown());
    for (const auto& [fSet, fKept] : {std::pair{7.0F, 1.0F}, {0.25F, 0.25F}, {NAN, 0.0F}})
    {
        m_Layer.SetBlendFactor(fSet);
        EXPECT_EQ(m_Layer.GetBlendFactor(), fKept);
    }
    const SExtents box = {{1, 0, 2}, {3, 0, 4}};
    const auto pShape = MakeImage(3, 3, EImageFormat::Rgb24);
    m_Layer.SetBrush(&box, nullptr);
    EXPECT_EQ(m_Layer.GetBrushTexture()->GetWidth(), 2U);
    m_Layer.SetBrush(nullptr, pShape.get());
    EXPECT_EQ(m_Layer.GetBrushTexture()->GetWidth(), 3U);
    EXPECT_EQ(m_Layer.GetBrushBox()->max.z, 4.0F) << "the box stays with another shape";
    m_Layer.End();
    EXPECT_FALSE(m_Layer.IsShown() || m_Layer.GetBrushBox().has_value());
    EXPECT_EQ(m_Layer.GetImage(), nullptr);
}

TEST_F(CPaintLayerTest, WhatIsMissingPaintsNothing)
{
    m_Function.pFirst = nullptr;
    EXPECT_EQ(Paint(0, 0, 80, 160), Texels{}) << "before it began";
    m_Layer.Begin(nullptr, nullptr, 0);
    const auto pGrey = MakeImage(2, 2, EImageFormat::Indexed8);
    m_Layer.Begin(pGrey.get(), pGrey.get(), 0);
    EXPECT_EQ(m_Log.TakeLines(),
              (std::vector<std::string>(2,
                                        "[CPaintLayer::Begin] not an image of 32 bits a "
                                        "texel")));
    EXPECT_FALSE(m_Layer.IsShown());
    ASSERT_NO_FATAL_FAILURE(Begin(2, 2, WHITE));
    m_Layer.Paint({{0, 0, 0}, {80, 0, 160}}, nullptr, 1.0F, 0.0F);
    m_World.CloseTerrain();
    EXPECT_EQ(Paint(0, 0, 80, 160), Texels{}) << "without a level";
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPaintLayerTest, PaintingAllocatesNothingOnceItsBuffersAreThere)
{
    ASSERT_NO_FATAL_FAILURE(Begin(64, 64, WHITE));
    m_Function.calls.reserve(size_t{64} * 64 * 4);
    Paint(0, 0, 80, 160);
    m_Function.calls.reserve(size_t{64} * 64 * 4);
    const uint64_t uBefore = GetAllocationCount();
    for (int i = 0; i < 3; ++i)
    {
        m_Layer.Paint({{0, 0, 0}, {60, 0, 160}}, &m_Function, 1.0F, 0.0F);
    }
    EXPECT_EQ(GetAllocationCount(), uBefore);
}
