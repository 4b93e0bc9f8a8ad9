#pragma once

// What one position of a slider and one step of a spin button are of a share from 0 to 1, in the
// panel and in the draw dialog.
constexpr float SHARE_STEP = 0.01F;
