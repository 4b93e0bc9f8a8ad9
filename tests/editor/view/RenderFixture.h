#pragma once

#include "editor/view/CTerrainCopies.h"
#include "editor/view/CTerrainRenderer.h"
#include "editor/view/SViewProjection.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"

#include <QImage>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

// Pictures of an engine's terrain in a buffer of an OpenGL context, without a window.
class CRenderFixture : public testing::Test
{
protected:
    static constexpr int WIDTH = 320;
    static constexpr int HEIGHT = 240;

    void SetUp() override;
    void TearDown() override;

    // A terrain of uCells x uCells cells of 10 units.
    void MakeTerrain(uint32_t uCells, const std::function<float(float fX, float fZ)>& getHeight);

    CTerrain& GetTerrain() { return *m_Engine->GetCWorld().GetCTerrain(); }

    // The whole terrain from straight above, x to the right and z downward.
    SViewProjection LookDown();
    // Radians; yaw from +x towards +z, pitch above the horizon.
    static SViewProjection Look(const SVec3& from, float fYaw, float fPitch);

    // In the fixture's context, with copies of its own; uTileCells as for those.
    std::unique_ptr<CTerrainRenderer>
    MakeRenderer(uint32_t uTileCells = CTerrainCopies::TILE_CELLS);

    // The renderer's picture; a renderer of its own unless one is given.
    QImage Draw(const SViewProjection& view, CTerrainRenderer* pRenderer = nullptr);

    // A grey texture, uSide x uSide, of the world.
    ITexture* MakeTexture(uint32_t uSide, const std::function<uint8_t(uint32_t, uint32_t)>& get);

    // The pixel that shows a position on the ground.
    QColor GetPixel(const QImage& picture, const SViewProjection& view, float fX, float fZ);

    std::unique_ptr<QOpenGLContext> m_Context;
    std::unique_ptr<QOffscreenSurface> m_Surface;
    std::unique_ptr<QOpenGLFramebufferObject> m_Buffer;
    std::unique_ptr<CEngineHost> m_Engine;
    SRenderSettings m_Settings;
};

// Pixels that differ by more than iTolerance in a channel.
int CountDifferent(const QImage& a, const QImage& b, int iTolerance = 0);
