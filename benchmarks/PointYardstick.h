#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

class IImage;

// The yardstick of an operation point: the best single loop we know of that does what a point of
// relative height must do to its memory. It reads source and destination, resamples the brush image
// bilinearly, adds, keeps the stronger of candidate and destination, clamps, and writes destination
// and terrain, each once. For AVX2 where the processor has it. It leaves out what makes a tool of
// it: holes, modes, bands, masks, the box and the number of what changed, the taking of heights.
class CPointYardstick
{
public:
    // uSide: vertices per side; heights: all of them, copied three times.
    CPointYardstick(uint32_t uSide, const float* pHeights);

    // Does one point with a footprint of iCount by iCount vertices from (iFirstX, iFirstZ) on. The
    // image must be square.
    void Run(int iFirstX, int iFirstZ, int iCount, const IImage& image);

private:
    uint32_t m_Side;
    std::vector<float> m_Source;
    std::vector<float> m_Dest;
    std::vector<float> m_Terrain;
    std::vector<float> m_Row; // of the image, blended
    std::vector<int32_t> m_Columns;
    std::vector<float> m_Weights;
};
