#pragma once

#include "editor/view/CViewNavigator.h"
#include "editor/view/Vectors.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CCamera.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <utility>

inline constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
inline constexpr float INFINITE = std::numeric_limits<float>::infinity();
inline constexpr std::pair<int, int> SIZES[] = {
    {1, 1}, {90, 900}, {641, 479}, {1920, 1080}, {4000, 3000}};

inline float Random(std::mt19937& random, float fMin, float fMax)
{
    return fMin + (fMax - fMin) * static_cast<float>(random() % 100003) / 100002.0F;
}

inline std::unique_ptr<CTerrain> MakeHills(float fHeight)
{
    SHeightField field;
    field.Allocate(129, 65);
    field.size = {512, 200, 256};
    for (uint32_t z = 0; z < 65; ++z)
    {
        for (uint32_t x = 0; x < 129; ++x)
        {
            const float fShape =
                std::sin(static_cast<float>(x) * 0.2F) * std::cos(static_cast<float>(z) * 0.15F);
            field.pHeights[z * 129 + x] = fHeight * (1.0F + fShape);
        }
    }
    return std::make_unique<CTerrain>(std::move(field));
}

inline bool Near(const SVec3& a, const SVec3& b)
{
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

// A view, its terrain and what must hold at any time.
struct SView
{
    SView(EViewKind eKind, int iWidth, int iHeight)
        : navigator(eKind == EViewKind::Perspective ? &camera : nullptr, eKind)
        , fWidth(static_cast<float>(iWidth))
        , fHeight(static_cast<float>(iHeight))
    {
        navigator.SetSize(iWidth, iHeight);
        navigator.FrameTerrain(pTerrain.get());
    }

    SViewProjection Get() const { return navigator.GetProjection(pTerrain.get()); }

    void ExpectAt(const SVec3& point, float fX, float fY) const
    {
        float fAtX = 0.0F;
        float fAtY = 0.0F;
        ASSERT_TRUE(Get().Project(point, fAtX, fAtY));
        EXPECT_NEAR(fAtX, fX, 1.0F);
        EXPECT_NEAR(fAtY, fY, 1.0F);
    }

    void ExpectSound() const
    {
        const SViewProjection view = Get();
        float matrix[16];
        view.GetMatrix(matrix);
        for (const float fValue : matrix)
        {
            ASSERT_TRUE(std::isfinite(fValue));
        }
        EXPECT_LT(view.fNear, view.fFar);
        EXPECT_TRUE(view.bOrthographic || view.fNear > 0.0F);
        EXPECT_TRUE(camera.GetYaw() >= 0.0F && camera.GetYaw() <= 360.0F);
        EXPECT_TRUE(camera.GetPitch() >= -90.0F && camera.GetPitch() <= 90.0F);
        SVec3 ground;
        const bool bOver =
            pTerrain->PickRay({view.position.x, 1e6F, view.position.z}, {0, -1, 0}, ground);
        EXPECT_TRUE(!bOver || view.position.y > ground.y) << "below the ground";
        // What is in the picture is between near and far plane, in a view from above also where
        // the terrain was as high or as low as it may be a moment ago.
        for (uint32_t i = 0; i < 129 * 65; i += 7)
        {
            const bool bWas = view.bOrthographic && i % 2 == 0;
            const SVec3 at = {
                4.0F * static_cast<float>(i % 129),
                bWas ? pTerrain->GetSize().y * static_cast<float>(i / 2 % 2)
                     : pTerrain->GetHeightData()[i],
                4.0F * static_cast<float>(i / 129)}; // NOLINT(bugprone-integer-division): the row
            const float fW = matrix[3] * at.x + matrix[7] * at.y + matrix[11] * at.z + matrix[15];
            const float fDepth =
                matrix[2] * at.x + matrix[6] * at.y + matrix[10] * at.z + matrix[14];
            float fX = 0.0F;
            float fY = 0.0F;
            if (view.Project(at, fX, fY) && fX >= 0.0F && fX <= fWidth && fY >= 0.0F &&
                fY <= fHeight)
            {
                EXPECT_LE(std::fabs(fDepth), fW * 1.0001F) << "vertex " << i;
            }
        }
    }

    CCamera camera;
    CViewNavigator navigator;
    std::unique_ptr<CTerrain> pTerrain = MakeHills(30.0F);
    float fWidth;
    float fHeight;
};
