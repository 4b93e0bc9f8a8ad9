#include "editor/view/SViewProjection.h"
#include "engine/world/CCamera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>

namespace
{

constexpr std::pair<int, int> SIZES[] = {{1, 1}, {90, 900}, {641, 479}, {1920, 1080}, {4000, 3000}};

float Random(std::mt19937& random, float fMin, float fMax)
{
    return fMin + (fMax - fMin) * static_cast<float>(random() % 100003) / 100002.0F;
}

TEST(SViewProjection, MatrixRayAndPixelAgree)
{
    std::mt19937 random(3);
    for (const auto& [iWidth, iHeight] : SIZES)
    {
        for (int i = 0; i < 60; ++i)
        {
            CCamera camera;
            camera.SetAngles(Random(random, 0, 360), Random(random, -90, 90));
            SViewProjection view;
            view.position = {
                Random(random, -50, 50), Random(random, -50, 50), Random(random, -50, 50)};
            view.right = camera.GetRight();
            view.up = camera.GetUp();
            view.forward = camera.GetForward();
            view.bOrthographic = i % 2 == 0;
            view.fHalfHeight = Random(random, 1, 100);
            view.fFar = 500;
            view.iWidth = iWidth;
            view.iHeight = iHeight;
            const float fX = Random(random, 0, static_cast<float>(iWidth));
            const float fY = Random(random, 0, static_cast<float>(iHeight));
            const SRay ray = view.GetRay(fX, fY);
            const float t = Random(random, 2, 400);
            const SVec3 at = {ray.origin.x + t * ray.direction.x,
                              ray.origin.y + t * ray.direction.y,
                              ray.origin.z + t * ray.direction.z};
            float fAtX = 0.0F;
            float fAtY = 0.0F;
            ASSERT_TRUE(view.Project(at, fAtX, fAtY));
            EXPECT_NEAR(fAtX, fX, 0.05F);
            EXPECT_NEAR(fAtY, fY, 0.05F);
            float matrix[16];
            view.GetMatrix(matrix);
            float clip[4];
            for (int k = 0; k < 4; ++k)
            {
                clip[k] =
                    matrix[k] * at.x + matrix[4 + k] * at.y + matrix[8 + k] * at.z + matrix[12 + k];
            }
            EXPECT_NEAR((clip[0] / clip[3] + 1.0F) * 0.5F * static_cast<float>(iWidth), fX, 0.5F);
            EXPECT_NEAR((1.0F - clip[1] / clip[3]) * 0.5F * static_cast<float>(iHeight), fY, 0.5F);
            EXPECT_LE(std::fabs(clip[2]), clip[3] * 1.001F);
            // One pixel to the right is a pixel's size away.
            const float fAlong = (at.x - view.position.x) * view.forward.x +
                                 (at.y - view.position.y) * view.forward.y +
                                 (at.z - view.position.z) * view.forward.z;
            const float fSize = view.GetPixelSize(fAlong);
            view.Project({at.x + view.right.x * fSize,
                          at.y + view.right.y * fSize,
                          at.z + view.right.z * fSize},
                         fAtX,
                         fAtY);
            EXPECT_NEAR(fAtX, fX + 1.0F, 0.1F);
        }
    }
}

} // namespace
