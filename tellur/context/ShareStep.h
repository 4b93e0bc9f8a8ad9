#pragma once

// What one position of a slider and one step of a spin button are of a share from 0 to 1, in the
// panel and in the draw dialog.
constexpr float SHARE_STEP = 0.01F;

// The share that a position of a slider from 0 to 100 stands for. Computed in double: with floats
// 22 positions would come back one lower when the share is shown again, since positions are
// truncated. As it is, 53 and 59 do.
constexpr float GetShareAtPosition(int iPos)
{
    constexpr double STEP = 0.01;
    return static_cast<float>(static_cast<double>(iPos) * STEP);
}
