#include "editor/view/CPatchTree.h"
#include "editor/view/CTerrainTiles.h"
#include "tests/editor/view/RenderFixture.h"

#include <QOpenGLVersionFunctionsFactory>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace
{

constexpr int SCALE = 32767;

class CTerrainTilesTest : public CRenderFixture
{
protected:
    void SetUp() override
    {
        CRenderFixture::SetUp();
        m_Gl = QOpenGLVersionFunctionsFactory::get<OpenGl>(m_Context.get());
        ASSERT_NE(m_Gl, nullptr);
    }

    // Rough ground with walls; cells are not square.
    static SHeightField MakeField(uint32_t uSizeX, uint32_t uSizeZ)
    {
        SHeightField field;
        EXPECT_TRUE(field.Allocate(uSizeX, uSizeZ));
        field.size = {
            3.0F * static_cast<float>(uSizeX - 1), 100.0F, 2.0F * static_cast<float>(uSizeZ - 1)};
        std::mt19937 random(uSizeX);
        for (size_t i = 0; i < field.GetCount(); ++i)
        {
            field.pHeights[i] = static_cast<float>(random() % 1000) * 0.004F +
                                (i % uSizeX / 20 % 2 == 0 ? 0.0F : 40.0F);
        }
        return field;
    }

    // The texels of a level of the normals that are bound, as 16-bit numbers with a sign.
    std::vector<int> ReadNormals(GLint iLevel, uint32_t uWidth, uint32_t uDepth)
    {
        std::vector<uint16_t> texels(size_t{uWidth} * uDepth * 2);
        m_Gl->glActiveTexture(GL_TEXTURE1);
        m_Gl->glPixelStorei(GL_PACK_ALIGNMENT, 4);
        m_Gl->glGetTexImage(GL_TEXTURE_2D, iLevel, GL_RG, GL_UNSIGNED_SHORT, texels.data());
        std::vector<int> normals(texels.size());
        std::transform(texels.begin(),
                       texels.end(),
                       normals.begin(),
                       [](uint16_t uTexel) { return int{uTexel} - SCALE; });
        return normals;
    }

    // All levels of a tile against the normals that the processor makes.
    void CheckTile(CTerrain& terrain, const CTerrainTiles& tiles, uint32_t uX, uint32_t uZ)
    {
        const int16_t* pNormals = terrain.GetNormals();
        tiles.Bind(*m_Gl, uX, uZ);
        const auto get = [&](uint32_t uVertexX, uint32_t uVertexZ, size_t nPart)
        {
            const size_t nX = std::min(uVertexX, terrain.GetVerticesX() - 1);
            const size_t nZ = std::min(uVertexZ, terrain.GetVerticesZ() - 1);
            return int{pNormals[(nZ * terrain.GetVerticesX() + nX) * 2 + nPart]};
        };
        uint32_t uWidth = tiles.GetWidth(uX);
        uint32_t uDepth = tiles.GetDepth(uZ);
        for (uint32_t uLevel = 0;; ++uLevel)
        {
            const std::vector<int> texels = ReadNormals(static_cast<GLint>(uLevel), uWidth, uDepth);
            for (size_t i = 0; i < texels.size(); ++i)
            {
                const auto uTexel = static_cast<uint32_t>(i / 2);
                const uint32_t uLeft = uX * tiles.GetTileCells() + (uTexel % uWidth << uLevel);
                const uint32_t uTop = uZ * tiles.GetTileCells() + (uTexel / uWidth << uLevel);
                const uint32_t uNear = (1U << uLevel) / 4;
                const uint32_t uFar = (1U << uLevel) * 3 / 4;
                const int iSum = get(uLeft + uNear, uTop + uNear, i % 2) +
                                 get(uLeft + uFar, uTop + uNear, i % 2) +
                                 get(uLeft + uNear, uTop + uFar, i % 2) +
                                 get(uLeft + uFar, uTop + uFar, i % 2);
                ASSERT_NEAR(texels[i], static_cast<double>(iSum) / 4.0, 2.0)
                    << "level " << uLevel << ", texel " << uTexel;
            }
            if (uWidth == 1 && uDepth == 1)
            {
                return;
            }
            uWidth = std::max(uWidth / 2, 1U);
            uDepth = std::max(uDepth / 2, 1U);
        }
    }

    OpenGl* m_Gl = nullptr;
};

TEST_F(CTerrainTilesTest, NormalsAreThoseOfTheTerrainAlsoAfterEdits)
{
    constexpr uint32_t TILE = 64;
    std::mt19937 random(3);
    const auto roll = [&](uint32_t uBelow)
    {
        return static_cast<uint32_t>(random()) % uBelow;
    };
    for (const auto& [uSizeX, uSizeZ, eMaker] : {std::tuple{2U, 2U, ENormalMaker::Card},
                                                 {65U, 65U, ENormalMaker::Card},
                                                 {70U, 200U, ENormalMaker::Card},
                                                 {193U, 130U, ENormalMaker::Card},
                                                 {2U, 3U, ENormalMaker::Processor},
                                                 {66U, 65U, ENormalMaker::Processor},
                                                 {70U, 200U, ENormalMaker::Processor},
                                                 {193U, 130U, ENormalMaker::Processor}})
    {
        SCOPED_TRACE(uSizeX);
        CTerrain terrain(MakeField(uSizeX, uSizeZ));
        CTerrainTiles tiles;
        tiles.Reset(*m_Gl, terrain.GetView(), TILE, eMaker);
        const uint32_t uTilesX = (uSizeX + TILE - 2) / TILE;
        const uint32_t uTilesZ = (uSizeZ + TILE - 2) / TILE;
        uint64_t uSeen = 0;
        std::vector<SVertexRect> rects;
        for (int iRound = 0; iRound < 4; ++iRound)
        {
            ASSERT_TRUE(terrain.TakeDirtyRects(uSeen, rects));
            for (uint32_t i = 0; i < uTilesX * uTilesZ; ++i)
            {
                ASSERT_TRUE(iRound > 0 || tiles.MakeTile(*m_Gl, i % uTilesX, i / uTilesX));
                tiles.Upload(*m_Gl, terrain.GetView(), i % uTilesX, i / uTilesX, rects);
                CheckTile(terrain, tiles, i % uTilesX, i / uTilesX);
            }
            for (int iEdit = 0; iEdit < 30; ++iEdit)
            {
                const uint32_t uZ = roll(uSizeZ);
                const uint32_t uX = roll(uSizeX);
                const std::vector<float> row(1 + roll(std::min(uSizeX - uX, 9U)),
                                             static_cast<float>(roll(90)));
                terrain.SetRowHeights(uX, uZ, row.data(), static_cast<uint32_t>(row.size()));
            }
        }
        tiles.Release(*m_Gl);
    }
}

// How far a vertex lies from the squares of a level, cut as cells are.
float GetOffSurface(const CTerrain& terrain, uint32_t uX, uint32_t uZ, uint32_t uStride)
{
    const auto get = [&](uint32_t uColumn, uint32_t uRow)
    {
        return terrain.GetHeightData()[size_t{uRow} * terrain.GetVerticesX() + uColumn];
    };
    const uint32_t uX0 = std::min(uX / uStride * uStride, terrain.GetVerticesX() - 2);
    const uint32_t uZ0 = std::min(uZ / uStride * uStride, terrain.GetVerticesZ() - 2);
    const uint32_t uX1 = std::min(uX / uStride * uStride + uStride, terrain.GetVerticesX() - 1);
    const uint32_t uZ1 = std::min(uZ / uStride * uStride + uStride, terrain.GetVerticesZ() - 1);
    const float fX = static_cast<float>(uX - uX0) / static_cast<float>(uX1 - uX0);
    const float fZ = static_cast<float>(uZ - uZ0) / static_cast<float>(uZ1 - uZ0);
    const float fSurface =
        fX + fZ <= 1.0F
            ? get(uX0, uZ0) * (1 - fX - fZ) + get(uX1, uZ0) * fX + get(uX0, uZ1) * fZ
            : get(uX1, uZ1) * (fX + fZ - 1) + get(uX1, uZ0) * (1 - fZ) + get(uX0, uZ1) * (1 - fX);
    return std::fabs(get(uX, uZ) - fSurface);
}

TEST_F(CTerrainTilesTest, PatchesBoundTheirGroundAndFollowChangesAsIfMeasuredAfresh)
{
    std::mt19937 random(5);
    for (const auto& [uSizeX, uSizeZ] : {std::pair{2U, 2U}, {129U, 257U}, {300U, 140U}})
    {
        SCOPED_TRACE(uSizeX);
        CTerrain terrain(MakeField(uSizeX, uSizeZ));
        CPatchTree tree;
        tree.Reset(uSizeX, uSizeZ, 128);
        uint64_t uSeen = 0;
        std::vector<SVertexRect> rects;
        for (int iRound = 0; iRound < 20; ++iRound)
        {
            ASSERT_TRUE(terrain.TakeDirtyRects(uSeen, rects));
            tree.Update(terrain.GetHeightData(), rects);
            for (size_t nEdit = random() % 90; nEdit < 100; ++nEdit)
            {
                const auto fHeight = static_cast<float>(random() % 300);
                terrain.SetRowHeights(random() % uSizeX, random() % uSizeZ, &fHeight, 1);
            }
        }
        terrain.TakeDirtyRects(uSeen, rects);
        tree.Update(terrain.GetHeightData(), rects);
        CPatchTree fresh;
        fresh.Reset(uSizeX, uSizeZ, 128);
        fresh.Update(terrain.GetHeightData(), {{0, 0, uSizeX, uSizeZ}});
        for (uint32_t uLevel = 0; uLevel <= tree.GetTopLevel(); ++uLevel)
        {
            const uint32_t uPatch = CPatchTree::PATCH_CELLS << uLevel;
            for (uint32_t i = 0; i < tree.GetCountX(uLevel) * tree.GetCountZ(uLevel); ++i)
            {
                const SPatchPlace place = {
                    uLevel, i % tree.GetCountX(uLevel), i / tree.GetCountX(uLevel)};
                const SPatchBounds& bounds = tree.GetBounds(place);
                EXPECT_EQ(bounds.fError, fresh.GetBounds(place).fError);
                const SVertexRect rect = {place.uX * uPatch,
                                          place.uZ * uPatch,
                                          std::min((place.uX + 1) * uPatch + 1, uSizeX),
                                          std::min((place.uZ + 1) * uPatch + 1, uSizeZ)};
                float fMin = 0.0F;
                float fMax = 0.0F;
                terrain.GetHeightRange(rect, fMin, fMax);
                EXPECT_TRUE(bounds.fMin == fMin && bounds.fMax == fMax) << uLevel << ": " << i;
                for (uint32_t z = rect.uMinZ; z < rect.uEndZ; ++z)
                {
                    for (uint32_t x = rect.uMinX; x < rect.uEndX; ++x)
                    {
                        ASSERT_LE(GetOffSurface(terrain, x, z, 1U << uLevel),
                                  bounds.fError + 1e-3F);
                    }
                }
            }
        }
    }
}

} // namespace
